// The data of values as the two families of functions give it.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/registry_tree.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ: the types that the functions convert.
[[nodiscard]] bool isText(DWORD type);

// As the ANSI functions give it. Refers to the value where its data needs no conversion.
class AnsiData {
  public:
    explicit AnsiData(const RegistryValueNode& value);
    AnsiData(const AnsiData&) = delete;
    AnsiData& operator=(const AnsiData&) = delete;

    [[nodiscard]] std::string_view view() const { return view_; }

  private:
    std::string converted_;
    std::string_view view_;
};

// As Windows keeps it: texts in UTF-16LE.
class WideData {
  public:
    explicit WideData(const RegistryValueNode& value);
    WideData(const WideData&) = delete;
    WideData& operator=(const WideData&) = delete;

    [[nodiscard]] std::string_view view() const { return view_; }

  private:
    std::string converted_;
    std::string_view view_;
};

}  // namespace bromvale::offline

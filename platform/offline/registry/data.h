// The data of values: from the forms in which callers give it to that of the tree, and back.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/locale/code_pages.h"
#include "platform/offline/registry/tree.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ: the types that the functions convert.
[[nodiscard]] bool isText(DWORD type);

// Data on its way into the tree. Refers to what it was made of where that needs no conversion.
class StoredData {
  public:
    // As Windows keeps it: texts in UTF-16LE, of any size.
    static StoredData fromWindows(DWORD type, std::string_view bytes);
    // As the ANSI functions take it.
    static StoredData fromAnsi(DWORD type, std::string_view bytes, UINT codePage);
    // A text in the stored form, with its NUL.
    static StoredData fromText(std::string_view stored);

    [[nodiscard]] RegistryData view() const {
        return {converts_ ? std::string_view(converted_) : given_, narrow_};
    }

  private:
    void takeWide(std::string&& wide);

    std::string_view given_;
    std::string converted_;
    bool converts_ = false;
    bool narrow_ = false;
};

// A value's data on its way out: refers to the value where it needs no conversion.
class GivenData {
  public:
    // As the ANSI functions give it.
    static GivenData asAnsi(const RegistryValueNode& value, UINT codePage);
    // As Windows keeps it.
    static GivenData asWindows(const RegistryValueNode& value);

    [[nodiscard]] std::string_view view() const { return converts_ ? std::string_view(converted_) : given_; }

  private:
    std::string_view given_;
    std::string converted_;
    bool converts_ = false;
};

}  // namespace bromvale::offline

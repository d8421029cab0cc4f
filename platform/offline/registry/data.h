// The data of values: from the forms in which callers give it to that of the tree, and back.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/registry/tree.h"
#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ: the types that the functions convert.
[[nodiscard]] bool isText(DWORD type);

// Data on its way into the tree.
class StoredData {
  public:
    // As Windows keeps it: texts in UTF-16LE, of any size.
    static StoredData fromWindows(DWORD type, std::string_view bytes);
    // As the ANSI functions take it.
    static StoredData fromAnsi(DWORD type, std::string_view bytes, UINT codePage);
    // A text in the stored form, with its NUL.
    static StoredData fromText(std::string_view stored);

    [[nodiscard]] RegistryData view() const { return {bytes_.view(), narrow_}; }

  private:
    StoredData(Converted bytes, bool narrow) : bytes_(std::move(bytes)), narrow_(narrow) {}
    static StoredData fromWide(std::string&& wide);

    Converted bytes_;
    bool narrow_;
};

// A value's data on its way out: as the ANSI functions give it, and as Windows keeps it.
[[nodiscard]] Converted ansiData(const RegistryValueNode& value, UINT codePage);
[[nodiscard]] Converted windowsData(const RegistryValueNode& value);

}  // namespace bromvale::offline

#pragma once
#include "platform/files.h"
#include "platform/item_lists.h"
#include "platform/machine.h"
#include "platform/registry.h"

namespace bromvale {

// The functions in which the NT family hands out its names and texts as it keeps them, in UTF-16. The 9x
// family has none of them, or exports them and lets every call fail, so they are asked for at first use.
// WCHAR is Windows' own 16-bit character.
struct WideFunctions {
    decltype(&::RegOpenKeyExW) openKey;
    decltype(&::RegEnumKeyExW) enumKey;
    decltype(&::RegEnumValueW) enumValue;
    decltype(&::RegQueryValueExW) queryValue;
    decltype(&::RegQueryInfoKeyW) queryInfoKey;
    decltype(&::FindFirstFileW) findFirstFile;
    decltype(&::FindNextFileW) findNextFile;
    decltype(&::CreateFileW) createFile;
    decltype(&::GetModuleFileNameW) moduleFileName;
    decltype(&::GetWindowsDirectoryW) windowsDirectory;
    decltype(&::ExpandEnvironmentStringsW) expandEnvironmentStrings;
    decltype(&::GetShortPathNameW) shortPathName;
    BOOL(WINAPI* pathFromIdList)(PCIDLIST_ABSOLUTE list, WCHAR* path);
    // Null before Windows Vista.
    DWORD(WINAPI* finalPathName)(HANDLE file, WCHAR* path, DWORD size, DWORD flags);
};

// UTF-16 as Windows' own type of it.
inline WCHAR* units(char16_t* text) {
    return reinterpret_cast<WCHAR*>(text);
}
inline const WCHAR* units(const char16_t* text) {
    return reinterpret_cast<const WCHAR*>(text);
}

// Null on the 9x family.
[[nodiscard]] const WideFunctions* wide();

}  // namespace bromvale

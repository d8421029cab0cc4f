#pragma once
#include <string>
#include <string_view>

#include "platform/win32/system/windows.h"

namespace bromvale::starter {

// The forms that take UTF-16, which only the NT family has: a stick's folder and a machine's settings may
// have characters that the code page lacks.
struct WideCalls {
    decltype(&::RegOpenKeyExW) openKey;
    decltype(&::RegCreateKeyExW) createKey;
    decltype(&::RegEnumValueW) enumValue;
    decltype(&::RegSetValueExW) setValue;
    decltype(&::RegDeleteValueW) deleteValue;
    decltype(&::RegDeleteKeyW) deleteKey;
    // Null where there is one view alone.
    LONG(WINAPI* deleteKeyEx)(HKEY key, const WCHAR* name, REGSAM access, DWORD reserved);
    decltype(&::CreateFileW) createFile;
    decltype(&::DeleteFileW) deleteFile;
    decltype(&::MoveFileExW) moveFile;
    decltype(&::GetFileAttributesW) fileAttributes;
    decltype(&::GetModuleFileNameW) moduleFileName;
    decltype(&::GetCommandLineW) commandLine;
    decltype(&::CreateProcessW) createProcess;
};

// Null on the 9x family.
[[nodiscard]] const WideCalls* wide();

[[nodiscard]] std::string toCodePage(std::u16string_view text);
[[nodiscard]] std::u16string fromCodePage(std::string_view text);

inline const WCHAR* units(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
}
inline WCHAR* units(std::u16string& text) {
    return reinterpret_cast<WCHAR*>(text.data());
}

// Vista has 6, XP 5.
[[nodiscard]] inline unsigned systemMajor() {
    return GetVersion() & 0xFF;
}

}  // namespace bromvale::starter

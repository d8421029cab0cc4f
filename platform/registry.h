#pragma once
// The registry functions under their own names: RegOpenKeyA, RegOpenKeyExA, RegCloseKey, RegCreateKeyExA,
// RegDeleteKeyA, RegDeleteValueA, RegEnumKeyA, RegEnumValueA, RegQueryValueExA, RegSetValueExA.
// Texts are Windows-1252, lengths are bytes; a REG_SZ counts its terminating NUL.
// The wide ones, which the 9x family lacks: RegOpenKeyExW, RegEnumKeyExW, RegEnumValueW, RegQueryValueExW,
// RegQueryInfoKeyW.
#include <optional>
#include <string>

#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/registry/api.h"
#endif

namespace bromvale {

// A 32-bit program on a 64-bit Windows is shown another half of the registry under the usual names. True
// there, and only there a key has to be asked where it lies.
[[nodiscard]] bool seesAnotherHalf();

// Where the opened key lies, as a 64-bit registry editor names it:
// "HKEY_LOCAL_MACHINE\SOFTWARE\Wow6432Node\...". Nothing where the system doesn't tell.
[[nodiscard]] std::optional<std::u16string> realKeyPath(HKEY key);

}  // namespace bromvale

#pragma once
// The registry functions under their own names: RegOpenKeyA, RegOpenKeyExA, RegCloseKey, RegCreateKeyExA,
// RegDeleteKeyA, RegDeleteValueA, RegEnumKeyA, RegEnumValueA, RegQueryValueExA, RegSetValueExA.
// Texts are Windows-1252, lengths are bytes; a REG_SZ counts its terminating NUL.
// The wide ones, which the 9x family lacks: RegOpenKeyExW, RegEnumKeyExW, RegEnumValueW, RegQueryValueExW,
// RegQueryInfoKeyW.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/registry/api.h"
#endif

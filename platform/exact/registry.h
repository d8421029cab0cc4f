#pragma once
#include <string>

#include "platform/registry.h"

namespace bromvale {

// Names and texts of the registry with marks where the code page lacks a character (text.h). Each call
// stands for an ANSI function with a buffer of a certain size and answers with its result codes, so that a
// scan sees the same limits on every system; on the 9x family it is that function. Keys and value names that
// are given may carry marks: they are found by their true names. Where a call fails nothing is added.

// RegOpenKeyExA.
[[nodiscard]] LONG openExactKey(HKEY root, const char* path, REGSAM access, HKEY& key);
// RegEnumKeyA with room for 255 bytes; adds the name.
[[nodiscard]] LONG enumExactKey(HKEY key, DWORD index, std::string& name);
// RegEnumValueA with room for 255 bytes of name and 256 of data; adds the name.
[[nodiscard]] LONG enumExactValue(HKEY key, DWORD index, std::string& name);
// RegQueryValueExA with room for 256 bytes. Adds the text up to its first NUL, unexpanded; nothing for types
// other than REG_SZ and REG_EXPAND_SZ.
[[nodiscard]] LONG queryExactText(HKEY key, const char* name, std::string& text);

}  // namespace bromvale

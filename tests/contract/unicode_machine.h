#pragma once
// Names beyond the code page, made by the provider's own means: the program has no use for functions that
// write them.
#include <string_view>

#include "platform/registry.h"

namespace bromvale::testing {

void makeWideKey(HKEY hive, std::u16string_view path);
// Bytes as Windows stores them: texts in UTF-16LE.
void setWideValue(HKEY hive, std::u16string_view path, std::u16string_view name, DWORD type,
                  std::string_view bytes);
void writeWideFile(std::u16string_view path, std::string_view bytes);
void makeWideFolder(std::u16string_view path);
void switchShortNamesOn();
// What was made goes, since the end of a test knows only names of the code page.
void removeWideThings();

}  // namespace bromvale::testing

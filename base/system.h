#pragma once
#include <string>

namespace bromvale {

// What texts and numbers ask of the system below. Defined above this folder, over the platform's own
// functions (platform/exact/system.cpp).

// The number of the system's ANSI code page, 1252 on a German Windows.
[[nodiscard]] unsigned systemCodePage();
// A character is a byte there, so that the program's positions hold.
[[nodiscard]] bool codePageHasSingleBytes();
// One character of the code page in the other case; itself where it has none.
[[nodiscard]] char systemUpperCase(char c);
[[nodiscard]] char systemLowerCase(char c);

enum class LocaleText { DecimalSign, ThousandsSign, Currency };
// Of the user's locale; empty where it has none, or one of more than seven bytes.
[[nodiscard]] std::string localeText(LocaleText which);

}  // namespace bromvale

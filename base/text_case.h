#pragma once
#include <array>
#include <string_view>

namespace bromvale {

// Upper and lower case of the system's code page, for every comparison without case in the program. A letter
// whose partner the page lacks stays, and so does one of which the system makes a letter that doesn't lead
// back
// ("İ" becomes "i", which is the small form of "I"): a path in lower case still names the same file. On code
// pages with several bytes a character only ASCII has cases. In Windows-1252 "ß" has no partner; "ÿ" and "Ÿ",
// "š" and "Š", "œ" and "Œ", "ž" and "Ž" are pairs across the two halves of the page.
using CaseTable = std::array<char, 256>;
[[nodiscard]] const CaseTable& upperCaseTable();
[[nodiscard]] const CaseTable& lowerCaseTable();

[[nodiscard]] inline char upperCase(char c) {
    return upperCaseTable()[static_cast<unsigned char>(c)];
}
[[nodiscard]] inline char lowerCase(char c) {
    return lowerCaseTable()[static_cast<unsigned char>(c)];
}

// Below 0, 0 or above 0, by the codes of the lower-case characters.
[[nodiscard]] int compareWithoutCase(std::string_view a, std::string_view b);

}  // namespace bromvale

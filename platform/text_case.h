#pragma once
#include <array>
#include <string_view>

namespace bromvale {

// Upper and lower case of Windows-1252, for every comparison without case in the program. "ß" has no partner
// and stays; "ÿ" and "Ÿ", "š" and "Š", "œ" and "Œ", "ž" and "Ž" are pairs across the two halves of the code
// page.
using CaseTable = std::array<char, 256>;
extern const CaseTable kUpperCase;
extern const CaseTable kLowerCase;

[[nodiscard]] inline char upperCase(char c) {
    return kUpperCase[static_cast<unsigned char>(c)];
}
[[nodiscard]] inline char lowerCase(char c) {
    return kLowerCase[static_cast<unsigned char>(c)];
}

// Below 0, 0 or above 0, by the codes of the lower-case characters.
[[nodiscard]] int compareWithoutCase(std::string_view a, std::string_view b);

}  // namespace bromvale

#pragma once
#include <optional>
#include <string_view>

namespace bromvale {

// A number read from a text. &H and &O texts are bit patterns: FFFF is -1 as a 16-bit number.
struct ParsedNumber {
    double value;
    bool pattern;
};

// By the signs of the user's locale, and as generous as the system's own parser: a sign before or behind,
// parentheses for a negative number, the currency sign before or behind, blanks around all of them,
// thousands signs anywhere behind the first digit, an exponent, and whole numbers behind &H and &O. Nothing
// where the text is no number. What is too large becomes infinite.
[[nodiscard]] std::optional<ParsedNumber> parseNumber(std::string_view text);

// Of the user's locale.
[[nodiscard]] char decimalSign();

}  // namespace bromvale

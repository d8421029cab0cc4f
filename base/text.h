#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale {

// Texts are bytes of the code page, positions count from 1, 0 means not found. The same without copies stands
// in base/text_parts.h.

// Failure 5 for a negative length.
[[nodiscard]] std::string Left(std::string_view text, std::int64_t length);
[[nodiscard]] std::string Right(std::string_view text, std::int64_t length);
// From position `start`; Failure 5 for a start below 1 or a negative length.
[[nodiscard]] std::string Mid(std::string_view text, std::int64_t start, std::int64_t length);
[[nodiscard]] std::string Mid(std::string_view text, std::int64_t start);
// An empty `sought` is found at 1 in any text but the empty one, where it is 0. Binary comparison.
[[nodiscard]] std::int32_t InStr(std::string_view text, std::string_view sought);
[[nodiscard]] std::string Replace(std::string_view text, std::string_view sought, std::string_view with);
// By the code page: umlauts too; "ß" stays.
[[nodiscard]] std::string LCase(std::string_view text);
[[nodiscard]] std::string UCase(std::string_view text);
// LCase without a new text where `text` can be changed in place.
void lowerInPlace(std::string& text);
[[nodiscard]] std::string withBackslash(std::string_view folder);

}  // namespace bromvale

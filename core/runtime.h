#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/failure.h"

namespace bromvale {

// The small runtime below the routines: text positions, numbers, dates. Text is Windows-1252, positions count
// from 1, 0 means not found.

// The latest caught failure while its handler runs; number 0 and empty text otherwise.
[[nodiscard]] const Failure& lastFailure();
void setLastFailure(const Failure& failure);
void clearLastFailure();

// --- text ---
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

// --- numbers ---
// A text as the system's number parser reads it (see core/number_parser.h), rounded half to even. Failure 13
// where it is no number, 6 out of range.
[[nodiscard]] std::int16_t toInt16(std::string_view text);
[[nodiscard]] std::int32_t toInt32(std::string_view text);
[[nodiscard]] std::uint8_t toByte(std::string_view text);
[[nodiscard]] bool isNumeric(std::string_view text);
// Failure 6 out of range.
[[nodiscard]] std::int16_t narrowInt16(std::int64_t value);
[[nodiscard]] std::int32_t narrowInt32(std::int64_t value);
// Half to even. Decimals 0 to 15.
[[nodiscard]] double roundHalfEven(double value, int decimals);
// Failure 11 for a division by zero, 6 for zero by zero.
[[nodiscard]] double divide(double dividend, double divisor);
// Default text form: up to 15 significant digits, the locale's decimal sign, no decimals on a whole number,
// "0,5" with its leading zero, exponent form from 1E+15 on.
[[nodiscard]] std::string numberText(double value);

// --- date and time, local ---
// Seconds since midnight, with fractions.
[[nodiscard]] double secondsOfDay();
// In the user's short date and long time format.
[[nodiscard]] std::string dateText();
[[nodiscard]] std::string timeText();
// By a picture of GetDateFormatA / GetTimeFormatA in the user's locale, such as "ddMMyyyy" or "HH':'mm':'ss".
[[nodiscard]] std::string dateText(const char* picture);
[[nodiscard]] std::string timeText(const char* picture);

// Waits and serves events until the time of day has reached the start plus `seconds`. Past midnight the time
// of day falls back to 0, so that a wait begun just before it never ends: kept, since a target of the next
// day would need a date, and every caller waits seconds.
void Pause(double seconds);

}  // namespace bromvale

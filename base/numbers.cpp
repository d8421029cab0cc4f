#include "base/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <system_error>

#include "base/failure.h"
#include "base/number_parser.h"

namespace bromvale {
namespace {

// Bare digits with or without a minus before them mean the same in every language: what the user's one has
// for numbers need not be asked.
template <class Integer>
std::optional<Integer> bareInteger(std::string_view text) {
    Integer value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

template <class Integer>
Integer toInteger(std::string_view text) {
    if (const auto bare = bareInteger<Integer>(text)) return *bare;
    const auto number = parseNumber(text);
    if (!number) raise(13);
    using Limits = std::numeric_limits<Integer>;
    double value = std::nearbyint(number->value);
    if constexpr (Limits::is_signed) {
        const double patterns = 2.0 * (static_cast<double>(Limits::max()) + 1);
        if (number->pattern && value > Limits::max() && value < patterns) value -= patterns;
    }
    if (!(value >= Limits::min() && value <= Limits::max())) raise(6);
    return static_cast<Integer>(value);
}

template <class Integer>
Integer narrow(std::int64_t value) {
    if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max()) raise(6);
    return static_cast<Integer>(value);
}

}  // namespace

std::int16_t toInt16(std::string_view text) {
    return toInteger<std::int16_t>(text);
}

std::int32_t toInt32(std::string_view text) {
    return toInteger<std::int32_t>(text);
}

std::uint8_t toByte(std::string_view text) {
    return toInteger<std::uint8_t>(text);
}

bool isNumeric(std::string_view text) {
    return parseNumber(text).has_value();
}

std::int16_t narrowInt16(std::int64_t value) {
    return narrow<std::int16_t>(value);
}

std::int32_t narrowInt32(std::int64_t value) {
    return narrow<std::int32_t>(value);
}

double roundHalfEven(double value, int decimals) {
    if (decimals < 0 || decimals > 15) raise(5);
    double scale = 1;
    for (int i = 0; i < decimals; ++i) scale *= 10;
    const double rounded = std::nearbyint(value * scale);
    if (!std::isfinite(rounded)) return value;
    return rounded / scale;
}

double divide(double dividend, double divisor) {
    if (divisor == 0) raise(dividend == 0 ? 6 : 11);
    return dividend / divisor;
}

std::string numberText(double value) {
    std::array<char, 40> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%.15G", value == 0 ? 0.0 : value);
    std::string text(digits.data(), static_cast<std::size_t>(length));
    const std::size_t point = text.find('.');
    if (point != std::string::npos) text[point] = decimalSign();
    return text;
}

}  // namespace bromvale

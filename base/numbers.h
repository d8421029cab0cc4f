#pragma once
#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale {

// A text as the system's number parser reads it (see base/number_parser.h), rounded half to even. Failure 13
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

// A whole number in plain decimal.
class NumberPart {
  public:
    explicit NumberPart(std::int64_t number)
        : size_(static_cast<std::size_t>(
              std::to_chars(digits_.data(), digits_.data() + digits_.size(), number).ptr - digits_.data())) {}
    [[nodiscard]] std::string_view text() const { return {digits_.data(), size_}; }

  private:
    std::array<char, 24> digits_{};
    std::size_t size_;
};

inline void appendNumber(std::string& text, std::int64_t number) {
    text += NumberPart(number).text();
}

}  // namespace bromvale

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>

#include "core/runtime.h"
#include "platform/machine.h"

namespace bromvale {
namespace {

char localeSign(LCTYPE which, char fallback) {
    std::array<char, 8> sign{};
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, which, sign.data(), static_cast<int>(sign.size()));
    return length > 1 ? sign[0] : fallback;
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int digitValue(char c) {
    if (isDigit(c)) return c - '0';
    const char low = static_cast<char>(c | 0x20);
    return low >= 'a' && low <= 'f' ? low - 'a' + 10 : 16;
}

// A number read from a text. &H and &O texts are bit patterns: FFFF is -1 as a 16-bit number.
struct Number {
    double value;
    bool pattern;
};

class NumberParser {
  public:
    explicit NumberParser(std::string_view text)
        : rest_(text),
          decimal_(localeSign(LOCALE_SDECIMAL, '.')),
          thousands_(localeSign(LOCALE_STHOUSAND, ',')) {}

    std::optional<Number> parse() {
        skipBlanks();
        const bool negative = takeSign();
        if (take('&')) {
            const auto pattern = parsePattern();
            if (!pattern || !atEnd()) return std::nullopt;
            return Number{negative ? -*pattern : *pattern, !negative};
        }
        std::string plain = negative ? "-" : "";
        if (!takeMantissa(plain) || !takeExponent(plain) || !atEnd()) return std::nullopt;
        return Number{std::strtod(plain.c_str(), nullptr), false};
    }

  private:
    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
    }
    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }
    bool take(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool takeSign() {
        const bool negative = take('-');
        if (!negative) take('+');
        skipBlanks();
        return negative;
    }
    // Copies digits; counts them.
    int takeDigits(std::string& plain, bool grouped) {
        int digits = 0;
        for (; !rest_.empty(); rest_.remove_prefix(1)) {
            if (isDigit(rest_.front())) {
                plain += rest_.front();
                ++digits;
            } else if (!grouped || digits == 0 || rest_.front() != thousands_) {
                break;
            }
        }
        return digits;
    }
    bool takeMantissa(std::string& plain) {
        int digits = takeDigits(plain, true);
        if (take(decimal_)) {
            plain += '.';
            digits += takeDigits(plain, false);
        }
        return digits > 0;
    }
    bool takeExponent(std::string& plain) {
        if (!take('e') && !take('E') && !take('d') && !take('D')) return true;
        plain += 'e';
        if (take('-')) {
            plain += '-';
        } else {
            take('+');
        }
        return takeDigits(plain, false) > 0;
    }
    std::optional<double> parsePattern() {
        const bool hex = take('h') || take('H');
        if (!hex && !take('o') && !take('O')) return std::nullopt;
        const int base = hex ? 16 : 8;
        double value = 0;
        int digits = 0;
        for (; !rest_.empty() && digitValue(rest_.front()) < base; rest_.remove_prefix(1), ++digits) {
            value = value * base + digitValue(rest_.front());
        }
        if (digits == 0) return std::nullopt;
        return value;
    }

    std::string_view rest_;
    char decimal_;
    char thousands_;
};

template <class Integer>
Integer toInteger(std::string_view text) {
    const auto number = NumberParser(text).parse();
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
    return NumberParser(text).parse().has_value();
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
    // volatile: the 32-bit program would keep more digits than a double has, and ties would no longer be
    // ties.
    volatile double scaled = value * scale;
    const double rounded = std::nearbyint(scaled);
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
    if (point != std::string::npos) text[point] = localeSign(LOCALE_SDECIMAL, '.');
    return text;
}

}  // namespace bromvale

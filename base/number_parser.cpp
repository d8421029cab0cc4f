#include "base/number_parser.h"

#include <array>
#include <cstdlib>
#include <string>

#include "base/system.h"

namespace bromvale {
namespace {

constexpr char kNoBreakSpace = '\xA0';

char localeSign(LocaleText which, char fallback) {
    const std::string sign = localeText(which);
    return sign.empty() ? fallback : sign[0];
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == kNoBreakSpace;
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int digitValue(char c) {
    if (isDigit(c)) return c - '0';
    const char low = static_cast<char>(c | 0x20);
    return low >= 'a' && low <= 'f' ? low - 'a' + 10 : 16;
}

class NumberParser {
  public:
    explicit NumberParser(std::string_view text)
        : rest_(text),
          decimal_(localeSign(LocaleText::DecimalSign, '.')),
          thousands_(localeSign(LocaleText::ThousandsSign, ',')),
          currency_(localeText(LocaleText::Currency)) {}

    std::optional<ParsedNumber> parse() {
        takeLead();
        const bool pattern = !money_ && take('&');
        const auto value = pattern ? parsePattern() : parseDecimal();
        if (!value || !takeTail(pattern)) return std::nullopt;
        const bool negative = minus_ || opened_;
        return ParsedNumber{negative ? -*value : *value, pattern && !negative};
    }

  private:
    bool take(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool takeAnyOf(std::string_view characters) {
        for (const char c : characters) {
            if (take(c)) return true;
        }
        return false;
    }
    bool takeOnce(char c, bool& seen) { return !seen && (seen = take(c)); }
    bool takeBlank() {
        if (rest_.empty() || !isBlank(rest_.front())) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool takeCurrency() {
        if (currency_.empty() || !rest_.starts_with(currency_)) return false;
        rest_.remove_prefix(currency_.size());
        return true;
    }

    // Each sign once, in any order.
    void takeLead() {
        while (takeBlank() || takeOnce('-', minus_) || takeOnce('+', plus_) || takeOnce('(', opened_) ||
               (!money_ && (money_ = takeCurrency()))) {
        }
    }
    // The same behind the digits; true where nothing else follows. A plus or a minus stands before or
    // behind, a parenthesis that was opened is closed.
    bool takeTail(bool pattern) {
        bool money = pattern;
        bool closed = !opened_;
        while (takeBlank() || takeOnce('-', minus_) || takeOnce('+', plus_) || takeOnce(')', closed) ||
               (!money && (money = takeCurrency()))) {
        }
        return rest_.empty() && closed;
    }

    bool takeThousands() { return thousands_ != '\0' && take(thousands_); }

    // Copies digits, counts them and passes over thousands signs among them.
    int takeDigits(std::string& plain) {
        int digits = 0;
        for (;;) {
            if (!rest_.empty() && isDigit(rest_.front())) {
                plain += rest_.front();
                rest_.remove_prefix(1);
                ++digits;
            } else if (plain.empty() || !takeThousands()) {
                return digits;
            }
        }
    }
    std::optional<double> parseDecimal() {
        std::string plain;
        int digits = takeDigits(plain);
        if (take(decimal_)) {
            plain += '.';
            digits += takeDigits(plain);
        }
        if (digits == 0) return std::nullopt;
        if (takeAnyOf("eEdD")) {
            plain += 'e';
            if (take('-')) {
                plain += '-';
            } else {
                take('+');
            }
            if (takeDigits(plain) == 0) return std::nullopt;
        }
        return std::strtod(plain.c_str(), nullptr);
    }
    std::optional<double> parsePattern() {
        const bool hex = takeAnyOf("hH");
        if (!hex && !takeAnyOf("oO")) return std::nullopt;
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
    std::string currency_;
    bool minus_ = false;
    bool plus_ = false;
    bool opened_ = false;
    bool money_ = false;
};

}  // namespace

std::optional<ParsedNumber> parseNumber(std::string_view text) {
    return NumberParser(text).parse();
}

char decimalSign() {
    return localeSign(LocaleText::DecimalSign, '.');
}

}  // namespace bromvale

// Texts that are to be numbers: the readers agree with one another, and what a number is shown as is read as
// that number.
#include <cmath>
#include <optional>

#include "base/failure.h"
#include "base/number_parser.h"
#include "base/numbers.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

constexpr int kOverflow = 6;

template <class Number>
std::optional<Number> valueOf(Number (*read)(std::string_view), std::string_view text) {
    try {
        return read(text);
    } catch (const Failure& failure) {
        const bool known = failure.number == Failure::kTypesDiffer || failure.number == kOverflow;
        require(known, "no number, or one out of range");
        require((failure.number == kOverflow) == isNumeric(text), "which of them it is");
        return std::nullopt;
    }
}

void run(std::string_view input) {
    const auto parsed = parseNumber(input);
    require(isNumeric(input) == parsed.has_value(), "numeric is what can be read");
    const auto small = valueOf(toInt16, input);
    const auto large = valueOf(toInt32, input);
    const auto byte = valueOf(toByte, input);
    require(!small || parsed->pattern || large == *small, "16 bits are among 32");
    require(!byte || small == *byte, "a byte is among both");
    if (small) require(toInt16(std::to_string(*small)) == *small, "its decimal digits are the same number");
    if (!parsed || !std::isfinite(parsed->value)) return;
    const std::string shown = numberText(parsed->value);
    const auto again = parseNumber(shown);
    require(again.has_value(), "what is shown is a number");
    require(std::abs(again->value - parsed->value) <= std::abs(parsed->value) * 1e-14, "to fifteen digits");
    require(numberText(again->value) == shown, "and is shown so again");
}

std::vector<std::string> seeds() {
    return {"0",        "32767", "-32768", "32768",  " ( 1.234,5 ) ", "1e3",        "1E-5,",
            "&HFFFF",   "&o17",  "&",      "\x80 5", "5 \x80-",       "2147483648", "0,5",
            "1,5E+300", "255",   "+7",     "7+",     "&HFFFFFFFF"};
}

const KnownTarget kTarget({"number", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz

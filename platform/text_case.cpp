#include "platform/text_case.h"

#include <algorithm>

namespace bromvale {
namespace {

struct Pair {
    int upper;
    int lower;
};

// Š š, Œ œ, Ž ž, Ÿ ÿ: the pairs that are not 0x20 apart.
constexpr Pair kOddPairs[] = {{0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};
// The signs of multiplication and division stand among the letters.
constexpr int kTimes = 0xD7;

constexpr CaseTable makeTable(bool toUpper) {
    CaseTable table{};
    const auto pair = [&](int upper, int lower) {
        const int from = toUpper ? lower : upper;
        const int to = toUpper ? upper : lower;
        table[static_cast<std::size_t>(from)] = static_cast<char>(to);
    };
    for (int code = 0; code < 256; ++code) table[static_cast<std::size_t>(code)] = static_cast<char>(code);
    for (int code = 'A'; code <= 'Z'; ++code) pair(code, code + 0x20);
    for (int code = 0xC0; code <= 0xDE; ++code) {
        if (code != kTimes) pair(code, code + 0x20);
    }
    for (const Pair& odd : kOddPairs) pair(odd.upper, odd.lower);
    return table;
}

}  // namespace

constexpr CaseTable kUpperCase = makeTable(true);
constexpr CaseTable kLowerCase = makeTable(false);

int compareWithoutCase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int left = static_cast<unsigned char>(lowerCase(a[i]));
        const int right = static_cast<unsigned char>(lowerCase(b[i]));
        if (left != right) return left - right;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace bromvale

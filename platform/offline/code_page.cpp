#include "platform/offline/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace bromvale::offline {

namespace {

// Bytes 80 to 9F; all others equal their Unicode number.
constexpr std::array<char16_t, 32> kMiddle = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                              0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned char byteOf(char c) {
    return static_cast<unsigned char>(c);
}

constexpr std::array<unsigned char, 256> makeUpper() {
    std::array<unsigned char, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool latin = c >= 'a' && c <= 'z';
        const bool accented = c >= 0xE0 && c <= 0xFE && c != 0xF7;
        table[c] = static_cast<unsigned char>(latin || accented ? c - 0x20 : c);
    }
    table[0x9A] = 0x8A;
    table[0x9C] = 0x8C;
    table[0x9E] = 0x8E;
    table[0xFF] = 0x9F;
    return table;
}

constexpr std::array<unsigned char, 256> makeLower() {
    constexpr auto up = makeUpper();
    std::array<unsigned char, 256> table{};
    for (unsigned c = 0; c < 256; ++c) table[c] = static_cast<unsigned char>(c);
    for (unsigned c = 0; c < 256; ++c) {
        if (up[c] != c) table[up[c]] = static_cast<unsigned char>(c);
    }
    return table;
}

constexpr std::array<char16_t, 256> makeWeights() {
    constexpr auto up = makeUpper();
    std::array<char16_t, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        const unsigned u = up[c];
        table[c] = u >= 0x80 && u < 0xA0 ? kMiddle[u - 0x80] : static_cast<char16_t>(u);
    }
    table[0x83] = 0x0191;  // the capital of ƒ is outside the code page, but keys are ordered by it
    return table;
}

constexpr auto kUpper = makeUpper();
constexpr auto kLower = makeLower();
constexpr auto kWeights = makeWeights();

template <typename Convert>
std::string mapped(std::string_view text, Convert convert) {
    std::string result(text);
    for (char& c : result) c = convert(c);
    return result;
}

void appendUtf8(std::string& out, char16_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Number of bytes of the well-formed sequence that `text` starts with, 0 when it starts with none.
std::size_t utf8Length(std::string_view text, char32_t& number) {
    const unsigned first = byteOf(text[0]);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    if (length == 0 || length > text.size()) return 0;
    constexpr unsigned kMasks[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    number = first & kMasks[length];
    for (std::size_t i = 1; i < length; ++i) {
        const unsigned next = byteOf(text[i]);
        if ((next & 0xC0) != 0x80) return 0;
        number = (number << 6) | (next & 0x3F);
    }
    const bool tooLong = (length == 3 && number < 0x800) || (length == 4 && number < 0x10000);
    const bool surrogate = number >= 0xD800 && number < 0xE000;
    return tooLong || surrogate || number > 0x10FFFF ? 0 : length;
}

}  // namespace

char16_t wideOf(char ansi) {
    const unsigned c = byteOf(ansi);
    return c >= 0x80 && c < 0xA0 ? kMiddle[c - 0x80] : static_cast<char16_t>(c);
}

char ansiOf(char16_t wide) {
    if (wide < 0x80 || (wide >= 0xA0 && wide < 0x100)) return static_cast<char>(wide);
    const auto found = std::find(kMiddle.begin(), kMiddle.end(), wide);
    return found == kMiddle.end() ? '?' : static_cast<char>(0x80 + (found - kMiddle.begin()));
}

std::u16string utf16FromAnsi(std::string_view ansi) {
    std::u16string result(ansi.size(), u'\0');
    std::transform(ansi.begin(), ansi.end(), result.begin(), wideOf);
    return result;
}

std::string ansiFromUtf16(std::u16string_view wide) {
    std::string result(wide.size(), '\0');
    std::transform(wide.begin(), wide.end(), result.begin(), ansiOf);
    return result;
}

std::string ansiFromUtf16Bytes(std::string_view bytes) {
    std::string result(bytes.size() / 2, '\0');
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = ansiOf(static_cast<char16_t>(byteOf(bytes[2 * i]) | byteOf(bytes[2 * i + 1]) << 8));
    }
    return result;
}

std::string utf16BytesFromAnsi(std::string_view ansi) {
    std::string result;
    result.reserve(ansi.size() * 2);
    for (const char c : ansi) {
        const char16_t wide = wideOf(c);
        result += static_cast<char>(wide & 0xFF);
        result += static_cast<char>(wide >> 8);
    }
    return result;
}

std::string utf8FromAnsi(std::string_view ansi) {
    std::string result;
    result.reserve(ansi.size());
    for (const char c : ansi) appendUtf8(result, wideOf(c));
    return result;
}

std::string ansiFromUtf8(std::string_view utf8) {
    std::string result;
    result.reserve(utf8.size());
    while (!utf8.empty()) {
        char32_t number = 0;
        const std::size_t length = utf8Length(utf8, number);
        if (length == 0) {
            result += '?';
            utf8.remove_prefix(1);
            continue;
        }
        if (number > 0xFFFF) {
            result += "??";
        } else {
            result += ansiOf(static_cast<char16_t>(number));
        }
        utf8.remove_prefix(length);
    }
    return result;
}

char upper(char ansi) {
    return static_cast<char>(kUpper[byteOf(ansi)]);
}
char lower(char ansi) {
    return static_cast<char>(kLower[byteOf(ansi)]);
}
std::string upper(std::string_view ansi) {
    return mapped(ansi, [](char c) { return upper(c); });
}
std::string lower(std::string_view ansi) {
    return mapped(ansi, [](char c) { return lower(c); });
}

int compareNoCase(std::string_view left, std::string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = kWeights[byteOf(left[i])] - kWeights[byteOf(right[i])];
        if (difference != 0) return difference;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

bool equalNoCase(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (kUpper[byteOf(left[i])] != kUpper[byteOf(right[i])]) return false;
    }
    return true;
}

}  // namespace bromvale::offline

#include "platform/offline/locale/code_page.h"

#include <algorithm>
#include <array>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/locale/utf8.h"

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

constexpr auto kUpper = makeUpper();
constexpr auto kLower = makeLower();

template <typename Convert>
std::string mapped(std::string_view text, Convert convert) {
    std::string result(text);
    for (char& c : result) c = convert(c);
    return result;
}

}  // namespace

char16_t wideOfMiddle(char ansi) {
    return kMiddle[byteOf(ansi) - 0x80u];
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
    return ansiFromWide(wide, 1252).text;
}

std::string ansiFromUtf16Bytes(std::string_view bytes) {
    return ansiFromStored(storedFromWideBytes(bytes));
}

std::string utf16BytesFromAnsi(std::string_view ansi) {
    std::string result(ansi.size() * 2, '\0');
    for (std::size_t i = 0; i < ansi.size(); ++i) {
        const char16_t wide = wideOf(ansi[i]);
        result[2 * i] = static_cast<char>(wide & 0xFF);
        result[2 * i + 1] = static_cast<char>(wide >> 8);
    }
    return result;
}

std::string utf8FromAnsi(std::string_view ansi) {
    return isAscii(ansi) ? std::string(ansi) : utf8FromWide(utf16FromAnsi(ansi));
}

std::string ansiFromUtf8(std::string_view utf8) {
    return ansiFromStored(storedFromUtf8(utf8));
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

bool equalNoCase(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (kUpper[byteOf(left[i])] != kUpper[byteOf(right[i])]) return false;
    }
    return true;
}

}  // namespace bromvale::offline

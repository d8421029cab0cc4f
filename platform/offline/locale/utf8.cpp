#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isSurrogate(char32_t number) {
    return number >= 0xD800 && number < 0xE000;
}

// Bytes that begin a character and are cut count as one mistake.
std::size_t mistakeLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t wanted = first < 0xC2 || first > 0xF4 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    std::size_t length = 1;
    while (length < wanted && length < text.size()) {
        const auto next = static_cast<unsigned char>(text[length]);
        const bool tooLong =
            length == 1 && ((first == 0xE0 && next < 0xA0) || (first == 0xF0 && next < 0x90));
        const bool tooHigh =
            length == 1 && ((first == 0xED && next > 0x9F) || (first == 0xF4 && next > 0x8F));
        if ((next & 0xC0) != 0x80 || tooLong || tooHigh) break;
        ++length;
    }
    return length;
}

}  // namespace

std::size_t utf8Length(std::string_view text, char32_t& number) {
    const unsigned first = static_cast<unsigned char>(text[0]);
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
        const unsigned next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) return 0;
        number = (number << 6) | (next & 0x3F);
    }
    const bool tooLong = (length == 3 && number < 0x800) || (length == 4 && number < 0x10000);
    return tooLong || isSurrogate(number) || number > 0x10FFFF ? 0 : length;
}

void appendUtf8(std::string& out, char32_t number) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((number >> shift) & 0x3F)); };
    if (number < 0x80) {
        out += static_cast<char>(number);
    } else if (number < 0x800) {
        out += static_cast<char>(0xC0 | (number >> 6));
        tail(0);
    } else if (number < 0x10000) {
        out += static_cast<char>(0xE0 | (number >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (number >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

void appendWide(std::u16string& out, char32_t number) {
    if (number < 0x10000) {
        out += static_cast<char16_t>(number);
        return;
    }
    out += static_cast<char16_t>(0xD800 + ((number - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + ((number - 0x10000) & 0x3FF));
}

char32_t characterAt(std::u16string_view wide, std::size_t& place) {
    const char32_t unit = wide[place++];
    const bool pair = (unit & 0xFC00) == 0xD800 && place < wide.size() && (wide[place] & 0xFC00) == 0xDC00;
    return pair ? 0x10000 + ((unit & 0x3FF) << 10) + (wide[place++] & 0x3FFu) : unit;
}

std::string utf8FromWide(std::u16string_view wide) {
    std::string result;
    result.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size();) {
        const char32_t number = characterAt(wide, i);
        appendUtf8(result, isSurrogate(number) ? kReplacement : number);
    }
    return result;
}

WideConversion wideFromUtf8(std::string_view utf8) {
    WideConversion result;
    result.text.reserve(utf8.size());
    while (!utf8.empty()) {
        char32_t number = kReplacement;
        std::size_t length = utf8Length(utf8, number);
        if (length == 0) {
            number = kReplacement;
            length = mistakeLength(utf8);
            result.invalid = true;
        }
        appendWide(result.text, number);
        utf8.remove_prefix(length);
    }
    return result;
}

}  // namespace bromvale::offline

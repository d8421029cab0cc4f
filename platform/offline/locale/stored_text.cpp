#include "platform/offline/locale/stored_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

constexpr char16_t kEscapedByte = 0xDC00;  // plus the byte

unsigned char byteOf(char c) {
    return static_cast<unsigned char>(c);
}

bool isEscapedByte(char32_t number) {
    return number >= kEscapedByte + 0x80 && number <= kEscapedByte + 0xFF;
}

// Eight bytes at once.
bool isSameAscii(const char* left, const char* right) {
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::memcpy(&a, left, sizeof a);
    std::memcpy(&b, right, sizeof b);
    return a == b && (a & 0x8080808080808080u) == 0;
}

template <class Char>
DWORD answer(std::basic_string_view<Char> text, Char* buffer, DWORD size) {
    if (size <= text.size()) return static_cast<DWORD>(text.size() + 1);
    buffer[text.copy(buffer, text.size())] = Char{};
    return static_cast<DWORD>(text.size());
}

}  // namespace

char* putUnit(char* to, char16_t unit) {
    if (unit < 0x80) {
        *to++ = static_cast<char>(unit);
        return to;
    }
    if (unit < 0x800) {
        *to++ = static_cast<char>(0xC0 | (unit >> 6));
    } else {
        *to++ = static_cast<char>(0xE0 | (unit >> 12));
        *to++ = static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
    }
    *to++ = static_cast<char>(0x80 | (unit & 0x3F));
    return to;
}

void appendUnit(std::string& stored, char16_t unit) {
    char bytes[3];
    stored.append(bytes, static_cast<std::size_t>(putUnit(bytes, unit) - bytes));
}

std::string storedFromWide(std::u16string_view wide) {
    const auto ascii = [](char16_t unit) { return unit < 0x80; };
    if (std::all_of(wide.begin(), wide.end(), ascii)) return {wide.begin(), wide.end()};
    std::string result;
    result.reserve(wide.size());
    for (const char16_t unit : wide) appendUnit(result, unit);
    return result;
}

std::u16string wideFromStored(std::string_view stored) {
    if (isAscii(stored)) return {stored.begin(), stored.end()};
    std::u16string result;
    result.reserve(stored.size());
    while (!stored.empty()) result += takeUnit(stored);
    return result;
}

std::string storedFromAnsi(std::string_view ansi) {
    std::string result;
    result.reserve(ansi.size());
    for (const char c : ansi) appendUnit(result, wideOf(c));
    return result;
}

std::string ansiFromStored(std::string_view stored) {
    return isAscii(stored) ? std::string(stored) : ansiFromUtf16(wideFromStored(stored));
}

std::string storedFromUtf8(std::string_view utf8) {
    std::u16string wide;
    while (!utf8.empty()) {
        char32_t number = 0;
        const std::size_t length = utf8Length(utf8, number);
        appendWide(wide, length != 0 ? number : kEscapedByte + byteOf(utf8.front()));
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return storedFromWide(wide);
}

std::string utf8FromStored(std::string_view stored) {
    if (isAscii(stored)) return std::string(stored);
    const std::u16string wide = wideFromStored(stored);
    std::string result;
    for (std::size_t i = 0; i < wide.size();) {
        const char32_t number = characterAt(wide, i);
        if (isEscapedByte(number)) {
            result += static_cast<char>(number - kEscapedByte);
        } else {
            appendUtf8(result, number);
        }
    }
    return result;
}

std::string storedFromWideBytes(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        appendUnit(result, static_cast<char16_t>(byteOf(bytes[i]) | byteOf(bytes[i + 1]) << 8));
    }
    return result;
}

std::string wideBytesFromStored(std::string_view stored) {
    std::string result;
    result.reserve(stored.size() * 2);
    while (!stored.empty()) {
        const char16_t unit = takeUnit(stored);
        result += static_cast<char>(unit & 0xFF);
        result += static_cast<char>(unit >> 8);
    }
    return result;
}

bool isAscii(std::string_view text) {
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + i, sizeof bytes);
        if ((bytes & 0x8080808080808080u) != 0) return false;
    }
    for (; i < text.size(); ++i) {
        if (byteOf(text[i]) >= 0x80) return false;
    }
    return true;
}

std::size_t unitCount(std::string_view stored) {
    // Every unit has one byte that does not go on with one before it.
    const auto begins = [](char c) { return (byteOf(c) & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(stored.begin(), stored.end(), begins));
}

int compareStored(std::string_view left, std::string_view right) {
    // Nearly all names are ASCII up to where they differ, and many begin alike.
    const std::size_t common = std::min(left.size(), right.size());
    std::size_t same = 0;
    while (same + 8 <= common && isSameAscii(left.data() + same, right.data() + same)) same += 8;
    for (; same < common; ++same) {
        const unsigned char a = byteOf(left[same]);
        const unsigned char b = byteOf(right[same]);
        if ((a | b) >= 0x80) break;
        if (a != b && upperUnit(a) != upperUnit(b)) return upperUnit(a) - upperUnit(b);
    }
    left.remove_prefix(same);
    right.remove_prefix(same);
    while (!left.empty() && !right.empty()) {
        const int difference = upperUnit(takeUnit(left)) - upperUnit(takeUnit(right));
        if (difference != 0) return difference;
    }
    if (left.empty() == right.empty()) return 0;
    return left.empty() ? -1 : 1;
}

bool sameStored(std::string_view left, std::string_view right) {
    return compareStored(left, right) == 0;
}

std::string upperStored(std::string_view stored) {
    std::string result;
    while (!stored.empty()) appendUnit(result, upperUnit(takeUnit(stored)));
    return result;
}

StoredText::StoredText(std::string_view ansi)
    : Converted(isAscii(ansi) ? Converted(ansi) : Converted(storedFromWide(wideFromAnsi(ansi)))) {}

StoredText::StoredText(std::u16string_view wide)
    : Converted(textRules().unicode ? storedFromWide(wide) : withinCodePage(storedFromWide(wide))) {}

AnsiText::AnsiText(std::string_view stored)
    : Converted(isAscii(stored)
                    ? Converted(stored)
                    : Converted(ansiFromWide(wideFromStored(stored), textRules().codePage).text)) {}

std::string withinCodePage(std::string_view stored) {
    if (isAscii(stored)) return std::string(stored);
    std::u16string result;
    for (const char16_t unit : wideFromStored(stored)) {
        const AnsiConversion ansi = ansiFromWide({&unit, 1}, textRules().codePage);
        result += ansi.usedDefault ? u"_" : wideFromAnsi(ansi.text, textRules().codePage).text;
    }
    return storedFromWide(result);
}

DWORD answerLength(std::string_view text, LPSTR buffer, DWORD size) {
    return answer(text, buffer, size);
}

DWORD answerLength(std::u16string_view text, LPWSTR buffer, DWORD size) {
    return answer(text, buffer, size);
}

}  // namespace bromvale::offline

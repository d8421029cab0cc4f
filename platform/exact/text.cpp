#include "platform/exact/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>

#include "platform/machine.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

constexpr char16_t kSubstitute = 0x1A;
constexpr std::size_t kHighBytes = 128;

// The characters of the bytes 80 to FF.
struct CodePage {
    UINT number = 0;
    bool singleBytes = false;
    std::array<char16_t, kHighBytes> high{};
};

CodePage readCodePage(UINT number) {
    CodePage page;
    page.number = number;
    CPINFO info{};
    page.singleBytes = GetCPInfo(number, &info) != 0 && info.MaxCharSize == 1;
    for (std::size_t i = 0; page.singleBytes && i < kHighBytes; ++i) {
        const char byte = static_cast<char>(0x80 + i);
        MultiByteToWideChar(number, 0, &byte, 1, units(&page.high[i]), 1);
    }
    return page;
}

// A running system keeps its code page; the one of an offline machine may be set anew.
const CodePage& codePage() {
    static CodePage page = readCodePage(GetACP());
    if (const UINT now = GetACP(); now != page.number) page = readCodePage(now);
    return page;
}

std::optional<char> byteOf(const CodePage& page, char16_t unit) {
    if (!page.singleBytes) return std::nullopt;
    const auto* const found = std::find(page.high.begin(), page.high.end(), unit);
    if (found == page.high.end()) return std::nullopt;
    return static_cast<char>(0x80 + (found - page.high.begin()));
}

bool isPlainAscii(char16_t unit) {
    return unit < 0x80 && unit != kSubstitute;
}

// Four units at once; their number up to the first that isn't plain ASCII.
std::size_t narrowAscii(std::u16string_view wide, char* to) {
    std::size_t done = 0;
    for (; done + 4 <= wide.size(); done += 4) {
        std::uint64_t units = 0;
        std::memcpy(&units, wide.data() + done, sizeof units);
        if ((units & 0xFF80FF80FF80FF80u) != 0) break;
        units |= units >> 8;
        const auto bytes = static_cast<std::uint32_t>((units & 0xFFFFu) | (units >> 16 & 0xFFFF0000u));
        std::memcpy(to + done, &bytes, sizeof bytes);
    }
    for (; done < wide.size() && wide[done] < 0x80; ++done) to[done] = static_cast<char>(wide[done]);
    const void* const mark = std::memchr(to, kMark, done);
    return mark == nullptr ? done : static_cast<std::size_t>(static_cast<const char*>(mark) - to);
}

bool startsWithMark(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789";
    return text.size() >= kMarkSize &&
           text.substr(1, kMarkSize - 1).find_first_not_of(kDigits) == std::string_view::npos;
}

// The unit that a mark at the front of the text stands for.
char16_t markedUnit(std::string_view text) {
    unsigned number = 0;
    for (const char digit : text.substr(1, kMarkSize - 1))
        number = number * 10 + static_cast<unsigned>(digit - '0');
    return static_cast<char16_t>(number);
}

void appendWide(std::u16string& wide, std::string_view ansi, UINT number = CP_ACP) {
    if (ansi.empty()) return;
    const std::size_t start = wide.size();
    wide.resize(start + ansi.size());  // no character of any code page is longer in UTF-16 than in bytes
    const int written = MultiByteToWideChar(number, 0, ansi.data(), static_cast<int>(ansi.size()),
                                            units(wide.data() + start), static_cast<int>(ansi.size()));
    if (written > 0) {
        wide.resize(start + static_cast<std::size_t>(written));
    } else {
        // An old system may come without the page: then each byte counts as the character of its number.
        std::transform(ansi.begin(), ansi.end(), wide.begin() + static_cast<std::ptrdiff_t>(start),
                       [](char c) { return static_cast<char16_t>(static_cast<unsigned char>(c)); });
    }
}

std::string nearest(std::u16string_view wide) {
    std::string text(wide.size() * 4, '\0');
    const int written = WideCharToMultiByte(CP_ACP, 0, units(wide.data()), static_cast<int>(wide.size()),
                                            text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(static_cast<std::size_t>(written));
    return text;
}

// How German writes its letters where they are missing.
std::string_view spelling(char16_t unit) {
    switch (unit) {
        case u'ä': return "ae";
        case u'ö': return "oe";
        case u'ü': return "ue";
        case u'Ä': return "Ae";
        case u'Ö': return "Oe";
        case u'Ü': return "Ue";
        case u'ß': return "ss";
        default: return "_";
    }
}

std::u16string wideLiteral(std::string_view literal) {
    constexpr UINT kWestern = 1252;
    std::u16string wide;
    appendWide(wide, literal, kWestern);
    return wide;
}

}  // namespace

// On the 9x family the ANSI text is the text, and the byte is a character of it.
bool isExact(std::string_view text) {
    return text.find(kMark) == std::string_view::npos || wide() == nullptr;
}

void appendMark(std::string& text, char16_t unit) {
    std::array<char, kMarkSize> mark{kMark};
    unsigned number = unit;
    for (std::size_t i = kMarkSize; i-- > 1; number /= 10) mark[i] = static_cast<char>('0' + number % 10);
    text.append(mark.data(), mark.size());
}

void appendExact(std::string& text, std::u16string_view wide) {
    // Nearly all of a registry is ASCII, and a scan comes here for each name and text.
    const std::size_t start = text.size();
    text.resize(start + wide.size());
    const std::size_t ascii = narrowAscii(wide, text.data() + start);
    if (ascii == wide.size()) return;
    text.resize(start + ascii);
    const CodePage& page = codePage();
    for (const char16_t unit : wide.substr(ascii)) {
        if (isPlainAscii(unit)) {
            text += static_cast<char>(unit);
        } else if (const auto byte = unit < 0x80 ? std::nullopt : byteOf(page, unit)) {
            text += *byte;
        } else {
            appendMark(text, unit);
        }
    }
}

std::string exactText(std::u16string_view wide) {
    std::string text;
    appendExact(text, wide);
    return text;
}

std::u16string wideText(std::string_view text) {
    std::u16string wide;
    wide.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find(kMark), text.size());
        appendWide(wide, text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        // The byte may stand in a file that somebody has written, and then means itself.
        const bool mark = startsWithMark(text);
        wide += mark ? markedUnit(text) : kSubstitute;
        text.remove_prefix(mark ? kMarkSize : 1);
    }
    return wide;
}

std::string plainText(std::string_view text) {
    return isExact(text) ? std::string(text) : nearest(wideText(text));
}

std::string fileNameText(std::string_view literal) {
    std::string text;
    for (const char16_t unit : wideLiteral(literal)) {
        if (isPlainAscii(unit)) {
            text += static_cast<char>(unit);
        } else if (const auto byte = byteOf(codePage(), unit)) {
            text += *byte;
        } else {
            text += spelling(unit);
        }
    }
    return text;
}

std::string systemText(std::string_view literal) {
    return nearest(wideLiteral(literal));
}

std::size_t ansiSize(std::u16string_view wide) {
    if (codePage().singleBytes || wide.empty()) return wide.size();
    return static_cast<std::size_t>(WideCharToMultiByte(
        CP_ACP, 0, units(wide.data()), static_cast<int>(wide.size()), nullptr, 0, nullptr, nullptr));
}

bool codePageHasSingleBytes() {
    return codePage().singleBytes;
}

bool textsCanBeTold() {
    return wide() != nullptr || codePageHasSingleBytes();
}

}  // namespace bromvale

#include "platform/offline/locale/code_page.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "platform/offline/locale/code_page_tables.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

unsigned char byteOf(char c) {
    return static_cast<unsigned char>(c);
}

constexpr char kNone = '\t';

// The nearest letter.
char nearest(std::span<const BestFit> table, char16_t unit) {
    const auto behind =
        std::upper_bound(table.begin(), table.end(), unit,
                         [](char16_t wanted, const BestFit& each) { return wanted < each.first; });
    if (behind == table.begin()) return kNone;
    const BestFit& run = *std::prev(behind);
    const std::size_t place = unit - run.first;
    return place < run.letters.size() ? run.letters[place] : kNone;
}

// Code of a unit that the code page holds, 0 where it lacks it. Two bytes above FF.
unsigned exactCode(char16_t unit, UINT codePage) {
    if (unit < 0x80) return unit;
    if (codePage == 1252) {
        const char byte = ansiOf(unit);
        return byte == '?' ? 0 : byteOf(byte);
    }
    if (codePage == 1250) {
        const auto* found = std::find(kHigh1250.begin(), kHigh1250.end(), unit);
        return found == kHigh1250.end() ? 0 : 0x80 + static_cast<unsigned>(found - kHigh1250.begin());
    }
    for (const CodeRange& range : kRanges932) {
        if (unit >= range.first && unit <= range.last) return range.code + (unit - range.first);
    }
    return 0;
}

std::span<const BestFit> bestFitOf(UINT codePage) {
    if (codePage == 1252) return kBestFit1252;
    if (codePage == 1250) return kBestFit1250;
    return kBestFit932;
}

void append(std::string& text, unsigned code) {
    if (code > 0xFF) text += static_cast<char>(code >> 8);
    text += static_cast<char>(code & 0xFF);
}

bool isLead932(char c) {
    const unsigned char byte = byteOf(c);
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

// U+30FB stands for what the code page does not know.
constexpr char16_t kUnknown932 = 0x30FB;

char16_t wideOf932(unsigned code, bool& invalid) {
    if (code <= 0x80) return static_cast<char16_t>(code);
    for (const CodeRange& range : kRanges932) {
        if (code >= range.code && code - range.code <= static_cast<unsigned>(range.last - range.first))
            return static_cast<char16_t>(range.first + (code - range.code));
    }
    invalid = true;
    return kUnknown932;
}

WideConversion wideFrom932(std::string_view ansi) {
    WideConversion result;
    for (std::size_t i = 0; i < ansi.size(); ++i) {
        unsigned code = byteOf(ansi[i]);
        const bool pair = isLead932(ansi[i]) && i + 1 < ansi.size() && ansi[i + 1] != '\0';
        if (pair) code = code << 8 | byteOf(ansi[++i]);
        result.text += wideOf932(code, result.invalid);
    }
    return result;
}

char16_t wideOf1250(char c) {
    return byteOf(c) < 0x80 ? byteOf(c) : kHigh1250[byteOf(c) - 0x80u];
}

}  // namespace

bool knowsCodePage(UINT codePage) {
    return codePage == 1252 || codePage == 1250 || codePage == 932 || codePage == CP_UTF8;
}

AnsiConversion ansiFromWide(std::u16string_view wide, UINT codePage, bool bestFit) {
    if (codePage == CP_UTF8) return {utf8FromWide(wide), false};
    AnsiConversion result;
    result.text.reserve(wide.size());
    for (const char16_t unit : wide) {
        unsigned code = exactCode(unit, codePage);
        if (code == 0 && unit != 0) {
            const char letter = bestFit ? nearest(bestFitOf(codePage), unit) : kNone;
            code = byteOf(letter == kNone ? '?' : letter);
            result.usedDefault = result.usedDefault || letter == kNone;
        }
        append(result.text, code);
    }
    return result;
}

WideConversion wideFromAnsi(std::string_view ansi, UINT codePage) {
    if (codePage == CP_UTF8) return wideFromUtf8(ansi);
    if (codePage == 932) return wideFrom932(ansi);
    if (isAscii(ansi)) return {{ansi.begin(), ansi.end()}, false};
    WideConversion result;
    result.text.resize(ansi.size());
    std::transform(ansi.begin(), ansi.end(), result.text.begin(), codePage == 1250 ? wideOf1250 : wideOf);
    return result;
}

std::u16string wideFromAnsi(std::string_view ansi) {
    return wideFromAnsi(ansi, textRules().codePage).text;
}

}  // namespace bromvale::offline

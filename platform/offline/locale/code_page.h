// Windows-1252, the code page of the program's own texts and of those who set up a machine. What it lacks
// becomes the nearest letter that Windows takes, else '?', one for each UTF-16 unit. The five bytes that the
// code page leaves undefined (81, 8D, 8F, 90, 9D) stand for U+0081 and so on, as on Windows.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// Of the bytes 80 to 9F; all others equal their Unicode number.
char16_t wideOfMiddle(char ansi);
inline char16_t wideOf(char ansi) {
    const auto byte = static_cast<unsigned char>(ansi);
    return byte >= 0x80 && byte < 0xA0 ? wideOfMiddle(ansi) : char16_t{byte};
}
// '?' where the code page does not hold exactly this.
char ansiOf(char16_t wide);

std::u16string utf16FromAnsi(std::string_view ansi);
std::string ansiFromUtf16(std::u16string_view wide);
// `bytes` is UTF-16LE; an odd last byte is dropped, as the ANSI functions of Windows do.
std::string ansiFromUtf16Bytes(std::string_view bytes);
std::string utf16BytesFromAnsi(std::string_view ansi);
std::string utf8FromAnsi(std::string_view ansi);
// Bytes that are no UTF-8 become '?' each.
std::string ansiFromUtf8(std::string_view utf8);

// A text from those who set up a machine and look at it: in Windows-1252, or as Windows keeps it.
class WideText {
  public:
    WideText(std::u16string_view wide) : wide_(wide) {}
    WideText(std::u16string wide) : wide_(std::move(wide)) {}
    WideText(const char16_t* wide) : wide_(wide) {}
    WideText(std::string_view ansi) : wide_(utf16FromAnsi(ansi)) {}
    WideText(const std::string& ansi) : wide_(utf16FromAnsi(ansi)) {}
    WideText(const char* ansi) : wide_(utf16FromAnsi(ansi)) {}

    [[nodiscard]] std::u16string_view view() const { return wide_; }

  private:
    std::u16string wide_;
};

// One byte stays one byte: what has no counterpart in the code page (ß, µ, ƒ) stays as it is.
char upper(char ansi);
char lower(char ansi);
std::string upper(std::string_view ansi);
std::string lower(std::string_view ansi);

bool equalNoCase(std::string_view left, std::string_view right);

// What a machine makes of names.
struct TextRules {
    UINT codePage = 1252;  // the ANSI one
    bool unicode = true;   // off on the 9x family, where a name is what the code page holds of it
};
// Those of the process's one machine.
TextRules& textRules();

// Those that a machine may have, with Windows' conversions: 1252, 1250, 932 (a part of it) and 65001.
[[nodiscard]] bool knowsCodePage(UINT codePage);

// What WideCharToMultiByte makes of the text: the nearest letter where the code page lacks one, else '?', one
// for each unit.
struct AnsiConversion {
    std::string text;
    bool usedDefault = false;  // a '?' stands for something else
};
AnsiConversion ansiFromWide(std::u16string_view wide, UINT codePage, bool bestFit = true);

struct WideConversion {
    std::u16string text;
    bool invalid = false;  // bytes that are no text of the code page
};
WideConversion wideFromAnsi(std::string_view ansi, UINT codePage);
// A text of the program, which is in the machine's code page.
std::u16string wideFromAnsi(std::string_view ansi);

}  // namespace bromvale::offline

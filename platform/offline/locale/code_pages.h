// The code pages that a machine may have: 1252, 1250, 932 (a part of it) and 65001, with Windows'
// conversions.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

// What a machine makes of names.
struct TextRules {
    UINT codePage = 1252;  // the ANSI one
    bool unicode = true;   // off on the 9x family, where a name is what the code page holds of it
};
// Those of the process's one machine.
TextRules& textRules();

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

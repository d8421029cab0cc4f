// The code pages that a machine may have: 1252, 1250, a part of 932, and 65001.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

namespace bromvale::offline {

[[nodiscard]] bool knowsCodePage(UINT codePage);

// What WideCharToMultiByte makes of the text: the nearest letter where the code page lacks one, else '?'.
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

}  // namespace bromvale::offline

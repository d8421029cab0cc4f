#include "platform/offline/code_pages.h"

#include "platform/offline/code_page.h"

namespace bromvale::offline {

bool knowsCodePage(UINT codePage) {
    return codePage == 1252;
}

AnsiConversion ansiFromWide(std::u16string_view wide, UINT, bool) {
    AnsiConversion result{ansiFromUtf16(wide), false};
    result.usedDefault = utf16FromAnsi(result.text) != wide;
    return result;
}

WideConversion wideFromAnsi(std::string_view ansi, UINT) {
    return {utf16FromAnsi(ansi), false};
}

}  // namespace bromvale::offline

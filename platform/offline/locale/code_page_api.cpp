// The conversions between the code pages and UTF-16 under Windows' names.
#include <algorithm>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"
#include "platform/offline/machine_api.h"

using namespace bromvale::offline;

namespace {

UINT pageOf(UINT codePage) {
    return codePage == CP_ACP ? textRules().codePage : codePage;
}

// A size of -1 means a text up to its NUL, which is converted along.
template <class Char>
std::basic_string_view<Char> given(const Char* text, int size) {
    if (size >= 0) return {text, static_cast<std::size_t>(size)};
    const std::basic_string_view<Char> whole(text);
    return {text, whole.size() + 1};
}

template <class Char>
int answer(const std::basic_string<Char>& text, Char* buffer, int size) {
    const int needed = static_cast<int>(text.size());
    if (size == 0) return needed;
    text.copy(buffer, static_cast<std::size_t>(size));
    return needed <= size ? needed : failed(ERROR_INSUFFICIENT_BUFFER);
}

}  // namespace

UINT GetACP() {
    return textRules().codePage;
}

BOOL GetCPInfo(UINT codePage, LPCPINFO info) {
    const UINT page = pageOf(codePage);
    if (info == nullptr || !knowsCodePage(page)) return failed(ERROR_INVALID_PARAMETER);
    *info = {1, {'?', 0}, {}};
    if (page == CP_UTF8) info->MaxCharSize = 4;
    if (page == 932) {
        info->MaxCharSize = 2;
        constexpr BYTE kLeads[] = {0x81, 0x9F, 0xE0, 0xFC};
        std::copy(std::begin(kLeads), std::end(kLeads), info->LeadByte);
    }
    return TRUE;
}

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int size, LPWSTR wide, int wideSize) {
    const UINT page = pageOf(codePage);
    const bool badSize = size == 0 || wideSize < 0 || (wide == nullptr && wideSize != 0);
    if (text == nullptr || badSize || !knowsCodePage(page)) return failed(ERROR_INVALID_PARAMETER);
    const WideConversion converted = wideFromAnsi(given(text, size), page);
    if (converted.invalid && (flags & MB_ERR_INVALID_CHARS) != 0) return failed(ERROR_NO_UNICODE_TRANSLATION);
    return answer(converted.text, wide, wideSize);
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR wide, int wideSize, LPSTR text, int size,
                        LPCSTR defaultChar, LPBOOL usedDefault) {
    const UINT page = pageOf(codePage);
    const bool badSize = wideSize == 0 || size < 0 || (text == nullptr && size != 0);
    const bool badDefault = page == CP_UTF8 && (defaultChar != nullptr || usedDefault != nullptr);
    // Nothing above asks for another sign than the code page's own.
    if (wide == nullptr || badSize || badDefault || !knowsCodePage(page)) {
        return failed(ERROR_INVALID_PARAMETER);
    }
    const AnsiConversion converted =
        ansiFromWide(given(wide, wideSize), page, (flags & WC_NO_BEST_FIT_CHARS) == 0);
    if (usedDefault != nullptr) *usedDefault = converted.usedDefault ? TRUE : FALSE;
    return answer(converted.text, text, size);
}

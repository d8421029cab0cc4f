// Upper and lower case of texts in the machine's code page.
#include <clocale>
#include <cwctype>

#include "platform/offline/machine_api.h"

namespace {

using Change = wint_t (*)(wint_t, locale_t);

char16_t unitOf(char c) {
    char16_t unit = 0;
    MultiByteToWideChar(CP_ACP, 0, &c, 1, &unit, 1);
    return unit;
}

// A byte whose other case is a byte of the same page.
char changed(char c, Change change) {
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const auto other = static_cast<char16_t>(change(unitOf(c), unicode));
    char found = c;
    if (WideCharToMultiByte(CP_ACP, 0, &other, 1, &found, 1, nullptr, nullptr) != 1) return c;
    return unitOf(found) == other ? found : c;
}

DWORD changeAll(LPSTR text, DWORD length, Change change) {
    for (DWORD i = 0; i < length; ++i) text[i] = changed(text[i], change);
    return length;
}

}  // namespace

DWORD CharLowerBuffA(LPSTR text, DWORD length) {
    return changeAll(text, length, towlower_l);
}

DWORD CharUpperBuffA(LPSTR text, DWORD length) {
    return changeAll(text, length, towupper_l);
}

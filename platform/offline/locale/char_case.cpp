// Upper and lower case of texts in the machine's code page, a byte a character.
#include "platform/offline/locale/unit_case.h"
#include "platform/offline/machine_api.h"

namespace {

using bromvale::offline::upperUnit;

char16_t unitOf(char c) {
    char16_t unit = 0;
    MultiByteToWideChar(CP_ACP, 0, &c, 1, &unit, 1);
    return unit;
}

// The byte of a letter; `otherwise` where the page has none.
char byteOf(char16_t unit, char otherwise) {
    char byte = otherwise;
    const bool converted = WideCharToMultiByte(CP_ACP, 0, &unit, 1, &byte, 1, nullptr, nullptr) == 1;
    return converted && unitOf(byte) == unit ? byte : otherwise;
}

char upperOf(char c) {
    return byteOf(upperUnit(unitOf(c)), c);
}

// The byte whose capital this is.
char lowerOf(char c) {
    for (int code = 0; code < 256; ++code) {
        const char small = static_cast<char>(code);
        if (small != c && upperOf(small) == c) return small;
    }
    return c;
}

}  // namespace

DWORD CharLowerBuffA(LPSTR text, DWORD length) {
    for (DWORD i = 0; i < length; ++i) text[i] = lowerOf(text[i]);
    return length;
}

DWORD CharUpperBuffA(LPSTR text, DWORD length) {
    for (DWORD i = 0; i < length; ++i) text[i] = upperOf(text[i]);
    return length;
}

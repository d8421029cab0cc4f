// Upper and lower case: of UTF-16 units, and of texts in the machine's code page.
#include <algorithm>
#include <iterator>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine_api.h"

namespace bromvale::offline {
namespace {

// Every `step`th unit from `first` to `last` is a small letter; its capital lies `distance` further.
struct Letters {
    char16_t first;
    char16_t last;
    char16_t step;
    int distance;
};

constexpr Letters run(char16_t first, char16_t last, char16_t step, int distance) {
    return {first, last, step, distance};
}
constexpr Letters one(char16_t unit, int distance) {
    return run(unit, unit, 1, distance);
}

// Latin, Greek, Cyrillic, Armenian, numbers, letters in circles, Glagolitic, full width. In order.
// clang-format off
constexpr Letters kSmall[] = {
    run(0x00E0, 0x00F6, 1, -32), run(0x00F8, 0x00FE, 1, -32), one(0x00FF, 121), run(0x0101, 0x012F, 2, -1),
    run(0x0133, 0x0137, 2, -1), run(0x013A, 0x0148, 2, -1), run(0x014B, 0x0177, 2, -1),
    run(0x017A, 0x017E, 2, -1), one(0x0180, 195), run(0x0183, 0x0185, 2, -1), one(0x0188, -1),
    one(0x018C, -1), one(0x0192, -1), one(0x0195, 97), one(0x0199, -1), one(0x019A, 163), one(0x019E, 130),
    run(0x01A1, 0x01A5, 2, -1), one(0x01A8, -1), one(0x01AD, -1), one(0x01B0, -1),
    run(0x01B4, 0x01B6, 2, -1), one(0x01B9, -1), one(0x01BD, -1), one(0x01BF, 56), one(0x01C6, -2),
    one(0x01C9, -2), one(0x01CC, -2), run(0x01CE, 0x01DC, 2, -1), one(0x01DD, -79),
    run(0x01DF, 0x01EF, 2, -1), one(0x01F3, -2), one(0x01F5, -1), run(0x01F9, 0x021F, 2, -1),
    run(0x0223, 0x0233, 2, -1), one(0x023C, -1), run(0x023F, 0x0240, 1, 10815), one(0x0242, -1),
    run(0x0247, 0x024F, 2, -1), one(0x0250, 10783), one(0x0251, 10780), one(0x0252, 10782),
    one(0x0253, -210), one(0x0254, -206), run(0x0256, 0x0257, 1, -205), one(0x0259, -202),
    one(0x025B, -203), one(0x0260, -205), one(0x0263, -207), one(0x0268, -209), one(0x0269, -211),
    one(0x026B, 10743), one(0x026F, -211), one(0x0271, 10749), one(0x0272, -213), one(0x0275, -214),
    one(0x027D, 10727), one(0x0280, -218), one(0x0283, -218), one(0x0288, -218), one(0x0289, -69),
    run(0x028A, 0x028B, 1, -217), one(0x028C, -71), one(0x0292, -219), run(0x0371, 0x0373, 2, -1),
    one(0x0377, -1), run(0x037B, 0x037D, 1, 130), one(0x03AC, -38), run(0x03AD, 0x03AF, 1, -37),
    run(0x03B1, 0x03C1, 1, -32), run(0x03C3, 0x03CB, 1, -32), one(0x03CC, -64), run(0x03CD, 0x03CE, 1, -63),
    one(0x03D7, -8), run(0x03D9, 0x03EF, 2, -1), one(0x03F2, 7), one(0x03F3, -116), one(0x03F8, -1),
    one(0x03FB, -1), run(0x0430, 0x044F, 1, -32), run(0x0450, 0x045F, 1, -80), run(0x0461, 0x0481, 2, -1),
    run(0x048B, 0x04BF, 2, -1), run(0x04C2, 0x04CE, 2, -1), one(0x04CF, -15), run(0x04D1, 0x052F, 2, -1),
    run(0x0561, 0x0586, 1, -48), run(0x1E01, 0x1E95, 2, -1), run(0x1EA1, 0x1EFF, 2, -1),
    run(0x1F00, 0x1F07, 1, 8), run(0x1F10, 0x1F15, 1, 8), run(0x1F20, 0x1F27, 1, 8),
    run(0x1F30, 0x1F37, 1, 8), run(0x1F40, 0x1F45, 1, 8), run(0x1F51, 0x1F57, 2, 8),
    run(0x1F60, 0x1F67, 1, 8), run(0x1F70, 0x1F71, 1, 74), run(0x1F72, 0x1F75, 1, 86),
    run(0x1F76, 0x1F77, 1, 100), run(0x1F78, 0x1F79, 1, 128), run(0x1F7A, 0x1F7B, 1, 112),
    run(0x1F7C, 0x1F7D, 1, 126), run(0x1F80, 0x1F87, 1, 8), run(0x1F90, 0x1F97, 1, 8),
    run(0x1FA0, 0x1FA7, 1, 8), run(0x1FB0, 0x1FB1, 1, 8), one(0x1FB3, 9), one(0x1FC3, 9),
    run(0x1FD0, 0x1FD1, 1, 8), run(0x1FE0, 0x1FE1, 1, 8), one(0x1FE5, 7), one(0x1FF3, 9), one(0x214E, -28),
    run(0x2170, 0x217F, 1, -16), one(0x2184, -1), run(0x24D0, 0x24E9, 1, -26), run(0x2C30, 0x2C5F, 1, -48),
    one(0x2C61, -1), one(0x2C65, -10795), one(0x2C66, -10792), run(0x2C68, 0x2C6C, 2, -1), one(0x2C73, -1),
    one(0x2C76, -1), run(0xFF41, 0xFF5A, 1, -32)};
// clang-format on

}  // namespace

char16_t upperBeyondAscii(char16_t unit) {
    const auto* found =
        std::lower_bound(std::begin(kSmall), std::end(kSmall), unit,
                         [](const Letters& each, char16_t wanted) { return each.last < wanted; });
    if (found == std::end(kSmall) || unit < found->first || (unit - found->first) % found->step != 0)
        return unit;
    return static_cast<char16_t>(unit + found->distance);
}

}  // namespace bromvale::offline

namespace {

// In the machine's code page, a byte a character.
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
    return byteOf(bromvale::offline::upperUnit(unitOf(c)), c);
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

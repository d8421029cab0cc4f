#include "platform/win32/windows/colours.h"

#include <algorithm>
#include <cmath>

namespace bromvale {

namespace {

double linear(int part) {
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(COLORREF colour) {
    return 0.2126 * linear(GetRValue(colour)) + 0.7152 * linear(GetGValue(colour)) +
           0.0722 * linear(GetBValue(colour));
}

}  // namespace

bool readable(COLORREF text, COLORREF ground) {
    constexpr double kLeast = 4.5;
    const auto [darker, lighter] = std::minmax({luminance(text), luminance(ground)});
    return (lighter + 0.05) / (darker + 0.05) >= kLeast;
}

HBRUSH faceColours(HDC dc) {
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    return GetSysColorBrush(COLOR_BTNFACE);
}

}  // namespace bromvale

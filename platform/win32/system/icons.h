#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// A picture of the program's resources as it was drawn. Lives as long as the process.
struct DrawnIcon {
    HICON handle;
    int pixels;  // its edge
};
// The largest that isn't larger than so many pixels and that this system can read, so that nothing is
// stretched; the smallest one, made smaller, where all are larger. A null handle where there is none.
[[nodiscard]] DrawnIcon drawnIcon(int resourceId, int pixels);

// Draws it in the middle of a square of so many pixels.
void drawIcon(HDC dc, int resourceId, POINT at, int pixels);

}  // namespace bromvale

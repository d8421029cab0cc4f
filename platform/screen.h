#pragma once

namespace bromvale {

// Twips in a pixel: 15 at 96 DPI, 10 at 144 DPI.
[[nodiscard]] int twipsPerPixelX();
[[nodiscard]] int twipsPerPixelY();

// Size of the screen in twips.
[[nodiscard]] int screenWidth();
[[nodiscard]] int screenHeight();

// Twips.
struct ScreenArea {
    int left;
    int top;
    int right;
    int bottom;
};
// What the task bar leaves of the screen that this point lies on, or of the one nearest to it.
[[nodiscard]] ScreenArea workingArea(int left, int top);

}  // namespace bromvale

#pragma once
#include "base/scale.h"

namespace bromvale {

// Of the system: what places on the screen are told by, whatever screen they are on.
[[nodiscard]] Scale systemScale();
// Twips in a pixel: 15 at 96 DPI, 10 at 144 DPI, no whole number at 168.
[[nodiscard]] inline double twipsPerPixel() {
    return static_cast<double>(Scale::kTwipsPerInch) / systemScale().dpi();
}

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

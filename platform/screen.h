#pragma once

namespace bromvale {

// Twips in a pixel: 15 at 96 DPI, 10 at 144 DPI.
[[nodiscard]] int twipsPerPixelX();
[[nodiscard]] int twipsPerPixelY();

// Size of the screen in twips.
[[nodiscard]] int screenWidth();
[[nodiscard]] int screenHeight();

}  // namespace bromvale

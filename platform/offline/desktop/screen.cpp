#include "platform/screen.h"

#include "platform/offline/machine.h"

namespace bromvale {
namespace {

constexpr int kTwipsPerInch = 1440;

}  // namespace

int twipsPerPixelX() {
    return kTwipsPerInch / offline::machine().screen.dpi;
}
int twipsPerPixelY() {
    return kTwipsPerInch / offline::machine().screen.dpi;
}
int screenWidth() {
    return offline::machine().screen.width * twipsPerPixelX();
}
int screenHeight() {
    return offline::machine().screen.height * twipsPerPixelY();
}

// One screen, all of it free.
ScreenArea workingArea(int, int) {
    return {0, 0, screenWidth(), screenHeight()};
}

}  // namespace bromvale

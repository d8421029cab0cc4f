// Pictures have the size that was drawn, whatever the scaling.
#include <gtest/gtest.h>

#include "platform/win32/system/icons.h"
#include "resources/resource_ids.h"

namespace bromvale::testing {
namespace {

// Edge of the picture behind the handle.
int edgeOf(HICON icon) {
    ICONINFO info{};
    if (icon == nullptr || !GetIconInfo(icon, &info)) return 0;
    BITMAP bitmap{};
    GetObjectA(info.hbmColor, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return static_cast<int>(bitmap.bmWidth);
}

TEST(Icons, ThereIsADrawingForEachScaling) {
    for (int percent = 100; percent <= 300; percent += 25) {
        const int small = 16 * percent / 100;
        const int large = 32 * percent / 100;
        EXPECT_EQ(drawnIcon(BROMVALE_ICON_LIST_FIRST, small).pixels, small);
        EXPECT_EQ(edgeOf(drawnIcon(BROMVALE_ICON_LIST_FIRST, small).handle), small);
        EXPECT_EQ(drawnIcon(BROMVALE_ICON_NAV_FIRST, large).pixels, large);
        EXPECT_EQ(edgeOf(drawnIcon(BROMVALE_ICON_NAV_FIRST, large).handle), large);
    }
}

TEST(Icons, BetweenTwoDrawingsTheSmallerOneIsTaken) {
    EXPECT_EQ(drawnIcon(BROMVALE_ICON_NAV_FIRST, 55).pixels, 48);
    EXPECT_EQ(drawnIcon(BROMVALE_ICON_NAV_FIRST, 160).pixels, 96);
}

TEST(Icons, BelowTheSmallestDrawingItIsMadeSmaller) {
    EXPECT_EQ(drawnIcon(BROMVALE_ICON_NAV_FIRST, 20).pixels, 20);
    EXPECT_EQ(edgeOf(drawnIcon(BROMVALE_ICON_NAV_FIRST, 20).handle), 20);
}

TEST(Icons, WhereThereIsNoneTheHandleIsNull) {
    EXPECT_EQ(drawnIcon(999, 32).handle, nullptr);
    drawIcon(nullptr, 999, {0, 0}, 32);
}

}  // namespace
}  // namespace bromvale::testing

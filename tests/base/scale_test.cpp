// Twips and pixels at every scaling. The system's own arithmetic is asked beside it in scale_win32.cpp.
#include "base/scale.h"

#include <gtest/gtest.h>

namespace bromvale::testing {
namespace {

TEST(Scale, RoundsToTheNearestHalvesAwayFromZero) {
    EXPECT_EQ(mulDiv(7, 1, 2), 4);
    EXPECT_EQ(mulDiv(-7, 1, 2), -4);
    EXPECT_EQ(mulDiv(4, 1, 3), 1);
    EXPECT_EQ(mulDiv(-4, 1, 3), -1);
    EXPECT_EQ(mulDiv(5, 1, 3), 2);
    EXPECT_EQ(mulDiv(0, 168, 1440), 0);
    EXPECT_EQ(mulDiv(2000000000, 288, 576), 1000000000);
}

// 10515 x 7800 twips are the smallest window.
TEST(Scale, TheSmallestWindowInPixels) {
    struct Row {
        int dpi;
        int width;
        int height;
    };
    for (const Row& row : {Row{96, 701, 520}, Row{120, 876, 650}, Row{144, 1052, 780}, Row{168, 1227, 910},
                           Row{192, 1402, 1040}, Row{216, 1577, 1170}, Row{240, 1753, 1300},
                           Row{264, 1928, 1430}, Row{288, 2103, 1560}}) {
        EXPECT_EQ(Scale(row.dpi).pixels(10515), row.width) << row.dpi;
        EXPECT_EQ(Scale(row.dpi).pixels(7800), row.height) << row.dpi;
    }
}

TEST(Scale, PixelsComeBackAsTheyWere) {
    for (int dpi = 96; dpi <= 288; dpi += 12) {
        const Scale scale(dpi);
        for (int pixels = -3000; pixels <= 6000; ++pixels) {
            ASSERT_EQ(scale.pixels(scale.twips(pixels)), pixels) << dpi;
        }
    }
}

TEST(Scale, ALengthThatNobodyChangesStaysThroughAllScalings) {
    int width = 10515;
    for (const int dpi : {168, 96, 264, 120, 216, 96}) {
        const Scale scale(dpi);
        width = scale.twipsLike(width, scale.pixels(width));
    }
    EXPECT_EQ(width, 10515);
    EXPECT_EQ(Scale(168).twipsLike(10515, 1228), 10526);
}

TEST(Scale, PixelsOf96DotsGrowWithTheScreen) {
    EXPECT_EQ(Scale(168).scaled(32), 56);
    EXPECT_EQ(Scale(288).scaled(32), 96);
    EXPECT_EQ(Scale(120).scaled(3), 4);
}

TEST(Scale, WithoutDotsItIsTheDesigns) {
    EXPECT_EQ(Scale(0).dpi(), 96);
}

}  // namespace
}  // namespace bromvale::testing

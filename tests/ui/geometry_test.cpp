// Window place and state at Form_Load.
#include <algorithm>

#include "platform/screen.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

class Geometry : public MainFormTest {
  protected:
    Geometry() {
        ScreenX = 600;
        ScreenY = 1200;
        Form_Height = 9000;
        Form_Width = 10800;
    }
};

TEST_F(Geometry, WithScreenSaveThePlaceIsRestoredWithItsCrossedNames) {
    ScreenSave = 1;
    ASSERT_GT(screenWidth(), Form_Width) << "the screen is too small for this window";
    EXPECT_EQ(frmMain().top(), 600);
    EXPECT_EQ(frmMain().left(), 1200);
    EXPECT_EQ(frmMain().height(), 9000);
    EXPECT_EQ(frmMain().width(), 10800);
    EXPECT_EQ(frmMain().windowState(), WindowState::Normal);
}

TEST_F(Geometry, WithoutScreenSaveNothingIsRestored) {
    EXPECT_EQ(frmMain().width(), 10515);
    EXPECT_EQ(frmMain().windowState(), WindowState::Normal);
}

TEST_F(Geometry, AStoredWidthOfTheScreensWidthOpensTheWindowMaximised) {
    ScreenSave = 1;
    Form_Width = static_cast<std::int16_t>(screenWidth());
    EXPECT_EQ(frmMain().windowState(), WindowState::Maximised);
}

TEST_F(Geometry, ACaptionAboveAndLeftOfTheScreenComesBack) {
    ScreenSave = 1;
    ScreenX = -3000;
    ScreenY = -15;
    const ScreenArea area = workingArea(0, 0);
    EXPECT_EQ(frmMain().top(), area.top);
    EXPECT_EQ(frmMain().left(), area.left);
}

TEST_F(Geometry, APlaceOnAScreenThatIsGoneComesBackWhole) {
    ScreenSave = 1;
    ScreenX = 32000;
    ScreenY = 32000;
    const ScreenArea area = workingArea(0, 0);
    ASSERT_FALSE(area.right > 31000 || area.right < 10800 || area.bottom < 9000)
        << "another screen is needed";
    EXPECT_EQ(frmMain().top() + frmMain().height(), area.bottom);
    EXPECT_EQ(frmMain().left() + frmMain().width(), area.right);
}

struct Moved {
    const char* what;
    Place from;
    Place to;
};
// A task bar at the top and a screen left of the main one.
constexpr ScreenArea kArea{-15360, 450, 0, 11520};
constexpr Moved kMoved[] = {
    {"inside it stays", {-15000, 600, 10515, 7800}, {-15000, 600, 10515, 7800}},
    {"in the corner it stays", {-15360, 450, 10515, 7800}, {-15360, 450, 10515, 7800}},
    {"over the right edge it stays", {-700, 600, 10515, 7800}, {-700, 600, 10515, 7800}},
    {"over the lower edge it stays", {-15000, 10900, 10515, 7800}, {-15000, 10900, 10515, 7800}},
    {"below the task bar at the top", {-15000, 0, 10515, 7800}, {-15000, 450, 10515, 7800}},
    {"left of it", {-15375, 600, 10515, 7800}, {-15360, 600, 10515, 7800}},
    {"beyond the right edge", {-300, 600, 10515, 7800}, {-10515, 600, 10515, 7800}},
    {"beyond the lower edge", {-15000, 11000, 10515, 7800}, {-15000, 3720, 10515, 7800}},
    {"larger than the screen", {-20000, -3000, 20000, 15000}, {-15360, 450, 20000, 15000}},
    {"larger and beyond", {500, 12000, 20000, 15000}, {-15360, 450, 20000, 15000}},
};

TEST(WithCaptionIn, OnlyACaptionThatCannotBeReachedIsMoved) {
    for (const Moved& row : kMoved) EXPECT_EQ(withCaptionIn(kArea, row.from), row.to) << row.what;
}

TEST_F(Geometry, AStoredSizeBelowTheMinimumSnaps) {
    ScreenSave = 1;
    Form_Height = 3000;
    Form_Width = 3000;
    EXPECT_EQ(frmMain().height(), 7800);
    EXPECT_EQ(frmMain().width(), 10515);
}

TEST_F(Geometry, LoadingTracesAndSwitchesTheTrayEntryOn) {
    switchTracingOn();
    EXPECT_TRUE(frmMain().mnuPopUpShowForm.enabled());
    const auto lines = logLines();
    const auto has = [&](const std::string& line) { return std::count(lines.begin(), lines.end(), line); };
    EXPECT_EQ(has("frmMain; Form_Load; started; 0; "), 1);
    EXPECT_EQ(has("frmMain; Form_Load; endet; 0; "), 1);
}

}  // namespace
}  // namespace bromvale::testing

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
    if (screenWidth() <= Form_Width) GTEST_SKIP() << "the screen is too small for this window";
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

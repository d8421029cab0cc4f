// Screens that are smaller than the window's minimum: the window keeps within them, and its pages scroll.
#include "platform/offline/machine.h"
#include "platform/screen.h"
#include "tests/ui/main_form_fixture.h"
#include "tests/ui/resize_rows.h"

namespace bromvale::testing {
namespace {

using offline::machine;

class SmallScreen : public MainFormTest {
  protected:
    static void screen(int width, int height, int dpi) { machine().screen = {width, height, dpi}; }
};

// What a page holds stands as in the smallest window.
constexpr ResizedTo kAsInTheSmallest[] = {
    {"lvwRegKeys", &Control::height, 5695},    {"lvwRegKeys", &Control::width, 7845},
    {"cmdStart", &Control::top, 6195},         {"chbRegKeysShow", &Control::top, 6275},
    {"lvwOrdnerList", &Control::height, 1695}, {"chbDelFilePermanent", &Control::top, 5135},
};

TEST_F(SmallScreen, BothWaysTooSmallTheWindowIsTheScreen) {
    screen(800, 600, 120);
    FrmMain& form = frmMain();
    EXPECT_EQ(form.place(), (Place{0, 0, 9600, 7200}));
    EXPECT_EQ(form.scan.Frame1.place(), (Place{1920, 120, 7380, 6175}));
    EXPECT_EQ(form.scan.Frame1.contentWidth(), 8295);
    EXPECT_EQ(form.scan.Frame1.contentHeight(), 6775);
    expectSizes(form, kAsInTheSmallest);
    EXPECT_EQ(form.Menu.height(), 6095);
    EXPECT_EQ(form.StatusBar_.panels()[0].width, 4280);
}

TEST_F(SmallScreen, OnlyTooLowTheWindowIsWiderByAScrollBar) {
    screen(1280, 720, 144);
    FrmMain& form = frmMain();
    EXPECT_EQ(form.width(), 10785);
    EXPECT_EQ(form.height(), 7200);
    EXPECT_EQ(form.top(), 0);
    EXPECT_EQ(form.options.Frame5.width(), 8565);
    EXPECT_EQ(form.options.Frame5.contentWidth(), 8295);
    EXPECT_EQ(form.options.Frame5.contentHeight(), 6775);
    expectSizes(form, kAsInTheSmallest);
}

TEST_F(SmallScreen, TheScreenIsTheMinimum) {
    screen(800, 600, 120);
    FrmMain& form = frmMain();
    form.setPlace({0, 0, 6000, 5000});
    EXPECT_EQ(form.width(), 9600);
    EXPECT_EQ(form.height(), 7200);
}

TEST_F(SmallScreen, ASavedWindowOfALargerScreenComesWithinIt) {
    screen(1280, 720, 144);
    ScreenSave = 1;
    ScreenX = 3000;
    ScreenY = 6000;
    Form_Height = 9000;
    Form_Width = 12000;
    EXPECT_EQ(frmMain().place(), (Place{800, 0, 12000, 7200}));
}

TEST_F(SmallScreen, WhereTheMinimumFitsNothingScrolls) {
    screen(1280, 1024, 120);
    FrmMain& form = frmMain();
    EXPECT_EQ(form.height(), 7800);
    EXPECT_EQ(form.scan.Frame1.contentWidth(), form.scan.Frame1.width());
    EXPECT_EQ(form.scan.Frame1.contentHeight(), form.scan.Frame1.height());
}

TEST_F(SmallScreen, APlaceSavedAtOneScalingComesBackAtAnother) {
    ScreenSave = 1;
    ScreenX = 600;
    ScreenY = 1207;
    Form_Height = 9001;
    Form_Width = 10801;
    screen(2560, 1600, 168);
    EXPECT_EQ(frmMain().place(), (Place{1207, 600, 10801, 9001}));
}

}  // namespace
}  // namespace bromvale::testing

// The smallest window, whose frame the offline machine gives the classic 120 x 405 twips.
#include "tests/ui/main_form_fixture.h"
#include "tests/ui/resize_rows.h"

namespace bromvale::testing {
namespace {

// At an inner size of 10395 x 7395 twips.
constexpr ResizedTo kSmallest[] = {
    {"Menu", &Control::height, 6695},
    {"Frame1", &Control::height, 6775},
    {"Frame1", &Control::width, 8295},
    {"lvwRegKeys", &Control::height, 5695},
    {"lvwRegKeys", &Control::width, 7845},
    {"cmdStart", &Control::top, 6195},
    {"cmdAbbrechen", &Control::top, 6195},
    {"chbRegKeysShow", &Control::top, 6275},
    {"chbMarkierteKeysEntfernen", &Control::top, 6275},
    {"Frame2", &Control::height, 6775},
    {"Frame2", &Control::width, 8295},
    {"lvwBackup", &Control::height, 5695},
    {"lvwBackup", &Control::width, 7845},
    {"cmdBearbeiten", &Control::top, 6195},
    {"cmdEintragen", &Control::top, 6195},
    {"cmdLöschen", &Control::top, 6195},
    {"Frame3", &Control::height, 6775},
    {"Frame3", &Control::width, 8295},
    {"Frame4", &Control::height, 6775},
    {"Frame4", &Control::width, 8295},
    {"lvwDeinstall", &Control::height, 5695},
    {"lvwDeinstall", &Control::width, 7845},
    {"cmdDeinstall", &Control::top, 6195},
    {"cmdDeinstallRefresh", &Control::top, 6195},
    {"Frame5", &Control::height, 6775},
    {"Frame5", &Control::width, 8295},
    {"Frame7", &Control::height, 6775},
    {"Frame7", &Control::width, 8295},
    {"lvwOrdnerList", &Control::height, 1695},
    {"lvwOrdnerList", &Control::width, 7845},
    {"cmdOrdnerWählen", &Control::top, 4115},
    {"cmdOrdnerLöschen", &Control::top, 4115},
    {"cmdInhaltLöschen", &Control::top, 4115},
    {"lblTempFileDel", &Control::top, 4645},
    {"chbTempFilesDel", &Control::top, 5095},
    {"chbDelFilePermanent", &Control::top, 5135},
    {"ProgressBar", &Control::left, 7575},
    {"ProgressBar", &Control::top, 7180},
};

using SmallestWindow = MainFormTest;

TEST_F(SmallestWindow, IsTheSizeThatTheProgramOpensWith) {
    EXPECT_EQ(frmMain().width(), 10515);
    EXPECT_EQ(frmMain().height(), 7800);
    expectSizes(frmMain(), kSmallest);
}

TEST_F(SmallestWindow, GivesEveryControlItsPlace) {
    frmMain().setPlace({0, 0, 15000, 12000});
    frmMain().setPlace({0, 0, 10515, 7800});
    ASSERT_EQ(frmMain().scaleWidth(), 10395);
    ASSERT_EQ(frmMain().scaleHeight(), 7395);
    expectSizes(frmMain(), kSmallest);
    EXPECT_EQ(frmMain().cleanup.Line2.x2(), 8045);
    EXPECT_EQ(frmMain().StatusBar_.panels()[0].width, 5195);
    EXPECT_EQ(frmMain().StatusBar_.place(), (Place{0, 7140, 10395, 255}));
}

}  // namespace
}  // namespace bromvale::testing

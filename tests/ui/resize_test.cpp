// What moves and grows with the main window.
#include "tests/ui/main_form_fixture.h"
#include "tests/ui/resize_rows.h"

namespace bromvale::testing {
namespace {

// At an inner size of 15000 x 11250 twips.
constexpr ResizedTo kLarge[] = {
    {"Menu", &Control::height, 10550},
    {"Frame1", &Control::height, 10630},
    {"Frame1", &Control::width, 12900},
    {"lvwRegKeys", &Control::height, 9550},
    {"lvwRegKeys", &Control::width, 12450},
    {"cmdStart", &Control::top, 10050},
    {"cmdAbbrechen", &Control::top, 10050},
    {"chbRegKeysShow", &Control::top, 10130},
    {"chbMarkierteKeysEntfernen", &Control::top, 10130},
    {"Frame2", &Control::height, 10630},
    {"Frame2", &Control::width, 12900},
    {"lvwBackup", &Control::height, 9550},
    {"lvwBackup", &Control::width, 12450},
    {"cmdBearbeiten", &Control::top, 10050},
    {"cmdEintragen", &Control::top, 10050},
    {"cmdLöschen", &Control::top, 10050},
    {"Frame3", &Control::height, 10630},
    {"Frame3", &Control::width, 12900},
    {"Frame4", &Control::height, 10630},
    {"Frame4", &Control::width, 12900},
    {"lvwDeinstall", &Control::height, 9550},
    {"lvwDeinstall", &Control::width, 12450},
    {"cmdDeinstall", &Control::top, 10050},
    {"cmdDeinstallRefresh", &Control::top, 10050},
    {"Frame5", &Control::height, 10630},
    {"Frame5", &Control::width, 12900},
    {"Frame7", &Control::height, 10630},
    {"Frame7", &Control::width, 12900},
    {"lvwOrdnerList", &Control::height, 5550},
    {"lvwOrdnerList", &Control::width, 12450},
    {"cmdOrdnerWählen", &Control::top, 7970},
    {"cmdOrdnerLöschen", &Control::top, 7970},
    {"cmdInhaltLöschen", &Control::top, 7970},
    {"lblTempFileDel", &Control::top, 8500},
    {"chbTempFilesDel", &Control::top, 8950},
    {"chbDelFilePermanent", &Control::top, 8990},
    {"ProgressBar", &Control::left, 12180},
    {"ProgressBar", &Control::top, 11035},
};

class Resize : public MainFormTest {
  protected:
    static void setInner(int width, int height) { frmMain().setScaleSize(width, height); }
};

TEST_F(Resize, ALargeWindowGivesEveryControlItsPlace) {
    setInner(15000, 11250);
    ASSERT_EQ(frmMain().scaleWidth(), 15000);
    ASSERT_EQ(frmMain().scaleHeight(), 11250);
    expectSizes(frmMain(), kLarge);
    EXPECT_EQ(frmMain().cleanup.Line2.left(), 240);
    EXPECT_EQ(frmMain().cleanup.Line2.x2(), 12650);
    EXPECT_EQ(frmMain().StatusBar_.panels()[0].width, 9800);
    EXPECT_EQ(frmMain().StatusBar_.place(), (Place{0, 10995, 15000, 255}));
}

TEST_F(Resize, AllOtherPlacesStayAsDesigned) {
    setInner(15000, 11250);
    FrmMain& form = frmMain();
    EXPECT_EQ(form.Menu.left(), 120);
    EXPECT_EQ(form.Menu.top(), 210);
    EXPECT_EQ(form.Menu.width(), 1575);
    EXPECT_EQ(form.scan.Frame1.left(), 1920);
    EXPECT_EQ(form.scan.Frame1.top(), 120);
    EXPECT_EQ(form.scan.lvwRegKeys.top(), 360);
    EXPECT_EQ(form.scan.cmdStart.place(), (Place{240, 10050, 1095, 375}));
    EXPECT_EQ(form.scan.lblStartText.place(), (Place{240, 420, 7815, 3375}));
    EXPECT_EQ(form.scan.lblScanTxt.place(), (Place{240, 3960, 7815, 255}));
    EXPECT_EQ(form.scan.lblScanProzent.place(), (Place{3360, 4230, 1575, 300}));
    EXPECT_EQ(form.scan.lblScanBericht.place(), (Place{240, 4560, 7815, 255}));
    EXPECT_EQ(form.bugReport.cmdBugReportSenden.place(), (Place{240, 6000, 1335, 375}));
    EXPECT_EQ(form.options.Frame6.place(), (Place{240, 360, 7695, 2055}));
    EXPECT_EQ(form.options.cmdÜbernehmen.place(), (Place{240, 6000, 1335, 375}));
    EXPECT_EQ(form.cleanup.lvwOrdnerList.top(), 2280);
    EXPECT_EQ(form.ProgressBar_.width(), 2650);
    EXPECT_EQ(form.ProgressBar_.height(), 195);
}

TEST_F(Resize, ASizeBelowTheMinimumSnapsBackAndTheRestUsesTheNewSize) {
    FrmMain& form = frmMain();
    setInner(15000, 11250);
    form.setPlace({form.left(), form.top(), 6000, 4500});
    EXPECT_EQ(form.width(), 10515);
    EXPECT_EQ(form.height(), 7800);
    EXPECT_EQ(form.scaleWidth(), 10515 - frameSize(BorderStyle::Sizable).width);
    EXPECT_EQ(form.scaleHeight(), 7800 - frameSize(BorderStyle::Sizable).height);
    EXPECT_EQ(form.Menu.height(), form.scaleHeight() - 700);
    EXPECT_EQ(form.scan.lvwRegKeys.width(), form.scaleWidth() - 2550);
    EXPECT_EQ(form.ProgressBar_.left(), form.scaleWidth() - 2820);
}

TEST_F(Resize, EachDirectionSnapsForItself) {
    FrmMain& form = frmMain();
    form.setPlace({form.left(), form.top(), 12000, 4500});
    EXPECT_EQ(form.width(), 12000);
    EXPECT_EQ(form.height(), 7800);
    form.setPlace({form.left(), form.top(), 6000, 9000});
    EXPECT_EQ(form.width(), 10515);
    EXPECT_EQ(form.height(), 9000);
}

TEST_F(Resize, TheMinimumItselfIsLeftAlone) {
    FrmMain& form = frmMain();
    form.setPlace({form.left(), form.top(), 12000, 9000});
    switchTracingOn();
    form.setPlace({form.left(), form.top(), 10515, 7800});
    EXPECT_EQ(logLines(), (std::vector<std::string>{"frmMain; Form_Resize; started; 0; ",
                                                    "frmMain; Form_Resize; endet; 0; "}));
}

TEST_F(Resize, ASnapRunsTheRoutineOnceMoreInsideItself) {
    FrmMain& form = frmMain();
    switchTracingOn();
    form.setPlace({form.left(), form.top(), 12000, 6000});
    EXPECT_EQ(logLines(), (std::vector<std::string>{
                              "frmMain; Form_Resize; started; 0; ", "frmMain; Form_Resize; started; 0; ",
                              "frmMain; Form_Resize; endet; 0; ", "frmMain; Form_Resize; endet; 0; "}));
    EXPECT_EQ(form.height(), 7800);
}

TEST_F(Resize, AFailureIsReportedAndTheRestIsLeftOut) {
    FrmMain& form = frmMain();
    form.StatusBar_.setPanels({});
    form.ProgressBar_.setLeft(1);
    switchTracingOn();
    setInner(15000, 11250);
    EXPECT_EQ(logLines(),
              (std::vector<std::string>{"frmMain; Form_Resize; started; 0; ",
                                        "frmMain; Form_Resize; ; 35600; Index liegt außerhalb der Grenzen",
                                        "frmMain; Form_Resize; endet; 0; "}));
    EXPECT_EQ(form.cleanup.chbDelFilePermanent.top(), 8990);
    EXPECT_EQ(form.ProgressBar_.left(), 1);
}

}  // namespace
}  // namespace bromvale::testing

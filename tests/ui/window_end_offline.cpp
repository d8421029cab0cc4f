// Form_Unload: always the end of the process.
#include "platform/offline/machine.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_error.h"
#include "ui/frm_popup.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class WindowEnd : public MainFormTest {
  protected:
    static void end() { EXPECT_THROW(frmMain().unload(), offline::ProcessEnded); }
    [[nodiscard]] std::string saved(const char* name) {
        return stringValue(HKEY_CURRENT_USER, "Software\\Bromvale", name);
    }
};

TEST_F(WindowEnd, TheTrayIconStandsFromLoadToUnload) {
    static_cast<void>(frmMain());
    ASSERT_EQ(machine().events.count(EventKind::TrayAdd), 1u);
    EXPECT_EQ(machine().events.of(EventKind::TrayAdd)[0].text, "Bromvale");
    EXPECT_EQ(machine().events.of(EventKind::TrayAdd)[0].number, 512u);
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 0u);
    end();
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 1u);
}

TEST_F(WindowEnd, ATitleTooLongForTheTipIsCut) {
    AppTitle = std::string(70, 'B');
    static_cast<void>(frmMain());
    EXPECT_EQ(machine().events.of(EventKind::TrayAdd)[0].text, std::string(63, 'B'));
}

TEST_F(WindowEnd, IconHelpAndProcessGoInThisOrder) {
    frmMain().show();
    machine().events.clear();
    end();
    const auto& events = machine().events.all();
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[0].kind, EventKind::TrayDelete);
    EXPECT_EQ(events[1].kind, EventKind::Help);
    EXPECT_EQ(events[1].text, "");
    EXPECT_EQ(events[1].number, 18u);
    EXPECT_EQ(events[2].kind, EventKind::End);
    EXPECT_EQ(events[2].number, 0u);
}

TEST_F(WindowEnd, AllFormsAreUnloadedFirst) {
    static_cast<void>(frmMain());
    const FrmPopUp& popUp = frmPopUp();
    frmError().load();
    end();
    EXPECT_FALSE(popUp.loaded());
    EXPECT_FALSE(frmError().loaded());
    EXPECT_TRUE(loadedForms().empty());
}

TEST_F(WindowEnd, WithScreenSaveThePlaceIsSavedWithItsCrossedNames) {
    ScreenSave = 1;
    frmMain().setPlace({1500, 450, 11100, 8700});
    end();
    EXPECT_EQ(saved("Form_Height"), "8700");
    EXPECT_EQ(saved("Form_Width"), "11100");
    EXPECT_EQ(saved("ScreenX"), "450");
    EXPECT_EQ(saved("ScreenY"), "1500");
}

TEST_F(WindowEnd, WithoutScreenSaveNothingIsSaved) {
    frmMain().setPlace({1500, 450, 11100, 8700});
    end();
    EXPECT_EQ(saved("Form_Height"), "7700");
    EXPECT_EQ(saved("ScreenX"), "0");
}

TEST_F(WindowEnd, AMaximisedWindowIsNotSaved) {
    ScreenSave = 1;
    frmMain().setWindowState(WindowState::Maximised);
    EXPECT_EQ(frmMain().width(), 1024 * 15);
    end();
    EXPECT_EQ(saved("Form_Width"), "10515");
    EXPECT_EQ(saved("Form_Height"), "7700");
}

TEST_F(WindowEnd, AMinimisedWindowIsNotSaved) {
    ScreenSave = 1;
    frmMain().setPlace({1500, 450, 11100, 8700});
    frmMain().setWindowState(WindowState::Minimised);
    end();
    EXPECT_EQ(saved("Form_Width"), "10515");
}

TEST_F(WindowEnd, AMissingSettingsKeyIsPassedOverSilently) {
    ScreenSave = 1;
    static_cast<void>(frmMain());
    RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Bromvale");
    end();
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(machine().events.count(EventKind::End), 1u);
}

TEST_F(WindowEnd, TheUnloadIsTraced) {
    static_cast<void>(frmMain());
    switchTracingOn();
    end();
    EXPECT_EQ(logLines().back(), "frmMain; Form_Unload; ; 0; ");
}

TEST_F(WindowEnd, TheCloseBoxEndsTheProcessToo) {
    frmMain().show();
    EXPECT_THROW(frmMain().userClose(), offline::ProcessEnded);
}

// Calls the window's own Form_Load once more.
struct Loading : FrmMain {
    static void again(FrmMain& form) { (form.*&Loading::Form_Load)(); }
};

TEST_F(WindowEnd, AFailureWhileLoadingIsReportedAndTheLoadGoesOn) {
    registerErrorDialog();
    FrmMain& form = frmMain();
    form.imgList.clear();  // takes the tray icon's picture away
    form.mnuPopUpShowForm.setEnabled(false);
    ScreenSave = 1;
    Form_Width = 12000;
    Loading::again(form);
    EXPECT_EQ(logLines(),
              std::vector<std::string>{"frmMain; Form_Load; ; 35600; Index liegt außerhalb der Grenzen"});
    EXPECT_TRUE(frmError().visible());
    EXPECT_EQ(frmError().cmdSchließen.caption(), "Beenden");
    EXPECT_TRUE(form.mnuPopUpShowForm.enabled());
    EXPECT_EQ(form.width(), 12000);
}

TEST_F(WindowEnd, ATrayThatRefusesTheIconIsNoFailure) {
    registerErrorDialog();
    ScreenSave = 1;
    Form_Width = 12000;
    machine().faults.fail("Shell_NotifyIconA", 1, 0);  // its result is not looked at
    EXPECT_EQ(frmMain().width(), 12000);
    EXPECT_FALSE(frmError().loaded());
}

// 701 by 520 pixels, in the middle of a screen of 640 by 480.
TEST_F(WindowEnd, OnASmallScreenTheWindowBeginsInTheCorner) {
    machine().screen = {640, 480, 96};
    EXPECT_EQ(frmMain().left(), 0);
    EXPECT_EQ(frmMain().top(), 0);
}

}  // namespace
}  // namespace bromvale::testing

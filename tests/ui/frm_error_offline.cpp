// "Beenden" of the error dialog.
#include "core/log.h"
#include "platform/offline/machine.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class ErrorDialogEnd : public MainFormTest {
  protected:
    ErrorDialogEnd() { registerErrorDialog(); }
    static void stop() {
        ErrHandle("modTest", "Probe", "", 13, "Typen unverträglich", kStyleStop, kShow);
        EXPECT_THROW(frmError().cmdSchließen.userClick(), offline::ProcessEnded);
    }
};

TEST_F(ErrorDialogEnd, WithTheMainWindowTheEndGoesThroughItAndSavesItsPlace) {
    ScreenSave = 1;
    frmMain().setPlace({1500, 450, 11100, 8700});
    stop();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, "Software\\Bromvale", "ScreenX"), "450");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, "Software\\Bromvale", "Form_Width"), "11100");
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 1u);
    EXPECT_EQ(machine().events.count(EventKind::End), 1u);
}

TEST_F(ErrorDialogEnd, WithoutTheMainWindowTheDialogEndsTheProcessItself) {
    stop();
    const auto& events = machine().events.all();
    ASSERT_GE(events.size(), 3u);
    EXPECT_EQ(events[events.size() - 3].kind, EventKind::TrayDelete);
    EXPECT_EQ(events[events.size() - 2].kind, EventKind::Help);
    EXPECT_EQ(events[events.size() - 2].number, 18u);
    EXPECT_EQ(events.back().kind, EventKind::End);
}

TEST_F(ErrorDialogEnd, TheEndIsTraced) {
    switchTracingOn();
    stop();
    const auto lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "frmError; cmdSchließen_Click; Beenden geklickt; 0; ");
    EXPECT_EQ(lines[lines.size() - 1], "frmError; cmdBeenden_Click; ; 0; ");
}

}  // namespace
}  // namespace bromvale::testing

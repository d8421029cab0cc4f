// The error dialog among the other windows of the screen.
#include "core/log.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

class ErrorDialogOnScreen : public MainFormTest {
  protected:
    ErrorDialogOnScreen() { registerErrorDialog(); }
    // From the topmost window down.
    static bool isAbove(HWND upper, HWND lower) {
        for (HWND window = lower; window != nullptr; window = GetWindow(window, GW_HWNDPREV)) {
            if (window == upper) return true;
        }
        return false;
    }
};

TEST_F(ErrorDialogOnScreen, TheMainWindowOpensBehindIt) {
    ErrHandle("modLibRegister", "CheckLibs", "", 60002, "Die Datei wurde nicht gefunden.", kStyleStop, kShow);
    frmMain().showBehindErrorDialog();
    EXPECT_TRUE(frmMain().visible());
    EXPECT_TRUE(isAbove(frmError().window(), frmMain().window()));
}

TEST_F(ErrorDialogOnScreen, WithoutAFailureTheMainWindowOpensAlone) {
    frmMain().showBehindErrorDialog();
    EXPECT_TRUE(frmMain().visible());
    EXPECT_FALSE(frmError().loaded());
}

}  // namespace
}  // namespace bromvale::testing

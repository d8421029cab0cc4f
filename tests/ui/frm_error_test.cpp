// The error dialog.
#include "ui/frm_error.h"
#include "core/log.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_login.h"

namespace bromvale::testing {
namespace {

class ErrorDialogTest : public MainFormTest {
  protected:
    ErrorDialogTest() {
        EMail = "support@kunde.de";
        registerErrorDialog();
    }
    static void report(std::int32_t style, std::int32_t number = 13, std::int16_t show = kShow) {
        ErrHandle("modTest", "Probe", "", number, "Typen unverträglich", style, show);
    }
};

TEST_F(ErrorDialogTest, AReportFillsAndShowsTheDialog) {
    report(48);
    FrmError& form = frmError();
    EXPECT_TRUE(form.loaded());
    EXPECT_TRUE(form.visible());
    EXPECT_EQ(form.caption(), "Fehlerbericht");
    EXPECT_EQ(form.lblErrDesc.caption(), "Typen unverträglich");
    EXPECT_EQ(form.lblErrNr.caption(), "13");
    EXPECT_EQ(form.lblErrHow.caption(), "Modul: modTest Funktion: Probe");
    EXPECT_EQ(form.txtDetails.text(),
              "Laufzeitfehler: 13\r\n\r\nFehlerbeschreibung:\r\nTypen unverträglich\r\n\r\n"
              "Modul: modTest Function: Probe");
    EXPECT_EQ(form.cmdSchließen.caption(), "&Schließen");
    EXPECT_EQ(form.txtEMail.text(), "support@kunde.de");
    EXPECT_TRUE(form.txtDetails.locked());
}

TEST_F(ErrorDialogTest, TheDialogOpensClosed) {
    report(48);
    EXPECT_EQ(frmError().height(), 1450 + (frmError().height() - 1450) % 15) << "whole pixels";
    EXPECT_LT(frmError().height(), 1465);
    EXPECT_EQ(frmError().scaleWidth(), 6570);
    EXPECT_EQ(frmError().cmdDetails.caption(), "Details >>");
}

TEST_F(ErrorDialogTest, DetailsOpenAndClose) {
    report(48);
    frmError().cmdDetails.userClick();
    EXPECT_EQ(frmError().cmdDetails.caption(), "<< Details");
    EXPECT_GE(frmError().height(), 3630);
    EXPECT_LT(frmError().height(), 3645);
    frmError().cmdDetails.userClick();
    EXPECT_EQ(frmError().cmdDetails.caption(), "Details >>");
    EXPECT_LT(frmError().height(), 1465);
}

TEST_F(ErrorDialogTest, EachStyleHasItsPicture) {
    const auto picture = [](std::int32_t style) {
        frmError().fill("modTest", "Probe", 13, "", style);
        return frmError().imgErrImg.index();
    };
    EXPECT_EQ(picture(16), 1);
    EXPECT_EQ(picture(48), 2);
    EXPECT_EQ(picture(32), 3);
    EXPECT_EQ(picture(64), 4);
    EXPECT_EQ(frmError().imgErrImg.images(), &frmError().imgList);
}

TEST_F(ErrorDialogTest, AStopLeavesOnlyTheEndAndALaterReportKeepsThatText) {
    report(16);
    EXPECT_EQ(frmError().cmdSchließen.caption(), "Beenden");
    report(48);
    EXPECT_EQ(frmError().cmdSchließen.caption(), "Beenden");
}

TEST_F(ErrorDialogTest, ASecondReportOverwritesTheFirst) {
    report(48, 13);
    report(48, 11);
    EXPECT_EQ(frmError().lblErrNr.caption(), "11");
}

TEST_F(ErrorDialogTest, AStopThatIsNotShownLeavesALogLineAndNothingElse) {
    report(16, 13, kHide);
    EXPECT_FALSE(frmError().loaded());
    EXPECT_EQ(logLines(), std::vector<std::string>{"modTest; Probe; ; 13; Typen unverträglich"});
}

TEST_F(ErrorDialogTest, AStopThatIsNotShownDoesNotTouchTheButtonOfAnOpenDialog) {
    report(48);
    report(16, 11, kHide);
    EXPECT_EQ(frmError().cmdSchließen.caption(), "&Schließen");
    EXPECT_EQ(frmError().lblErrNr.caption(), "13");
}

TEST_F(ErrorDialogTest, CloseUnloadsAndTheNextReportStartsAnew) {
    report(16);
    frmError().unload();
    EXPECT_FALSE(frmError().loaded());
    report(48);
    EXPECT_EQ(frmError().cmdSchließen.caption(), "&Schließen");
    frmError().cmdDetails.userClick();
    frmError().txtEMail.userText("anders@kunde.de");
    frmError().cmdSchließen.userClick();
    EXPECT_FALSE(frmError().loaded());
    report(48);
    EXPECT_EQ(frmError().cmdDetails.caption(), "Details >>");
    EXPECT_EQ(frmError().txtEMail.text(), "support@kunde.de");
}

TEST_F(ErrorDialogTest, Number10001CanNeitherBeSentNorClosedByItsButton) {
    report(48, 10001);
    EXPECT_FALSE(frmError().cmdReportSenden.enabled());
    EXPECT_FALSE(frmError().cmdSchließen.enabled());
    EXPECT_FALSE(frmError().lblEMail.enabled());
    EXPECT_FALSE(frmError().txtEMail.enabled());
    EXPECT_TRUE(frmError().cmdDetails.enabled());
}

TEST_F(ErrorDialogTest, ClicksAreTraced) {
    report(48);
    switchTracingOn();
    frmError().cmdSchließen.userClick();
    EXPECT_EQ(logLines().back(), "frmError; cmdSchließen_Click; &Schließen geklickt; 0; ");
    report(48);
    EXPECT_EQ(logLines().back(), "frmError; Form_Load; ; 0; ");
}

TEST_F(ErrorDialogTest, TheStoredLabelsLieBelowTheDetails) {
    FrmError& form = frmError();
    form.load();
    const Place details = form.txtDetails.place();
    for (const Label* label : {&form.lblErrNr, &form.lblErrHow}) {
        EXPECT_GE(label->left(), details.left);
        EXPECT_LE(label->left() + label->width(), details.left + details.width);
        EXPECT_LE(label->top() + label->height(), details.top + details.height);
    }
}

TEST_F(ErrorDialogTest, TheWaitingWindowStartsWithItsOwnTextAndTakesAnyOther) {
    EXPECT_EQ(frmLogin().lblLogin.caption(), "Die Programmeinstellungen werden geladen. Bitte warten...");
    EXPECT_EQ(frmLogin().scaleWidth(), 4710);
    EXPECT_EQ(frmLogin().scaleHeight(), 630);
    frmLogin().lblLogin.setCaption("Bitte warten...");
    frmLogin().show();
    EXPECT_EQ(frmLogin().lblLogin.caption(), "Bitte warten...");
    EXPECT_TRUE(frmLogin().visible());
    frmLogin().unload();
    EXPECT_EQ(frmLogin().lblLogin.caption(), "Die Programmeinstellungen werden geladen. Bitte warten...");
}

}  // namespace
}  // namespace bromvale::testing

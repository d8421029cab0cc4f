// The page "Online Bug-Report" and the error dialog's own report.
#include "core/log.h"
#include "tests/internet/internet_fixture.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

class BugReportPage : public InternetTest {
  protected:
    static FrmMain& filled() {
        FrmMain& form = frmMain();
        form.bugReport.txtErrNr.userText("13");
        form.bugReport.txtErrDesc.userText("Typen unverträglich");
        form.bugReport.txtErrtxt.userText("Beim Start");
        form.bugReport.txtEMail.userText("kunde@bromvale.example");
        return form;
    }
    std::string storedEMail() { return stringValue(HKEY_CURRENT_USER, "Software\\Bromvale", "EMail"); }
};

TEST_F(BugReportPage, TheChecksComeInTheirOrderAndNothingIsSent) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    FrmMain& form = frmMain();
    const auto send = [&form] { form.bugReport.cmdBugReportSenden.userClick(); };
    nav("Bug-Report");
    send();
    form.bugReport.txtErrNr.userText("13");
    send();
    form.bugReport.txtErrDesc.userText("Text");
    send();
    form.bugReport.txtErrtxt.userText("Beim Start");
    send();
    form.bugReport.txtEMail.userText("a@b.de");
    send();
    EXPECT_EQ(
        boxTexts(),
        (Texts{"Sie haben noch keine Fehlernummer angegeben.", "Sie haben den Fehlertext nicht angegeben.",
               "Bitte geben Sie noch eine kurze Beschreibung an, wie es zu dem Fehler kam.",
               "Die E-Mail Adresse wird benötigt, um Ihnen eine Lösung anzubieten.",
               "Um Ihnen eine Lösung anbieten zu können, \r\nbenötigen wir eine korrekt E-Mail-Adresse."}));
    for (const ShownBox& box : boxes()) EXPECT_EQ(box.caption, "Bromvale");
    EXPECT_EQ(server.requests(), Texts{});
    EXPECT_EQ(storedEMail(), "<missing>");
    EXPECT_EQ(form.bugReport.txtErrNr.text(), "13");
}

TEST_F(BugReportPage, AllEightFieldsAreSent) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    nav("Bug-Report");
    FrmMain& form = filled();
    form.bugReport.cboErrHow.userText("Registry-Scan");
    form.bugReport.cboServicePack.userText("SP 2");
    form.bugReport.cmdBugReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{kSent});
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(addressIn(server.requests()[0]),
              "/bug_report.php?bromvaleversion=1.0.0&errnr=13&errdesc=Typen%20unverträglich&errbereich="
              "Registry-Scan"
              "&os=Windows%20XP&sp=SP%202&errtxt=Beim%20Start\r\n\r\n;%20Bericht%20aus%20dem%20Programm"
              "&vonwo=Programm&email_abs=kunde@bromvale.example");
}

TEST_F(BugReportPage, TheFieldsHoldWhatTheStartPutIntoThem) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    nav("Bug-Report");
    filled().bugReport.cmdBugReportSenden.userClick();
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_NE(server.requests()[0].find(
                  "&errbereich=Bromvale%20installieren&os=Windows%20XP&sp=Build%202600&errtxt="),
              std::string::npos);
}

TEST_F(BugReportPage, SeveralLinesAreSentWithTheirLineBreaks) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    nav("Bug-Report");
    filled().bugReport.txtErrDesc.userText("Zeile 1\r\nZeile 2");
    frmMain().bugReport.cmdBugReportSenden.userClick();
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_NE(server.requests()[0].find("&errdesc=Zeile%201\r\nZeile%202&errbereich="), std::string::npos);
}

TEST_F(BugReportPage, TheAddressIsKeptEvenWhenTheReportFailsAndThePageStaysFilled) {
    nav("Bug-Report");
    FrmMain& form = filled();
    form.bugReport.cmdBugReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
    EXPECT_EQ(storedEMail(), "kunde@bromvale.example");
    EXPECT_EQ(EMail, "") << "the variable follows at the next reading";
    EXPECT_EQ(form.bugReport.txtErrNr.text(), "13");
    EXPECT_EQ(form.bugReport.txtErrDesc.text(), "Typen unverträglich");
    EXPECT_EQ(form.bugReport.txtErrtxt.text(), "Beim Start");
    EXPECT_EQ(form.bugReport.txtEMail.text(), "kunde@bromvale.example");
}

TEST_F(BugReportPage, ClearingPutsThePageBack) {
    EMail = "alt@bromvale.example";
    nav("Bug-Report");
    FrmMain& form = filled();
    form.bugReport.cboErrHow.userText("Optionen");
    form.bugReport.cboServicePack.userText("SP 6");
    form.bugReport.cmdBugReportLöschen.userClick();
    EXPECT_EQ(form.bugReport.txtErrNr.text(), "");
    EXPECT_EQ(form.bugReport.txtErrDesc.text(), "");
    EXPECT_EQ(form.bugReport.txtErrtxt.text(), "");
    EXPECT_EQ(form.bugReport.cboErrHow.text(), "Bromvale installieren");
    EXPECT_EQ(form.bugReport.cboOS.text(), "Windows XP");
    EXPECT_EQ(form.bugReport.cboServicePack.text(), "Build 2600");
    EXPECT_EQ(form.bugReport.txtEMail.text(), "alt@bromvale.example");
    EXPECT_EQ(form.bugReport.txtAppVer.text(), "1.0.0");
}

TEST_F(BugReportPage, AProxyIsGreetedFirstAndTheReportGoesOutDirectly) {
    const RecordingServer proxy("silent");
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    useProxy("127.0.0.1", proxy.port());
    nav("Bug-Report");
    filled().bugReport.cmdBugReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{kSent});
    ASSERT_EQ(proxy.requests().size(), 1u);
    EXPECT_EQ(proxy.requests()[0].substr(0, 11), "GET http://");
    ASSERT_EQ(server.requests().size(), 1u);
}

TEST_F(BugReportPage, ADeadProxyEndsTheSendingSilently) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    useProxy("127.0.0.1", kDeadPort);
    nav("Bug-Report");
    filled().bugReport.cmdBugReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(server.requests(), Texts{});
    EXPECT_EQ(logLines(), Texts{});
    EXPECT_EQ(storedEMail(), "kunde@bromvale.example");
}

class ErrorDialogReport : public InternetTest {
  protected:
    ErrorDialogReport() { registerErrorDialog(); }
    static FrmError& report() {
        ErrHandle("modTest", "Probe", "", 13, "Typen unverträglich", kStyleExclamation, kShow);
        frmError().cmdDetails.userClick();
        return frmError();
    }
};

TEST_F(ErrorDialogReport, AnAddressWithAnEarlyPointIsRefused) {
    FrmError& form = report();
    form.txtEMail.userText("a@b.de");
    form.cmdReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{"Damit Ihr Support-Fall bearbeitet werden kann, \r\n"
                                "benötigen wir eine korrekt E-Mail-Adresse, \r\n"
                                "an eine Lösung gemailt werden kann."});
    EXPECT_TRUE(form.loaded());
}

TEST_F(ErrorDialogReport, WhatTheDialogKeepsIsSentWithoutAGreetingOfTheProxy) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    useProxy("127.0.0.1", kDeadPort);
    switchTracingOn();
    FrmError& form = report();
    form.txtEMail.userText("a@bc.de");
    form.cmdReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{kSent});
    EXPECT_TRUE(form.loaded());
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(
        addressIn(server.requests()[0]),
        "/bug_report.php?bromvaleversion=1.0.0&errnr=13&errdesc=Typen%20unverträglich"
        "&errbereich=Modul:%20modTest%20Funktion:%20Probe&os=Windows%20XP&sp=2600&errtxt=&vonwo=Programm"
        "&email_abs=a@bc.de");
    const Texts lines = logLines();
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[lines.size() - 4], "frmError; cmdReportSenden_Click; ; 0; ");
}

TEST_F(ErrorDialogReport, AFailedReportLeavesTheDialogWithTheReportThatItShowed) {
    FrmError& form = report();
    form.txtEMail.userText("a@bc.de");
    form.cmdReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
    EXPECT_TRUE(form.loaded());
    EXPECT_EQ(form.lblErrNr.caption(), "13");
}

}  // namespace
}  // namespace bromvale::testing

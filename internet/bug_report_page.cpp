// The page "Online Bug-Report", and the error dialog's button that sends a report too.
#include <array>

#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "internet/bug_report.h"
#include "internet/proxy_greeting.h"
#include "ui/bug_report_page.h"
#include "ui/frm_error.h"

namespace bromvale {
namespace {

// What must stand in the form before it is sent, in the order of the questions.
struct Check {
    bool (*fails)(const BugReportPage& page);
    const char* text;
};
constexpr std::array kChecks{
    Check{[](const BugReportPage& page) { return page.txtErrNr.text().empty(); },
          "Sie haben noch keine Fehlernummer angegeben."},
    Check{[](const BugReportPage& page) { return page.txtErrDesc.text().empty(); },
          "Sie haben den Fehlertext nicht angegeben."},
    Check{[](const BugReportPage& page) { return page.txtErrtxt.text().empty(); },
          "Bitte geben Sie noch eine kurze Beschreibung an, wie es zu dem Fehler kam."},
    Check{[](const BugReportPage& page) { return page.txtEMail.text().empty(); },
          "Die E-Mail Adresse wird benötigt, um Ihnen eine Lösung anzubieten."},
    Check{[](const BugReportPage& page) { return !isAcceptedAddress(page.txtEMail.text()); },
          "Um Ihnen eine Lösung anbieten zu können, \r\nbenötigen wir eine korrekt E-Mail-Adresse."},
};

bool isComplete(const BugReportPage& page) {
    for (const Check& check : kChecks) {
        if (!check.fails(page)) continue;
        MsgBox(check.text, kStyleInformation);
        return false;
    }
    return true;
}

void send(BugReportPage& page) {
    if (!isComplete(page)) return;
    storeSetting(EMail, page.txtEMail.text());
    // A proxy that can't be reached ends the sending without a word.
    if (Proxy == 1 && !greetProxy(page.window.winsock)) return;
    BugReport({page.txtAppVer.text(), page.txtErrNr.text(), page.txtErrDesc.text(), page.cboErrHow.text(),
               page.cboOS.text(), page.cboServicePack.text(),
               page.txtErrtxt.text() + "\r\n\r\n; Bericht aus dem Programm", page.txtEMail.text()});
}

}  // namespace

void BugReportPage::cmdBugReportSenden_Click() {
    constexpr Routine routine{{"frmMain", "cmdBugReportSenden_Click"}};
    routine.step([&] { send(*this); });
}

void BugReportPage::cmdBugReportLöschen_Click() {
    txtErrNr.setText("");
    txtErrDesc.setText("");
    cboErrHow.setText(cboErrHow.item(0));
    cboOS.setText(OSName);
    cboServicePack.setText("Build " + OSBuild);
    txtErrtxt.setText("");
    txtEMail.setText(EMail);
}

// The dialog stays open; how the sending went is told by boxes.
void FrmError::cmdReportSenden_Click() {
    if (!isAcceptedAddress(txtEMail.text())) {
        MsgBox(
            "Damit Ihr Support-Fall bearbeitet werden kann, \r\n"
            "benötigen wir eine korrekt E-Mail-Adresse, \r\n"
            "an eine Lösung gemailt werden kann.",
            kStyleInformation);
        return;
    }
    trace("frmError", "cmdReportSenden_Click", "");
    BugReport({AppVersion, lblErrNr.caption(), lblErrDesc.caption(), lblErrHow.caption(), OSName, OSBuild, "",
               txtEMail.text()});
}

}  // namespace bromvale

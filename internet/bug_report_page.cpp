// The page "Online Bug-Report", and the error dialog's button that sends a report too.
#include <array>

#include "core/attempt.h"
#include "core/log.h"
#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "internet/bug_report.h"
#include "internet/proxy_greeting.h"
#include "ui/frm_error.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

// What must stand in the form before it is sent, in the order of the questions.
struct Check {
    bool (*fails)(const FrmMain& form);
    const char* text;
};
constexpr std::array kChecks{
    Check{[](const FrmMain& form) { return form.txtErrNr.text().empty(); },
          "Sie haben noch keine Fehlernummer angegeben."},
    Check{[](const FrmMain& form) { return form.txtErrDesc.text().empty(); },
          "Sie haben den Fehlertext nicht angegeben."},
    Check{[](const FrmMain& form) { return form.txtErrtxt.text().empty(); },
          "Bitte geben Sie noch eine kurze Beschreibung an, wie es zu dem Fehler kam."},
    Check{[](const FrmMain& form) { return form.txtEMail.text().empty(); },
          "Die E-Mail Adresse wird benötigt, um Ihnen eine Lösung anzubieten."},
    Check{[](const FrmMain& form) { return !isAcceptedAddress(form.txtEMail.text()); },
          "Um Ihnen eine Lösung anbieten zu können, \r\nbenötigen wir eine korrekt E-Mail-Adresse."},
};

bool isComplete(const FrmMain& form) {
    for (const Check& check : kChecks) {
        if (!check.fails(form)) continue;
        MsgBox(check.text, kStyleInformation);
        return false;
    }
    return true;
}

void send(FrmMain& form) {
    if (!isComplete(form)) return;
    SetKeyValue(kHiveCurrentUser, kSettingsKey, "EMail", form.txtEMail.text(), REG_SZ, kSetValue);
    // A proxy that can't be reached ends the sending without a word.
    if (Proxy == 1 && !greetProxy(form.winsock)) return;
    BugReport({form.txtAppVer.text(), form.txtErrNr.text(), form.txtErrDesc.text(), form.cboErrHow.text(),
               form.cboOS.text(), form.cboServicePack.text(),
               form.txtErrtxt.text() + "\r\n\r\n; Bericht aus dem Programm", form.txtEMail.text()});
}

}  // namespace

void FrmMain::cmdBugReportSenden_Click() {
    const auto onFailure = [](const Failure& failure) {
        ErrHandle("frmMain", "cmdBugReportSenden_Click", "", failure.number, failure.description,
                  kStyleExclamation, kHide);
        return Ending::Leave;
    };
    attempt(onFailure, [&] { send(*this); });
}

void FrmMain::cmdBugReportLöschen_Click() {
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

#include "ui/navigation.h"

#include "core/command_start.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/shell.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr int kNormalWithFocus = 1;
constexpr unsigned kHelpDisplayTopic = 0;

// Starts no scan: that is the page's own button.
void openScan(FrmMain& form) {
    quietly([&] { form.scan.show(); });
    const bool scanRuns = !form.scan.cmdStart.enabled();
    if (scanRuns) quietly([&] { form.setMousePointer(MousePointer::Hourglass); });
}

void openBackup(FrmMain& form) {
    quietly([&] { form.backup.mnuPopUpBackupZeigen_Click(); });
}

void startRegistryEditor(FrmMain&) {
    quietly([] { startCommand(WinDir + "Regedit.exe", kNormalWithFocus); });
}

void openHelp(FrmMain& form) {
    quietly([&] { HtmlHelpA(form.window(), "Bromvale.chm", kHelpDisplayTopic, 0); });
}

void quit(FrmMain& form) {
    quietly([&] { form.unload(); });
}

void openPrograms(FrmMain& form) {
    quietly([&] { form.programs.mnuPopUpDeinstall_Click(); });
}

// Neither box is ever cleared here: they may be ahead of what is stored.
void openCleanup(FrmMain& form) {
    quietly([&] { form.cleanup.show(); });
    std::string startsAtLogon;
    quietly([&] {
        startsAtLogon =
            FindValue(kHiveLocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", AppTitle);
    });
    if (!startsAtLogon.empty()) quietly([&] { form.cleanup.chbTempFilesDel.setValue(1); });
    if (DelFilePermanent == 1) quietly([&] { form.cleanup.chbDelFilePermanent.setValue(1); });
    quietly([&] { form.setMousePointer(MousePointer::Default); });
}

// Loading the page fires the handlers of its controls, each of which enables the button: nothing is changed
// yet.
void openOptions(FrmMain& form) {
    quietly([&] { form.options.mnuPopUpOptionen_Click(); });
    quietly([&] { form.options.cmdÜbernehmen.setEnabled(false); });
}

void openBugReport(FrmMain& form) {
    if (InternetMissing) {
        quietly([] {
            MsgBox(
                "Eine Funktion des Microsoft Internet Explorer arbeitet nicht korrekt.\r"
                "Installieren Sie diesen neu, um den Bug-Report nutzen zu können.",
                kStyleInformation);
        });
        return;
    }
    quietly([&] { form.bugReport.mnuPopUpBugReport_Click(); });
}

void checkForUpdate(FrmMain& form) {
    quietly([&] { form.mnuPopUpLiveUpdate_Click(); });
}

void openWebSite(FrmMain&) {
    quietly(CallWebSite);
}

constexpr NavigationItem kItems[] = {
    {"Allgemein",
     "Startet die Suche nach ungültigen oder fehlerhaften Einträgen der Windows Registrierungs-Datenbank.",
     openScan},
    {"Allgemein",
     "Hier können Sie die entfernten Einträgen wieder in die Windows Registrierungs-Datenbank eintragen.",
     openBackup},
    {"Allgemein", "Das Programm Regedit starten.", startRegistryEditor},
    {"Allgemein", "Hilfe zum Handling und zu den Begriffen des Programms.", openHelp},
    {"Allgemein", "Hier können Sie das Programm beenden.", quit},
    {"Features", "Hier können Sie bequem wie in der Systemsteuerung Programme deinstallieren.", openPrograms},
    {"Features", "Hier können die Festplatte aufräumen.", openCleanup},
    {"Features", "Legen Sie hier ihre persönlichen Programm-Einstellungen fest.", openOptions},
    {"Service", "Sie haben ein Programmfehler? Dann melden Sie ihn mir.", openBugReport},
    {"Service", "Nach einer neuen Version des Programms im Internet suchen.", checkForUpdate},
    {"Service", "Homepage aufrufen.", openWebSite},
};

}  // namespace

std::span<const NavigationItem> navigationItems() {
    return kItems;
}

void FrmMain::Menu_ItemClick(const ListBar::Item& item) {
    int number = 0;
    for (const NavigationItem& candidate : navigationItems()) {
        ++number;
        if (item.caption != imgMenu1.key(number)) continue;
        candidate.open(*this);
        return;
    }
}

void BugReportPage::mnuPopUpBugReport_Click() {
    show();
    txtEMail.setText(EMail);
    txtErrNr.setFocus();
    window.setMousePointer(MousePointer::Default);
}

}  // namespace bromvale

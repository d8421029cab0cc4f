#include "tests/proof/faults/scripts.h"

#include "core/settings.h"
#include "core/state.h"
#include "platform/offline/machine.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::machine;

constexpr const char* kBackup = "C:\\Programme\\Bromvale\\Backup\\";
constexpr const char* kUndo =
    "R\xFC"
    "ckg\xE4ngig_01012026_000000.reg";

FrmMain& form() {
    return frmMain();
}

std::size_t eventCount(offline::EventKind kind) {
    return machine().events.count(kind);
}

bool wasShown(std::string_view text) {
    for (const offline::Event& event : machine().events.of(offline::EventKind::MessageBox)) {
        if (event.text.find(text) != std::string::npos) return true;
    }
    return false;
}

void scanNow() {
    form().scan.cmdAbbrechen.userClick();
    form().scan.cmdStart.userClick();
}

bool onlyTheKeyWithALostNameIsLeft() {
    const auto left = machine().registry.wideSubKeys(
        u"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\App Paths");
    return left == std::vector<Text>{u"łap.exe"};
}

// --- the scripts ---

constexpr int kRowsOfTheMachine = 6;
// The last group of a scan is judged in the next one, together with the first of that.
constexpr int kRowsOfALaterScan = 8;

Script scan() {
    return {.name = "Scan",
            .prepare = [] {},
            .act = [] { form().scan.cmdStart.userClick(); },
            .again =
                [] {
                    scanNow();
                    form().scan.cmdAbbrechen.userClick();
                },
            .isDone = [] { return form().scan.lvwRegKeys.count() == kRowsOfTheMachine; },
            .isDoneAgain = [] { return form().scan.lvwRegKeys.count() == kRowsOfALaterScan; }};
}

Script removal() {
    return {.name = "Removal",
            .prepare = [] { scanNow(); },
            .act =
                [] {
                    if (form().scan.cmdStart.caption() == "&Entfernen") form().scan.cmdStart.userClick();
                },
            .again = [] { scanNow(); },
            .isDone = [] { return onlyTheKeyWithALostNameIsLeft(); },
            .isDoneAgain =
                [] {
                    return form().scan.lvwRegKeys.count() == 0 &&
                           form().scan.cmdStart.caption() != "&Entfernen";
                },
            .removesKeys = true,
            .writes = kBackup};
}

void openBackupPage() {
    form().backup.mnuPopUpBackupZeigen_Click();
    for (int row = 1; row <= form().backup.lvwBackup.count(); ++row) {
        if (form().backup.lvwBackup.item(row).text() == kUndo) form().backup.lvwBackup.userSelect({row});
    }
    machine().answers.assign({IDYES});
}

Script puttingBack() {
    return {.name = "PuttingBack",
            .prepare =
                [] {
                    AutoFileDelAfterReentry = 1;
                    machine().drives.writeFile(std::string(kBackup) + kUndo, "REGEDIT4\r\n");
                    machine().drives.writeFile(std::string(kBackup) + "anders.reg", "REGEDIT4\r\n");
                    openBackupPage();
                },
            .act = [] { form().backup.cmdEintragen.userClick(); },
            .again =
                [] {
                    machine().events.clear();
                    if (!machine().drives.exists(std::string(kBackup) + kUndo))
                        machine().drives.writeFile(std::string(kBackup) + kUndo, "REGEDIT4\r\n");
                    openBackupPage();
                },
            .isDone =
                [] {
                    return eventCount(offline::EventKind::ShellExecute) > 0 &&
                           !machine().drives.exists(std::string(kBackup) + kUndo);
                },
            .writes = std::string(kBackup) + kUndo,
            .starts = {std::string(kBackup) + kUndo}};
}

Script emptying() {
    return {.name = "Emptying",
            .prepare =
                [] {
                    machine().drives.writeFile("C:\\Programme\\Bromvale\\liste.txt",
                                               "C:\\Leeren\r\nC:\\Leeren\\Daten.\r\n");
                    form().showPage(form().cleanup);
                    form().cleanup.Ordnerliste_laden();
                },
            .act = [] { form().cleanup.cmdInhaltLöschen.userClick(); },
            .again = [] {},
            .isDone =
                [] {
                    return !machine().drives.exists("C:\\Leeren\\a.txt") &&
                           !machine().drives.exists("C:\\Leeren\\voll\\b.txt");
                },
            .writes = "C:\\Leeren\\"};
}

Script emptyingForGood() {
    Script script = emptying();
    script.name = "EmptyingForGood";
    script.prepare = [prepare = script.prepare] {
        prepare();
        DelFilePermanent = 1;
    };
    script.isDone = [] {
        return !machine().drives.exists("C:\\Leeren\\a.txt") &&
               machine().drives.exists("C:\\Leeren\\voll\\b.txt");
    };
    return script;
}

void selectProgram(const char* name) {
    for (int row = 1; row <= form().programs.lvwDeinstall.count(); ++row) {
        if (form().programs.lvwDeinstall.item(row).text() == name)
            form().programs.lvwDeinstall.userSelect({row});
    }
    machine().answers.assign({IDYES, IDYES});
}

Script uninstalling() {
    return {.name = "Uninstalling",
            .prepare =
                [] {
                    form().programs.mnuPopUpDeinstall_Click();
                    selectProgram("Da");
                },
            .act = [] { form().programs.cmdDeinstall.userClick(); },
            .again =
                [] {
                    form().programs.mnuPopUpDeinstall_Click();
                    selectProgram("Da");
                },
            .isDone = [] { return eventCount(offline::EventKind::Run) > 0; },
            .starts = {"\"C:\\x\\weg da.exe\" /still"}};
}

Script removingAnEntry() {
    Script script = uninstalling();
    script.name = "RemovingAnEntry";
    script.prepare = script.again = [] {
        form().programs.mnuPopUpDeinstall_Click();
        selectProgram("Fort");
    };
    script.isDone = [] {
        return !machine().registry.exists(
            u"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Fort");
    };
    script.removesKeys = true;
    script.needsRecord = false;
    script.writes = kBackup;
    return script;
}

Script savingOptions() {
    return {.name = "SavingOptions",
            .prepare = [] { form().options.mnuPopUpOptionen_Click(); },
            .act =
                [] {
                    form().options.chbScreenSave.userClick();
                    form().options.chbAutoRegFileDel.userClick();
                    form().options.cmdÜbernehmen.userClick();
                },
            .again =
                [] {
                    for (CheckBox* box : {&form().options.chbScreenSave, &form().options.chbAutoRegFileDel}) {
                        if (box->value() == 1) box->userClick();
                    }
                },
            .isDone = [] { return ScreenSave == 1 && AutoRegFileDel == 1; },
            .writesKey = "HKEY_CURRENT_USER\\Software\\Bromvale"};
}

Script bugReport() {
    return {.name = "BugReport",
            .prepare =
                [] {
                    form().bugReport.mnuPopUpBugReport_Click();
                    form().bugReport.txtErrtxt.setText("Es geht nicht");
                    form().bugReport.txtErrNr.setText("5");
                    form().bugReport.txtErrDesc.setText("Fehler");
                    form().bugReport.txtEMail.setText("jemand@beispiel.de");
                },
            .act = [] { form().bugReport.cmdBugReportSenden.userClick(); },
            .again = [] { machine().events.clear(); },
            .isDone = [] { return wasShown("erfolgreich versendet"); },
            .writesKey = "HKEY_CURRENT_USER\\Software\\Bromvale"};
}

Script update() {
    return {.name = "Update",
            .prepare = [] { machine().savePaths.assign({"C:\\Neu.exe"}); },
            .act = [] { form().mnuPopUpLiveUpdate.userChoose(); },
            .again = [] { machine().savePaths.assign({"C:\\Neu.exe"}); },
            .isDone = [] { return machine().drives.readFile("C:\\Neu.exe") == "neu"; },
            .writes = "C:\\Neu"};
}

}  // namespace

const std::vector<Script>& scripts() {
    static const std::vector<Script> all{
        scan(),         removal(),         puttingBack(),   emptying(),  emptyingForGood(),
        uninstalling(), removingAnEntry(), savingOptions(), bugReport(), update()};
    return all;
}

}  // namespace bromvale::proof

// The backup page: what is asked about is what is put back or deleted.
#include <algorithm>
#include <fstream>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "tests/proof/trials/trial.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

using offline::EventKind;
using offline::machine;

constexpr const char* kFolder = "/Programme/Bromvale/Backup/";
constexpr View kStrangers[] = {u"lang.reg_alt", u"Zdjecia.reg", u"Zdjęcia.reg", u"łap.reg",
                               u"a＼b.reg",     u"＊.reg",      u"x.txt"};

// The true name of the file to which a path of the program leads.
Text trueName(const std::string& path) {
    offline::Location location;
    offline::FileInfo info;
    const offline::StoredText stored(path.c_str());
    if (machine().drives.locateStored(stored.view(), location) != 0 ||
        location.volume->find(location.all(), &info) != 0)
        return {};
    return offline::wideFromStored(info.name);
}

}  // namespace

void Trial::useBackupPage() {
    for (const View name : kStrangers) {
        if (model_.system.family != Family::Nine || isExactOn(model_.system.codePage, name))
            std::ofstream(stage_.hostDrive() + kFolder + utf8(name)) << "REGEDIT4\r\n";
    }
    frmMain().backup.mnuPopUpBackupZeigen_Click();
    const DriveSnapshot before = readDrive(stage_.hostDrive());
    const int rows = frmMain().backup.lvwBackup.count();
    for (int tries = 0; tries < rows && frmMain().backup.lvwBackup.count() > 0; ++tries)
        backupRow(tries % frmMain().backup.lvwBackup.count() + 1);
    const DriveSnapshot after = readDrive(stage_.hostDrive());
    for (const auto& [path, content] : before) {
        if (!after.contains(path) && !path.starts_with(kFolder))
            problem("the backup page deleted " + readable(path));
    }
}

void Trial::backupRow(int number) {
    const std::string name = frmMain().backup.lvwBackup.item(number).text();
    if (!name.ends_with(".reg")) problem("listed as a backup: " + readable(name));
    const DriveSnapshot before = readDrive(stage_.hostDrive() + "/Programme");
    machine().events.clear();
    frmMain().backup.lvwBackup.userSelect({number});
    machine().answers.assign({IDYES, IDYES});
    frmMain().backup.cmdEintragen.userClick();
    for (const offline::Event& event : machine().events.of(EventKind::ShellExecute)) {
        const bool there = event.text.starts_with("C:\\Programme\\Bromvale\\Backup\\");
        if (!there || ansi(model_.system, trueName(event.text)) != name)
            problem("put back for " + readable(name) + ": " + readable(event.text));
    }
    machine().answers.assign({IDYES, IDYES});
    frmMain().backup.lvwBackup.userSelect({number});
    frmMain().backup.cmdLöschen.userClick();
    machine().answers.clear();
    const DriveSnapshot after = readDrive(stage_.hostDrive() + "/Programme");
    for (const auto& [path, content] : before) {
        if (path == "/Bromvale/bromvale.log" || after.contains(path)) continue;
        const Text file = fromUtf8(path.substr(path.rfind('/') + 1));
        // Only a file whose name came through whole may go, and only that one.
        if (ansi(model_.system, file) != name || !path.starts_with("/Bromvale/Backup/"))
            problem("deleted for " + readable(name) + ": " + readable(path));
    }
}

}  // namespace bromvale::proof

// The three buttons of the backup page. Each acts on the selected rows; the program waits for none of the
// editors that it starts and never learns what they did.
#include <string>

#include "base/failure.h"
#include "base/numbers.h"
#include "cleanup/entry_names.h"
#include "cleanup/file_del.h"
#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/time.h"
#include "platform/dialogs.h"
#include "platform/shell.h"
#include "repair/reboot.h"
#include "ui/backup_page.h"

namespace bromvale {
namespace {

constexpr double kEditorReads = 7;  // seconds until the registry editor has read a file

// What the three buttons do about a failure. The words speak of deleting whichever button was clicked.
struct ReportOfFile {
    const std::string& name;

    Ending operator()(const Tags& tags, const Failure& failure) const {
        const bool noAccess = failure.number == Failure::kNoAccess;
        if (!noAccess && failure.number != Failure::kIndexOutOfBounds) return Report{}(tags, failure);
        const std::string text = noAccess ? "Das Löschen der Sicherungsdatei " + name + " ist fehlgeschlagen."
                                          : "Es wurde keine Datei gewählt.";
        return Report{Ending::Next, kStyleInformation, noAccess ? kShow : kHide, text}(tags, failure);
    }
};

// One click, with the row that it works on.
class Click : public Routine<ReportOfFile> {
  public:
    Click(ListView& list, std::string_view routine) : Routine({"frmMain", routine}, {name_}), list_(list) {
        started();
    }

    // The row's text stays the same while the click works on it: events are served meanwhile, and a row that
    // has moved up into its place must not lose its file.
    [[nodiscard]] bool takeSelected(int row) {
        bool selected = false;
        step([&] { selected = list_.item(row).selected(); });
        if (!selected) return false;
        name_ = list_.item(row).text();
        tag_ = list_.item(row).tag();
        if (!reached().empty()) return true;
        step([&] { tellUnreachable(); });
        return false;
    }
    // As the row shows it.
    [[nodiscard]] const std::string& name() const { return name_; }
    // The row that stands for the file by now; 0 where there is none.
    [[nodiscard]] int rowOfFile() const {
        for (int row = 1; row <= list_.count(); ++row) {
            if (list_.item(row).text() == name_ && list_.item(row).tag() == tag_) return row;
        }
        return 0;
    }

    [[nodiscard]] bool confirmed(const std::string& question) const {
        bool yes = false;
        step([&] { yes = asksYes(question); });
        return yes;
    }
    void hand(const char* verb) const {
        step([&] {
            const std::string name = reached();
            if (name.empty()) return;
            // What comes back isn't looked at: the shell tells its failures itself.
            static_cast<void>(
                ShellExecuteA(nullptr, verb, (BackupPath + name).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
        });
    }
    void deleteFile() const {
        step([&] {
            // FileDel would take an empty name for all files of the folder.
            const std::string name = reached();
            if (!name.empty()) FileDel(BackupPath, name);
        });
    }

  private:
    // The name by which the file is handed on: of one whose own name the code page can't hold the short one,
    // or nothing.
    [[nodiscard]] std::string reached() const {
        return tag_.empty() ? name_ : reachableName(BackupPath, tag_);
    }
    void tellUnreachable() const {
        MsgBox("Die Datei " + name_ +
                   " kann weder geöffnet noch gelöscht werden: Ihr Name enthält Zeichen, die dieses Programm "
                   "nicht genau wiedergeben kann.",
               kStyleInformation);
    }

    ListView& list_;
    std::string name_;
    std::string tag_;  // the name itself, where the row can't show it
};

std::string reentryQuestion(const std::string& name) {
    return "Wollen Sie wirklich die Datei " + name +
           " in die Registry eintragen?\r\rHinweis!\r"
           "Nach dem Bestätigen des Fensters mit Ja, folgen zwei weitere Dialoge. \r"
           "Bestätigen Sie die erste Aufforderung mit Ja und die zweite mit OK.";
}

// Says that the file was merged although only the registry editor knows.
void handToRegistryEditor(const Click& click) {
    click.hand("Open");
    click.trace([&] {
        return "Die Sicherungdatei " + click.name() + " wurde erfolgreich in die Registry eingetragen.";
    });
}

}  // namespace

void BackupPage::cmdBearbeiten_Click() {
    Click click(lvwBackup, "cmdBearbeiten_Click");
    std::int16_t rows = 0;
    click.step([&] { rows = narrowInt16(lvwBackup.count()); });
    for (int row = 1; row <= rows; ++row) {
        if (!click.takeSelected(row)) continue;
        click.hand("Edit");
        click.trace([&] { return click.name() + " zum bearbeiten geöffnet"; });
        click.step([&] { lvwBackup.item(row).setSelected(false); });
    }
    click.ended();
}

// With AutoFileDelAfterReentry the list is filled anew behind the first selected row, which leaves nothing
// selected: the other files stay where they are, and so does the selection's work. The switch is asked after
// No as well, like RebootAfterEntry behind the loop.
void BackupPage::cmdEintragen_Click() {
    Click click(lvwBackup, "cmdEintragen_Click");
    const int rows = lvwBackup.count();
    for (int row = 1; row <= rows; ++row) {
        if (!click.takeSelected(row)) continue;
        if (click.confirmed(reentryQuestion(click.name()))) handToRegistryEditor(click);
        if (AutoFileDelAfterReentry != 1) continue;
        click.trace("AutoClose nach eintragen wird ausgeführt");  // these words, though nothing closes
        click.step([] { Pause(kEditorReads); });
        click.deleteFile();
        click.step([&] { ReadBackupFiles(); });
    }
    if (RebootAfterEntry == 1) {
        click.trace("Reboot nach eintragen wird ausgeführt");
        click.step([] { Pause(kEditorReads); });
        click.step([] { RebootSystem(); });
    }
    click.ended();
}

// The number of rows is taken once, so that after any deletion the index passes the last row. That is the
// ordinary end of the loop: the failure is noted and the loop left. While the question stands the list may be
// filled anew, so the row that goes is looked for by the name of the file.
void BackupPage::cmdLöschen_Click() {
    Click click(lvwBackup, "cmdLöschen_Click");
    const int rows = lvwBackup.count();
    for (int row = 1; row <= rows; ++row) {
        const bool behindLast = row > lvwBackup.count();
        const bool selected = click.takeSelected(row);
        if (behindLast) break;
        if (!selected || !click.confirmed("Wollen Sie wirklich die Datei " + click.name() + " löschen?"))
            continue;
        click.deleteFile();
        click.trace([&] { return "Datei " + click.name() + " wurde gelöscht"; });
        const int deleted = click.rowOfFile();
        if (deleted == 0) continue;
        click.step([&] { lvwBackup.remove(deleted); });
        --row;
        // Names the row above, and there is none above the first.
        click.step([&] {
            click.trace(
                [&] { return "Eintrag " + lvwBackup.item(row).text() + " wurde aus der Liste entfernt"; });
        });
    }
    click.step([&] {
        if (lvwBackup.count() > 0) lvwBackup.item(1).setSelected(true);
    });
    click.ended();
}

}  // namespace bromvale

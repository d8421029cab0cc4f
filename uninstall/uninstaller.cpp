// The button of the programs page: starts the uninstallers of the selected rows, one after the other and
// without waiting.
#include <string>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/command_start.h"
#include "core/routine.h"
#include "core/state.h"
#include "platform/dialogs.h"
#include "platform/exact/text.h"
#include "platform/shell.h"
#include "repair/complete_copy.h"
#include "repair/removal_obstacles.h"
#include "ui/programs_page.h"

namespace bromvale {
namespace {

Ending report(const Tags& tags, const Failure& failure) {
    if (failure.number != Failure::kIndexOutOfBounds) return Report{}(tags, failure);
    return Report{Ending::Next, kStyleInformation, kHide, "Es wurde keine Datei gewählt."}(tags, failure);
}

constexpr Routine kRoutine{{"frmMain", "cmdDeinstall_Click"}, &report};

// A row's texts, taken once: what the user is asked about is what is started or removed.
struct Program {
    std::string name;
    std::string command;  // with marks, as the key (platform/exact/text.h)
    std::string hive;
    std::string key;  // with its closing "]"

    explicit Program(const ListItem& row)
        : name(row.column(kProgramName)),
          command(row.column(kUninstallCommand)),
          hive(row.column(kProgramHive)),
          key(row.column(kProgramKey)) {}
};

// The whole key goes, with a complete copy and no undo file.
void removeEntry(ProgramsPage& page, const Program& program) {
    const std::int32_t hive = toInt32(program.hive);
    const std::string key = Left(program.key, static_cast<std::int64_t>(program.key.size()) - 1);
    kRoutine.trace([&] { return "Das Programm " + program.name + " kann nicht deinstalliert werden."; });
    copyAndDelete(kRoutine, hive, key);
    page.ShowDeinstall();
}

// What the ANSI functions would start or delete in place of a text with marks is something else, or nothing.
constexpr std::string_view kReason =
    "Zeichen enthält, die nicht dargestellt werden können. Verwenden Sie bitte die Windows Systemsteuerung.";

void tellThatItStays(const Program& program, const std::string& before, std::string_view text) {
    kRoutine.trace([&] { return program.name + " bleibt unberührt: " + plainText(text); });
    MsgBox(before + "\r" + plainText(text) + "\r" + std::string(kReason), kStyleInformation);
}

// True where the user was told that this command line is not started.
bool refusesCommand(const Program& program) {
    if (isExactCommand(program.command)) return false;
    tellThatItStays(program,
                    "Das Programm " + program.name +
                        " kann von hier aus nicht deinstalliert werden, da sein Deinstallationsaufruf",
                    program.command);
    return true;
}

// The same for the removal of the entry.
bool refusesRemoval(const Program& program) {
    if (isExact(program.key)) return false;
    tellThatItStays(program,
                    "Das Deinstallationsprogramm von " + program.name +
                        " fehlt. Der Eintrag wird nicht entfernt, da der Name seines Schlüssels",
                    "[" + program.key);
    return true;
}

Ending offerRemoval(ProgramsPage& page, const Program& program) {
    if (refusesRemoval(program)) return Ending::Next;
    if (!asksYes("Das Programm kann nicht deinstalliert werden, da das Deinstallationsprogramm fehlt.\r"
                 "Soll der Eintrag jetzt entfernt werden?"))
        return Ending::Next;
    if (!mayRemoveKey(toInt32(program.hive))) return Ending::Next;
    removeEntry(page, program);
    return Ending::Leave;
}

bool confirmed(const Program& program) {
    bool yes = false;
    kRoutine.step(
        [&] { yes = asksYes("Wollen Sie das Programm " + program.name + " wirklich deinstallieren?"); });
    return yes;
}

// False where the entry was removed since its uninstaller is missing: the list is another one then, and the
// click ends.
bool uninstall(ProgramsPage& page, const Program& program) {
    const auto onFailure = [&](const Failure& failure) {
        return failure.number == Failure::kFileNotFound ? offerRemoval(page, program)
                                                        : report(kRoutine, failure);
    };
    if (!attempt(onFailure, [&] { startCommand(program.command, SW_SHOWNORMAL); })) return false;
    kRoutine.trace([&] { return program.name + " soll deinstalliert werden"; });
    return true;
}

}  // namespace

void ProgramsPage::cmdDeinstall_Click() {
    kRoutine.started();
    const int rows = lvwDeinstall.count();
    for (int row = 1; row <= rows; ++row) {
        bool selected = false;
        kRoutine.step([&] { selected = lvwDeinstall.item(row).selected(); });
        if (!selected) continue;
        const Program program(lvwDeinstall.item(row));
        if (InStr(program.name, AppTitle) > 0) {
            // Nothing behind this row is started, and the trace has no end.
            MsgBox("Der " + AppTitle + " kann nur über die Windows Systemsteuerung deinstalliert werden.",
                   kStyleInformation);
            return;
        }
        bool refused = true;
        kRoutine.step([&] { refused = refusesCommand(program); });
        if (refused) continue;
        if (confirmed(program) && !uninstall(*this, program)) break;
    }
    kRoutine.ended();
}

}  // namespace bromvale

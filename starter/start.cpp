#include "starter/start.h"

#include <string>

#include "starter/components.h"
#include "starter/journal.h"
#include "starter/put_back.h"
#include "starter/settings.h"

namespace bromvale::starter {
namespace {

bool refuse(Machine& machine, const std::string& text) {
    machine.tell(text);
    return false;
}

bool isAlone(Machine& machine) {
    if (!machine.isOnlyStarter()) {
        return refuse(machine,
                      "Bromvale wurde auf diesem Rechner schon von einem Datenträger gestartet. Beenden Sie "
                      "es zuerst und "
                      "warten Sie einen Augenblick.");
    }
    if (machine.programRuns()) {
        return refuse(machine,
                      "Bromvale läuft schon. Beenden Sie es zuerst, und starten Sie es dann von hier.");
    }
    return true;
}

bool hasProgram(Machine& machine, View width) {
    if (machine.hasProgram(width)) return true;
    return refuse(machine, std::string("Neben BromvaleStart fehlt das Programm: ") +
                               (width == View::Bits64 ? "64" : "32") +
                               "\\Bromvale.exe. Entpacken Sie das Archiv noch einmal, mit allen Ordnern.");
}

bool areReadable(Machine& machine, const FolderSettings& settings) {
    if (settings.fault.empty()) return true;
    return refuse(machine,
                  "Die Einstellungen im Ordner von Bromvale sind nicht zu verwenden:\r\n" + settings.fault +
                      "\r\n\r\nVerbessern Sie die Datei, oder benennen Sie sie um: Dann beginnt Bromvale mit "
                      "neuen Einstellungen. Es wurde nichts verändert.");
}

bool isWantedUnsaved(Machine& machine) {
    return machine.ask(
               "In den Ordner von Bromvale kann nicht geschrieben werden; vielleicht ist der Datenträger "
               "schreibgeschützt.\r\n\r\nSoll Bromvale trotzdem starten? Es kann dann suchen, aber nichts "
               "entfernen, und "
               "geänderte Einstellungen werden nicht gespeichert.",
               Buttons::YesNo) == Answer::Yes;
}

bool prepare(Machine& machine, const FolderSettings& settings, const std::u16string& id, View width) {
    const bool done = beginJournal(machine, id) && addComponents(machine, width) &&
                      setSettingsAside(machine) && noteStage(machine, Stage::SetAside) &&
                      putSettingsIn(machine, settings.values) && noteStage(machine, Stage::PutIn);
    if (done) return true;
    return refuse(machine,
                  "Bromvale kann hier nicht vom Datenträger starten: In die Registrierung des angemeldeten "
                  "Benutzers kann nicht geschrieben werden.");
}

bool run(Machine& machine, const std::u16string& claimedId, View width) {
    if (!machine.startProgram(width))
        return refuse(machine, "Bromvale lässt sich auf diesem Rechner nicht starten.");
    machine.waitForProgram([&] {
        // A program that is still at work needs its settings; the next start puts all back.
        if (!machine.programRuns()) static_cast<void>(putBack(machine, claimedId));
    });
    return true;
}

}  // namespace

bool start(Machine& machine) {
    if (!isAlone(machine) || !mend(machine)) return false;
    const View width = machine.programWidth();
    if (!hasProgram(machine, width)) return false;
    const FolderSettings settings = readFolderSettings(machine);
    if (!areReadable(machine, settings)) return false;
    const std::u16string id = machine.newId();
    const std::u16string claimedId = claimFolder(machine, id) ? id : u"";
    if (claimedId.empty() && !isWantedUnsaved(machine)) return false;
    const bool ran = prepare(machine, settings, id, width) && run(machine, claimedId, width);
    if (!putBack(machine, claimedId)) return false;
    releaseFolder(machine);
    return ran;
}

}  // namespace bromvale::starter

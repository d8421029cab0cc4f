#include "starter/put_back.h"

#include "starter/components.h"
#include "starter/journal.h"
#include "starter/settings.h"
#include "starter/texts.h"

namespace bromvale::starter {
namespace {

constexpr std::string_view kRunFile = "Einstellungen.lauf";

bool isFolderOf(Machine& machine, const Journal& journal) {
    const File file = machine.readFile(kRunFile);
    return file.found == Found::Yes && !journal.id.empty() && widened(file.bytes) == journal.id;
}

// False where nobody can be asked: the changes wait for the next start.
bool saveOrGiveUp(Machine& machine, const Journal& journal) {
    while (!isFolderOf(machine, journal) || !saveFolderSettings(machine)) {
        switch (
            machine.ask("Die Einstellungen können nicht in den Ordner von Bromvale geschrieben werden. Ist "
                        "der Datenträger noch da, "
                        "und ist darauf Platz?\r\n\r\nMit \"Abbrechen\" bleiben dort die bisherigen "
                        "Einstellungen; was Sie bei diesem "
                        "Lauf geändert haben, geht verloren.",
                        Buttons::RetryCancel)) {
            case Answer::Yes: break;
            case Answer::No: return true;
            case Answer::None: return false;
        }
    }
    return true;
}

bool save(Machine& machine, const Journal& journal, const std::u16string& claimedId) {
    if (journal.stage != Stage::PutIn) return true;
    // A folder that was claimed and doesn't say so any more is one that is gone, or another one's in its
    // place.
    const bool isToBeSaved = isFolderOf(machine, journal) || (!claimedId.empty() && claimedId == journal.id);
    if (isToBeSaved && !saveOrGiveUp(machine, journal)) return false;
    return noteStage(machine, Stage::Saved);
}

bool restore(Machine& machine, const Journal& journal) {
    const bool isDue = journal.stage != Stage::Begun && journal.stage != Stage::Restored;
    if (isDue) {
        if (!restoreSettings(machine)) return false;
        machine.flush();
        if (!noteStage(machine, Stage::Restored)) return false;
    }
    return removeAside(machine);
}

enum class After { OwnRun, KilledRun };

bool putBackAll(Machine& machine, After after, const std::u16string& claimedId) {
    Journal journal = readJournal(machine);
    if (journal.found == Found::No) return true;
    const bool isRestored =
        journal.found == Found::Yes && save(machine, journal, claimedId) && restore(machine, journal);
    if (isRestored) {
        if (after == After::KilledRun) handOverComponents(machine, journal.added);
        // A class that can't be taken back, for lack of rights, does no harm and waits for a start that may.
        static_cast<void>(takeComponentsBack(machine, journal.added));
        if (removeJournal(machine)) return true;
    }
    machine.tell(
        "Die Registrierung dieses Rechners konnte nicht ganz in den Zustand von vorher gebracht werden. Der "
        "nächste "
        "Start von BromvaleStart versucht es wieder.");
    return false;
}

}  // namespace

bool claimFolder(Machine& machine, const std::u16string& id) {
    return machine.writeFile(kRunFile, machine.toCodePage(id));
}

void releaseFolder(Machine& machine) {
    machine.removeFile(kRunFile);
}

bool putBack(Machine& machine, const std::u16string& claimedId) {
    return putBackAll(machine, After::OwnRun, claimedId);
}

bool mend(Machine& machine) {
    return putBackAll(machine, After::KilledRun, {});
}

}  // namespace bromvale::starter

// What the starter has done to this machine's registry, kept in the registry of the same machine: the folder
// may be on a stick that is gone when the next start has to mend what a killed one left. A key of the user's
// own, HKEY_CURRENT_USER\Software\Bromvale-Portable, which is gone again when all is put back.
#pragma once
#include <string>
#include <vector>

#include "starter/machine.h"

namespace bromvale::starter {

enum class Stage {
    Begun = 1,  // of the settings nothing is touched
    SetAside,   // the machine's own settings are whole below the journal, the key is in the starter's hands
    PutIn,      // the key holds the folder's settings, and what the program has made of them since
    Saved,      // they are in the folder's file, or are given up
    Restored,   // the key holds the machine's own settings again
};

// A key that was missing, with its default value; empty where it has none.
struct Added {
    Place place;
    std::u16string name;
};

struct Journal {
    Found found = Found::No;
    std::u16string id;  // of the run; a file in the folder holds it as well
    Stage stage = Stage::Begun;
    std::vector<Added> added;
};

[[nodiscard]] Journal readJournal(Machine& machine);
// What an earlier journal says of added keys stays.
[[nodiscard]] bool beginJournal(Machine& machine, const std::u16string& id);
[[nodiscard]] bool noteStage(Machine& machine, Stage stage);
[[nodiscard]] bool noteAdded(Machine& machine, const Added& added);
[[nodiscard]] bool forgetAdded(Machine& machine, const Added& added);
// Where the machine's own settings lie meanwhile; not there if it had none.
[[nodiscard]] Place asidePlace();
[[nodiscard]] bool removeAside(Machine& machine);
// Only the key itself and what is empty: added keys that are still noted keep it.
[[nodiscard]] bool removeJournal(Machine& machine);

}  // namespace bromvale::starter

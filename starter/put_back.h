#pragma once
#include <string>

#include "starter/machine.h"

namespace bromvale::starter {

// Says in the folder which run its settings belong to: the one that the journal names is the last that has
// had them, and its changes go into the folder. False where the folder can't be written.
[[nodiscard]] bool claimFolder(Machine& machine, const std::u16string& id);
// Takes that back, when all is put back.
void releaseFolder(Machine& machine);

// Brings the machine back to what it was before the run that the journal tells of, wherever that run has
// ended. Saves the settings first, where the folder is that run's own. False where the registry doesn't let
// it, which the user is told; the journal stays then, and the next start tries again.
//
// After this process's own run. `claimedId` is that run's where it has claimed the folder: its settings are
// never given up without a question.
[[nodiscard]] bool putBack(Machine& machine, const std::u16string& claimedId);
// After one that was killed. An installation that came since then and counts on a class that was added gets
// it.
[[nodiscard]] bool mend(Machine& machine);

}  // namespace bromvale::starter

// The settings of the folder, Einstellungen.reg beside the starter, and those of the machine, which make room
// for them.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "starter/machine.h"

namespace bromvale::starter {

struct FolderSettings {
    std::vector<Value> values;  // none where there is no file yet
    std::string fault;          // for the user; empty where all is well
};

// A file with anything in it but texts of HKEY_CURRENT_USER\Software\Bromvale is a fault and not read at all.
[[nodiscard]] FolderSettings readFolderSettings(Machine& machine);

// Writes the texts of the key into the folder's file, all but those that reading it would refuse. The old one
// stays whole until the new one is with the disk. With no value in the key the file stays as it is.
[[nodiscard]] bool saveFolderSettings(Machine& machine);

// Copies the machine's own settings below the journal and looks whether all of them are there.
[[nodiscard]] bool setSettingsAside(Machine& machine);
[[nodiscard]] bool putSettingsIn(Machine& machine, const std::vector<Value>& values);
// What setSettingsAside has copied is again all that the key holds. Sub keys are never touched.
[[nodiscard]] bool restoreSettings(Machine& machine);

}  // namespace bromvale::starter

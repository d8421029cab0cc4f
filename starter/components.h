#pragma once
#include <string>
#include <vector>

#include "starter/journal.h"
#include "starter/machine.h"

namespace bromvale::starter {

// A class that the program's start looks for, below HKEY_LOCAL_MACHINE and then below HKEY_CURRENT_USER.
struct Component {
    std::u16string path;
    std::u16string name;
};

// Those of resources/components.reg, which is part of the starter.
[[nodiscard]] const std::vector<Component>& components();

// Adds what neither half has in this view, and the keys above it that are missing: for the machine where that
// may be, else for the user. Each is in the journal before it is in the registry. A class that can't be added
// is none of our cares: the program tells of it. False where the journal can't be written.
[[nodiscard]] bool addComponents(Machine& machine, View view);

// A class that was there when Bromvale was installed isn't among those that the installation has added, and
// would leave it without one: from now on it is that one's, and goes with its removal. Those are forgotten.
void handOverComponents(Machine& machine, std::vector<Added>& added);

// Takes back what was added and is as it was: the same default value and nothing else. What others have
// changed is theirs from then on. False where something couldn't be taken back; it stays in the journal.
[[nodiscard]] bool takeComponentsBack(Machine& machine, std::vector<Added> added);

}  // namespace bromvale::starter

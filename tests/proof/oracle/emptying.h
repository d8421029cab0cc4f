#pragma once
// What emptying the listed folders must take away, and what it may leave because nothing leads to it.
#include <set>
#include <string>
#include <vector>

#include "tests/proof/machine/model.h"

namespace bromvale::proof {

// Whether a line of the list or a chosen path may be emptied as it stands: no component that the system or
// the code page reads as another one.
[[nodiscard]] bool isTakenAsItStands(const System& system, View path);

// Paths below the drive in UTF-8, as the host names them.
struct Emptied {
    std::set<std::string> folders;  // listed and there
    std::set<std::string> gone;
    std::set<std::string> uncertain;  // may stay or go
};
[[nodiscard]] Emptied emptied(const Model& model, const std::vector<Text>& list);

}  // namespace bromvale::proof

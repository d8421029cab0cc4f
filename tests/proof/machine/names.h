#pragma once
#include "tests/proof/machine/model.h"
#include "tests/proof/machine/random.h"

namespace bromvale::proof {

// A name of a key, value, file or folder: plain, with umlauts, with letters that code pages lack, with wide
// separators, or the twin of another one. Only what the system's code page holds on the 9x family.
[[nodiscard]] Text someName(Random& random, const System& system);
// The same for a file or folder, which has no "?" and the like.
[[nodiscard]] Text someFileName(Random& random, const System& system);

// Files that the machine has and that it hasn't, as whole paths.
[[nodiscard]] Text somePath(Random& random, const Model& model, bool mayLackLetters);

}  // namespace bromvale::proof

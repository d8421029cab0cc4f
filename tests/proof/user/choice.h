#pragma once
#include <string>
#include <vector>

#include "tests/proof/machine/model.h"
#include "tests/proof/machine/random.h"

namespace bromvale::proof {

// What a user may do next, chosen from what stands on the screen: an action, and before it what is done in
// its midst and the answers to what it may ask. Seldom the end of the program.
[[nodiscard]] std::vector<std::string> chooseActions(Random& random, const Model& model);

// What is to be done while the program starts, before its window is there.
[[nodiscard]] std::vector<std::string> chooseAtStart(Random& random);

}  // namespace bromvale::proof

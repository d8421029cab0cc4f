// All keys of a hive, for tests that choose among them or compare two hives.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

// The key and all below it.
std::vector<HiveKey> treeOf(const Hive& hive, Cell top);

using CellSet = std::unordered_set<Cell>;

// The keys and all below them.
CellSet treesOf(const Hive& hive, const std::vector<Cell>& tops);

// The first thing in which `after` isn't `before` less the keys `gone` and what lies below them; "" if it is.
std::string differenceWithout(const Hive& before, const Hive& after, const CellSet& gone);

}  // namespace bromvale::offline

// Lists of sub keys, where keys are taken out of them.
#pragma once

#include <span>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"

namespace bromvale::offline {

// Frees a cell that is in use; HiveDamage for any other. `hive` reads the image.
void freeCell(HiveImage& image, const Hive& hive, Cell cell);

struct TakenOut {
    std::size_t count = 0;
    bool empty = false;  // nothing is left: the list is freed
};

// Takes the keys (sorted) out of a list of any kind, which shrinks within its cell. Parts that are left empty
// go.
TakenOut takeOutOfList(HiveImage& image, const Hive& hive, Cell list, std::span<const Cell> keys);

// Frees a list with its parts; not the keys.
void freeKeyList(HiveImage& image, const Hive& hive, Cell list);

}  // namespace bromvale::offline

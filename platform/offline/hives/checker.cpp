#include "platform/offline/hives/checker.h"

#include "platform/offline/hives/cell_map.h"
#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/key_checker.h"

namespace bromvale::offline {
namespace {

bool hasWholeBins(const BaseBlock& base) {
    return base.binsSize != 0 && base.binsSize % kPageSize == 0;
}

void checkBaseBlock(HiveBytes file, const BaseBlock& base, HiveCheck& check) {
    namespace at = base_block;
    if (!base.checksumRight) addFault(check, at::kChecksum, "the base block's checksum is wrong");
    if (base.firstSequence != base.secondSequence)
        addFault(check, at::kSecondSequence, "the sequence numbers differ: a change was not finished");
    if (file.u32(at::kFormat) != 1) addFault(check, at::kFormat, "the base block names an unknown format");
    if (!hasWholeBins(base)) addFault(check, at::kBinsSize, "the size of the bins is no multiple of 4096");
}

}  // namespace

HiveCheck checkHive(HiveBytes file) {
    HiveCheck check;
    try {
        const Hive hive(file);
        checkBaseBlock(file, hive.base(), check);
        if (!hasWholeBins(hive.base())) return check;
        CellMap cells(file.part(kBinsStart, hive.base().binsSize), check);
        if (cells.tiled()) KeyChecker(cells, check, hive.base()).walk();
    } catch (const HiveDamage& damage) {
        addFault(check, damage.place, damage.what());
    }
    return check;
}

}  // namespace bromvale::offline

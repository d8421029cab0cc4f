// The values of a hive's keys, for the checker.
#pragma once

#include "platform/offline/hives/cell_map.h"
#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

class ValueChecker {
  public:
    ValueChecker(CellMap& cells, HiveCheck& check, std::uint32_t minorVersion)
        : cells_(cells), check_(check), minorVersion_(minorVersion) {}

    // HiveDamage where a cell holds less than it should.
    void checkValues(HiveBytes key);

  private:
    struct Longest {
        std::uint32_t name = 0;
        std::uint32_t data = 0;
    };
    void checkValue(Cell cell, Longest& longest);
    void checkData(HiveBytes value, std::uint32_t size);
    void checkBigData(HiveBytes head, std::uint32_t size);
    void checkHolds(HiveBytes data, std::size_t size);

    CellMap& cells_;
    HiveCheck& check_;
    std::uint32_t minorVersion_;
};

}  // namespace bromvale::offline

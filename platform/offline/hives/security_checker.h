// The security of a hive's keys, for the checker: a ring of cells, each with the number of its keys.
#pragma once

#include <vector>

#include "platform/offline/hives/cell_map.h"

namespace bromvale::offline {

class SecurityChecker {
  public:
    SecurityChecker(CellMap& cells, HiveCheck& check) : cells_(cells), check_(check) {}

    // Goes round the ring that the root's security belongs to. Where it is broken, that alone is the fault.
    void walkRing(Cell first);
    // One more key has it. `place` is the key's.
    void use(Cell security, std::size_t place);
    // Faults where the counts of the ring aren't what was used.
    void compareCounts() const;

  private:
    struct Member {
        Cell cell = kNil;
        std::size_t place = 0;
        std::uint32_t stored = 0;
        std::uint32_t used = 0;
    };
    [[nodiscard]] bool join(Cell cell, HiveBytes node);

    CellMap& cells_;
    HiveCheck& check_;
    std::vector<Member> members_;  // sorted by cell once the ring is walked
    bool whole_ = false;
    std::size_t last_ = 0;  // the one that was used last: mostly the next one as well
};

}  // namespace bromvale::offline

// Which cells a hive has, and which of them something has referred to: for the checker.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/layout.h"

namespace bromvale::offline {

// Counts a fault, and keeps it if it is among the first hundred.
void addFault(HiveCheck& check, std::size_t place, std::string what);

class CellMap {
  public:
    // Faults where the bins don't follow one another to the end, or the cells in them don't.
    CellMap(HiveBytes bins, HiveCheck& check);

    // Whether bins and cells have no gaps. If not, nothing else here means anything.
    [[nodiscard]] bool tiled() const { return tiled_; }

    // The content of a cell in use, without its size; nothing where there is none.
    [[nodiscard]] std::optional<HiveBytes> content(Cell cell) const;
    // The same for whom the cell belongs to, which is one alone: otherwise a fault, and nothing.
    [[nodiscard]] std::optional<HiveBytes> claim(Cell cell, const char* what);

    // Whether all claims gave something and all of it could be read. If not, some cells were never reached.
    [[nodiscard]] bool complete() const { return complete_; }
    void setIncomplete() { complete_ = false; }

    // Faults for the cells in use that nobody claimed.
    void reportLost() const;

  private:
    enum class State : std::uint8_t { NoCell, Free, Used, Claimed };

    bool mapBins();
    bool mapCells(std::size_t at, std::size_t end);
    [[nodiscard]] State stateOf(Cell cell) const;
    bool fault(std::size_t at, const char* what);

    HiveBytes bins_;
    HiveCheck& check_;
    std::vector<State> states_;  // one for each eight bytes
    bool tiled_ = false;
    bool complete_ = true;
};

}  // namespace bromvale::offline

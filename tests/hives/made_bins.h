// The bins of a made hive with their cells, as they grow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/offline/hives/layout.h"

namespace bromvale::offline {

class MadeBins {
  public:
    // `freeCellEvery`: a free cell before each so many; 0: only where a bin's end is left.
    MadeBins(std::size_t binSize, std::size_t freeCellEvery)
        : binSize_(binSize), freeCellEvery_(freeCellEvery) {}

    // A new cell in use, filled with zeros, or with its content.
    Cell cell(std::size_t contentSize);
    Cell cell(std::string_view content);

    void put(Cell cell, std::size_t at, std::string_view bytes);
    void put(Cell cell, std::size_t at, std::uint32_t number);
    void put16(Cell cell, std::size_t at, std::size_t number);
    void put64(Cell cell, std::size_t at, std::uint64_t number);

    // All bins; the first one says when the file was written.
    std::string take(std::uint64_t lastWritten);

  private:
    void addFreeCell();
    Cell carve(std::size_t contentSize);
    void openBin(std::size_t cellSize);
    void closeBin();
    template <class Number>
    void putRaw(std::size_t at, Number number);

    std::size_t binSize_;
    std::size_t freeCellEvery_;
    std::size_t cells_ = 0;
    std::string bytes_;
    std::size_t next_ = 0;
};

}  // namespace bromvale::offline

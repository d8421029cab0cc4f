#include "tests/hives/made_bins.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace bromvale::offline {
namespace {

std::size_t sizeWith(std::size_t content) {
    return (content + kCellHeaderSize + 7) / 8 * 8;
}

}  // namespace

template <class Number>
void MadeBins::putRaw(std::size_t at, Number number) {
    std::memcpy(bytes_.data() + at, &number, sizeof number);
}

Cell MadeBins::cell(std::size_t contentSize) {
    if (freeCellEvery_ != 0 && ++cells_ % freeCellEvery_ == 0) addFreeCell();
    return carve(contentSize);
}

Cell MadeBins::cell(std::string_view content) {
    const Cell made = cell(content.size());
    put(made, 0, content);
    return made;
}

void MadeBins::put(Cell cell, std::size_t at, std::string_view bytes) {
    bytes_.replace(cell + kCellHeaderSize + at, bytes.size(), bytes);
}

void MadeBins::put(Cell cell, std::size_t at, std::uint32_t number) {
    putRaw(cell + kCellHeaderSize + at, number);
}

void MadeBins::put16(Cell cell, std::size_t at, std::size_t number) {
    putRaw(cell + kCellHeaderSize + at, static_cast<std::uint16_t>(number));
}

void MadeBins::put64(Cell cell, std::size_t at, std::uint64_t number) {
    putRaw(cell + kCellHeaderSize + at, number);
}

std::string MadeBins::take(std::uint64_t lastWritten) {
    closeBin();
    putRaw(bin::kLastWritten, lastWritten);
    return std::move(bytes_);
}

// Of changing sizes, and with something in it that nobody should read.
void MadeBins::addFreeCell() {
    const std::size_t size = 4 + cells_ % 5 * 8;
    const Cell left = carve(size);
    put(left, 0, std::string(size, 'x'));
    putRaw(left, static_cast<std::int32_t>(sizeWith(size)));
}

Cell MadeBins::carve(std::size_t contentSize) {
    const std::size_t size = sizeWith(contentSize);
    if (bytes_.size() - next_ < size) {
        closeBin();
        openBin(size);
    }
    const auto cell = static_cast<Cell>(next_);
    putRaw(cell, -static_cast<std::int32_t>(size));
    next_ += size;
    return cell;
}

void MadeBins::openBin(std::size_t cellSize) {
    const std::size_t needed = (bin::kHeaderSize + cellSize + kPageSize - 1) / kPageSize * kPageSize;
    const std::size_t size = std::max(needed, binSize_);
    const std::size_t start = bytes_.size();
    bytes_.append(size, '\0');
    bytes_.replace(start, 4, bin::kSignature);
    putRaw(start + bin::kOffset, static_cast<std::uint32_t>(start));
    putRaw(start + bin::kSize, static_cast<std::uint32_t>(size));
    next_ = start + bin::kHeaderSize;
}

void MadeBins::closeBin() {
    if (next_ < bytes_.size()) putRaw(next_, static_cast<std::int32_t>(bytes_.size() - next_));
    next_ = bytes_.size();
}

}  // namespace bromvale::offline

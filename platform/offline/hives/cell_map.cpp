#include "platform/offline/hives/cell_map.h"

#include <utility>

namespace bromvale::offline {
namespace {

constexpr std::size_t kFaultsKept = 100;
constexpr std::size_t kCellUnit = 8;

}  // namespace

void addFault(HiveCheck& check, std::size_t place, std::string what) {
    ++check.faultCount;
    if (check.faults.size() < kFaultsKept) check.faults.push_back({place, std::move(what)});
}

CellMap::CellMap(HiveBytes bins, HiveCheck& check)
    : bins_(bins), check_(check), states_(bins.size() / kCellUnit), tiled_(mapBins()) {}

bool CellMap::fault(std::size_t at, const char* what) {
    addFault(check_, bins_.place() + at, what);
    return false;
}

bool CellMap::mapBins() {
    std::size_t size = 0;
    for (std::size_t at = 0; at < bins_.size(); at += size) {
        if (!bins_.holds(at, bin::kHeaderSize) || bins_.text(at, 4) != bin::kSignature)
            return fault(at, "a bin does not begin with \"hbin\"");
        if (bins_.u32(at + bin::kOffset) != at) return fault(at, "a bin says that it stands elsewhere");
        size = bins_.u32(at + bin::kSize);
        if (size == 0 || size % kPageSize != 0) return fault(at, "a bin's size is no multiple of 4096");
        if (!bins_.holds(at, size)) return fault(at, "a bin reaches beyond the last one's end");
        if (!mapCells(at + bin::kHeaderSize, at + size)) return false;
    }
    return true;
}

bool CellMap::mapCells(std::size_t at, std::size_t end) {
    while (at < end) {
        const auto stored = static_cast<std::int32_t>(bins_.u32(at));
        const bool used = stored < 0;
        const auto size = static_cast<std::size_t>(used ? -std::int64_t{stored} : std::int64_t{stored});
        if (size == 0 || size % kCellUnit != 0) return fault(at, "a cell's size is no multiple of 8");
        if (size > end - at) return fault(at, "a cell reaches beyond its bin");
        states_[at / kCellUnit] = used ? State::Used : State::Free;
        at += size;
    }
    return true;
}

CellMap::State CellMap::stateOf(Cell cell) const {
    const std::size_t index = cell / kCellUnit;
    return cell % kCellUnit == 0 && index < states_.size() ? states_[index] : State::NoCell;
}

std::optional<HiveBytes> CellMap::content(Cell cell) const {
    const State state = stateOf(cell);
    if (state != State::Used && state != State::Claimed) return std::nullopt;
    const auto size = static_cast<std::size_t>(-std::int64_t{static_cast<std::int32_t>(bins_.u32(cell))});
    return bins_.part(cell + kCellHeaderSize, size - kCellHeaderSize);
}

std::optional<HiveBytes> CellMap::claim(Cell cell, const char* what) {
    const State state = stateOf(cell);
    if (state == State::Used) {
        states_[cell / kCellUnit] = State::Claimed;
        return content(cell);
    }
    complete_ = false;
    const char* const why = state == State::Claimed ? " lies in a cell that something else refers to as well"
                            : state == State::Free  ? " lies in a cell that is free"
                                                    : " lies where no cell begins";
    // An offset that leads nowhere has no place of its own.
    addFault(check_, bins_.place() + (cell < bins_.size() ? cell : 0), std::string(what) + why);
    return std::nullopt;
}

void CellMap::reportLost() const {
    for (std::size_t i = 0; i < states_.size(); ++i) {
        if (states_[i] == State::Used)
            addFault(check_, bins_.place() + i * kCellUnit, "a cell is in use and nothing refers to it");
    }
}

}  // namespace bromvale::offline

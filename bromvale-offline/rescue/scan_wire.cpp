#include "bromvale-offline/rescue/scan_wire.h"

namespace bromvale::offline {
namespace {

// Before each row, and behind the last.
constexpr std::uint64_t kRow = 1;
constexpr std::uint64_t kNoRow = 0;

FoundRow readRow(WireReader& wire) {
    FoundRow row;
    row.key = wire.wide();
    row.valueName = wire.wide();
    row.data = wire.wide();
    row.kind = static_cast<FaultKind>(wire.number());
    row.sought = wire.wide();
    row.hive = static_cast<std::uint32_t>(wire.number());
    row.place = static_cast<std::uint32_t>(wire.number());
    return row;
}

}  // namespace

void writeRow(WireWriter& wire, const FoundRow& row) {
    wire.number(kRow);
    wire.text(row.key);
    wire.text(row.valueName);
    wire.text(row.data);
    wire.number(static_cast<std::uint64_t>(row.kind));
    wire.text(row.sought);
    wire.number(row.hive);
    wire.number(row.place);
}

void writeRest(WireWriter& wire, const ScanResult& result) {
    wire.number(kNoRow);
    wire.text(result.report);
    wire.number(result.elsewhere);
    wire.number(result.warnings.size());
    for (const std::string& warning : result.warnings) wire.text(warning);
    wire.number(result.removed.size());
    for (const auto& cells : result.removed) {
        wire.number(cells.size());
        for (const Cell cell : cells) wire.number(cell);
    }
    wire.number(result.removedPaths.size());
    for (const std::u16string& path : result.removedPaths) wire.text(path);
    wire.text(result.completeCopy);
    wire.number(result.damaged ? 1 : 0);
    wire.text(result.failure);
}

ScanResult readResult(WireReader& wire) {
    ScanResult result;
    while (wire.number() == kRow) result.rows.push_back(readRow(wire));
    result.report = wire.text();
    result.elsewhere = wire.number();
    for (std::uint64_t left = wire.number(); left > 0; --left) result.warnings.push_back(wire.text());
    for (std::uint64_t left = wire.number(); left > 0; --left) {
        auto& cells = result.removed.emplace_back();
        for (std::uint64_t more = wire.number(); more > 0; --more)
            cells.push_back(static_cast<Cell>(wire.number()));
    }
    for (std::uint64_t left = wire.number(); left > 0; --left) result.removedPaths.push_back(wire.wide());
    result.completeCopy = wire.text();
    result.damaged = wire.number() != 0;
    result.failure = wire.text();
    return result;
}

}  // namespace bromvale::offline

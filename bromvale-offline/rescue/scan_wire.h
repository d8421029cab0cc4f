// What a scan's process tells, in this order: rows, then the rest of the result.
#pragma once

#include "bromvale-offline/rescue/scan_run.h"
#include "bromvale-offline/rescue/wire.h"

namespace bromvale::offline {

void writeRow(WireWriter& wire, const FoundRow& row);
// All but the rows, behind the last of them.
void writeRest(WireWriter& wire, const ScanResult& result);

// std::out_of_range where it is cut off.
[[nodiscard]] ScanResult readResult(WireReader& wire);

}  // namespace bromvale::offline

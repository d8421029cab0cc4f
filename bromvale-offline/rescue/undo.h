// Cleanings that were: their list, the way back, and those that were broken off.
#pragma once

#include "bromvale-offline/options.h"
#include "platform/offline/hives/cleaning/cleaning.h"

namespace bromvale::offline {

// --undo. The exit status; throws RescueStop.
[[nodiscard]] int undo(const Options& options);

// Tells of cleanings that were broken off; with --write they are finished or taken back first. 0, or the exit
// status that ends the tool.
[[nodiscard]] int goOnWithUnfinished(const Options& options);

// Says what came of a cleaning or an undo, beside its progress. The exit status.
[[nodiscard]] int tellResult(const CleaningResult& result);

}  // namespace bromvale::offline

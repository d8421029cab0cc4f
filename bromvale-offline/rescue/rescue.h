#pragma once
#include "bromvale-offline/options.h"

namespace bromvale::offline {

// Exit statuses beside 0, 1 and 2, which mean what they mean everywhere.
inline constexpr int kFaultsFound = 3;  // with --check
inline constexpr int kRefused = 4;

// Looks at raw hives and disks, cleans them and puts them back; also the reports of other registries. The
// exit status.
[[nodiscard]] int runRescue(const Options& options);

}  // namespace bromvale::offline

// Rows that shall go: which keys that are, the question, and the cleaning of their hives.
#pragma once

#include "bromvale-offline/rescue/findings.h"

namespace bromvale::offline {

// Shows what goes and, with --write, takes it out. The exit status; throws RescueStop.
[[nodiscard]] int removeFrom(const Findings& findings, const Sources& sources, const Options& options);

}  // namespace bromvale::offline

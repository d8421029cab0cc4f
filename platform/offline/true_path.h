#pragma once
#include <string>

#include "platform/offline/drives.h"

namespace bromvale::offline {

// Where a path leads in the end, in the stored form: past all links, with names in their own case and short
// ones made long. The path itself where nothing is there.
std::string truePath(const Location& location);

}  // namespace bromvale::offline

#pragma once
#include <string>

#include "platform/offline/files/drives.h"

namespace bromvale::offline {

enum class LinkAtEnd { IsMeant, LeadsOn };

// Where a path leads in the end, in the stored form: past the links on the way, with names in their own case
// and short ones made long. Empty where nothing is there.
std::string truePath(const Location& location, LinkAtEnd linkAtEnd);

}  // namespace bromvale::offline

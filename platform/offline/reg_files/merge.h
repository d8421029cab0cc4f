#pragma once
#include <string_view>

#include "platform/offline/registry/registry.h"

namespace bromvale::offline {

// What the registry editor does with a registry file that it is told to enter: it takes what it understands
// and passes over the rest, a line at a time. A key line that names no hive takes its values along; a
// backslash in a text that begins no known escape is dropped. Without a header nothing is entered.
void mergeRegText(std::string_view bytes, Registry& registry);

}  // namespace bromvale::offline

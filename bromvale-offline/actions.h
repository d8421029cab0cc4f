#pragma once
#include <string_view>

#include "bromvale-offline/script.h"

namespace bromvale::offline {

// Does the action with this name. Throws ScriptError where it can't be done.
void doAction(std::string_view word, std::string_view rest, Transcript& transcript);

}  // namespace bromvale::offline

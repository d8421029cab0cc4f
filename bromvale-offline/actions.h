#pragma once
#include <string_view>

#include "bromvale-offline/script.h"

namespace bromvale::offline {

// Does the action with this name. Throws ScriptError where it can't be done.
void doAction(std::string_view word, std::string_view rest, Transcript& transcript);

// Throws ScriptError for anything but a whole number.
[[nodiscard]] int toNumber(std::string_view text);
// Rows as "1 3-5", "all" or "none". Throws ScriptError for rows that the list does not have.
[[nodiscard]] std::vector<int> toRows(std::string_view text, int count);

}  // namespace bromvale::offline

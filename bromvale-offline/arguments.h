#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

// What stands behind an action's word in a script.

// Cuts the first word off.
std::string_view takeWord(std::string_view& text);
// With line ends where it says \n.
[[nodiscard]] std::string unescaped(std::string_view text);
// Throws ScriptError for anything but a whole number.
[[nodiscard]] int toNumber(std::string_view text);
// Rows as "1 3-5", "all" or "none". Throws ScriptError for rows that the list does not have.
[[nodiscard]] std::vector<int> toRows(std::string_view text, int count);

}  // namespace bromvale::offline

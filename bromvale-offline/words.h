#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/control.h"

namespace bromvale::offline {

// Names that scripts and transcripts use for numbers.
[[nodiscard]] std::string_view buttonName(int id);
[[nodiscard]] std::optional<int> buttonByName(std::string_view name);
// Icon and buttons of a message box: "information OK".
[[nodiscard]] std::string boxKind(std::uint32_t style);
[[nodiscard]] std::string_view kindName(ControlKind kind);

struct KeyPress {
    int key = 0;
    bool shift = false;
    bool alt = false;
};
// "F5", "Delete", "Shift+Tab", "Alt+S", or a virtual key code.
[[nodiscard]] std::optional<KeyPress> keyByName(std::string_view name);

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

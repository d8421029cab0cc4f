#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

}  // namespace bromvale::offline

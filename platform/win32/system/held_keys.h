#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// Of the message of a key that goes down: it only repeats one that is held.
[[nodiscard]] inline bool heldDown(LPARAM keyData) {
    constexpr LPARAM kWasDown = LPARAM{1} << 30;
    return (keyData & kWasDown) != 0;
}

}  // namespace bromvale

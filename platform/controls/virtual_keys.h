#pragma once

namespace bromvale {

// Windows' virtual keys as far as the controls know them; its header doesn't come here.
enum VirtualKey {
    kTab = 0x09,       // VK_TAB
    kReturn = 0x0D,    // VK_RETURN
    kEscape = 0x1B,    // VK_ESCAPE
    kSpace = 0x20,     // VK_SPACE
    kPageUp = 0x21,    // VK_PRIOR
    kPageDown = 0x22,  // VK_NEXT
    kEnd = 0x23,       // VK_END
    kHome = 0x24,      // VK_HOME
    kLeft = 0x25,      // VK_LEFT
    kUp = 0x26,        // VK_UP
    kRight = 0x27,     // VK_RIGHT
    kDown = 0x28,      // VK_DOWN
    kMenuKey = 0x5D,   // VK_APPS
    kF10 = 0x79        // VK_F10
};

}  // namespace bromvale

#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// A mouse message that presses or releases a button.
struct MouseEdge {
    UINT message;
    int button;  // 1 left, 2 right, 4 middle
    int key;     // virtual key of the button
    bool pressed;

    // As far as the messages that the program has taken tell.
    [[nodiscard]] bool heldNow() const { return GetKeyState(key) < 0; }
};

// Null for any other message.
[[nodiscard]] inline const MouseEdge* mouseEdge(UINT message) {
    static constexpr MouseEdge kEdges[] = {
        {WM_LBUTTONDOWN, 1, VK_LBUTTON, true},   {WM_LBUTTONDBLCLK, 1, VK_LBUTTON, true},
        {WM_LBUTTONUP, 1, VK_LBUTTON, false},    {WM_RBUTTONDOWN, 2, VK_RBUTTON, true},
        {WM_RBUTTONDBLCLK, 2, VK_RBUTTON, true}, {WM_RBUTTONUP, 2, VK_RBUTTON, false},
        {WM_MBUTTONDOWN, 4, VK_MBUTTON, true},   {WM_MBUTTONDBLCLK, 4, VK_MBUTTON, true},
        {WM_MBUTTONUP, 4, VK_MBUTTON, false},
    };
    for (const MouseEdge& edge : kEdges) {
        if (edge.message == message) return &edge;
    }
    return nullptr;
}

// Tells each release of a button once, whether its message arrives or was swallowed.
class ReleaseCounter {
  public:
    void press(int button) {
        told_ &= ~button;
        late_ &= ~button;
    }
    // The release shows without a message; false where it has been told already.
    bool swallowed(int button) {
        if ((told_ & button) != 0) return false;
        told_ |= button;
        late_ |= button;
        return true;
    }
    // The message of a release; false where it comes behind what `swallowed` has told.
    bool release(int button) {
        const bool told = (late_ & button) != 0;
        late_ &= ~button;
        told_ |= button;
        return !told;
    }

  private:
    int told_ = 0;
    int late_ = 0;
};

}  // namespace bromvale

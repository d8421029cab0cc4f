#include "platform/dialogs.h"

namespace bromvale {

int showMessageBox(const char* text, const char* title, unsigned style) {
    const HWND active = GetActiveWindow();
    const int answer = MessageBoxA(nullptr, text, title, style | MB_TASKMODAL);
    // The box goes while all other windows are still disabled, so that none of them may follow it by itself.
    const bool seen = active != nullptr && IsWindowVisible(active) != 0;
    if (seen && GetActiveWindow() != active) SetForegroundWindow(active);
    return answer;
}

}  // namespace bromvale

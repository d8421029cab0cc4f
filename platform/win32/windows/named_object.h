#pragma once
#include <string>

#include "platform/win32/windows/accessibility.h"

namespace bromvale {

// Answers a window's WM_GETOBJECT with Windows' own object under another name. 0 where Windows' own answer
// stands: it says this name already, something else than the window's inside is asked for, or the system has
// no such interface.
[[nodiscard]] LRESULT answerWithName(HWND window, const std::string& name, WPARAM wParam, LPARAM lParam);

}  // namespace bromvale

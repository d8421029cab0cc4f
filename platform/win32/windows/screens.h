#pragma once
#include "base/scale.h"
#include "platform/win32/system/windows.h"

namespace bromvale {

// The screens of the machine, in pixels. Before Windows 98 and 2000 there is one.
[[nodiscard]] RECT workingAreaAt(POINT at);
[[nodiscard]] RECT workingAreaOf(HWND window);

// The scaling in which a window is shown: that of its screen from Windows 10 (1703) on, which tells a window
// by WM_DPICHANGED when it changes, before that the system's.
[[nodiscard]] Scale scaleOf(HWND window);

}  // namespace bromvale

#pragma once
// The common controls' own header, behind Windows' general one.
#include "platform/win32/system/windows.h"

#include <commctrl.h>

namespace bromvale {

// Registers the window classes of the common controls; further calls do nothing.
void loadCommonControls();

// True where the controls come from version 6 of the library (Windows XP with a manifest, and later).
[[nodiscard]] bool themedControls();

}  // namespace bromvale

#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// The field of a combo box is a window of its own, and the one that has the keyboard. From here on it is
// called as the box is; where Windows names it so itself, its own answer stands.
void nameComboField(HWND comboBox);

}  // namespace bromvale

#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

class Form;

// Pixels that a turn of the mouse wheel (a message's wParam) scrolls.
[[nodiscard]] POINT wheelStep(WPARAM wParam);

// Alt with Page Up, Page Down or an arrow to a side scrolls the page where the screen is too small for it:
// what there has no control that takes the keyboard is to be read, too. False where there is nothing to
// scroll.
bool scrollByKey(const Form& form, WPARAM key);

}  // namespace bromvale

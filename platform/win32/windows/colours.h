#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// Colours are the system's, by the numbers of GetSysColor, and a text stands on the ground that the system
// pairs with it. Where two that are no pair come together it is asked first whether they can be read.

// Contrast of 4.5 to 1 at least, computed as the web's rules for accessible pages do it.
[[nodiscard]] bool readable(COLORREF text, COLORREF ground);

// Text of buttons on their face, as colours of the text that is drawn next; the brush of that ground.
// Windows itself draws captions of groups and boxes in the colour of texts in windows.
HBRUSH faceColours(HDC dc);

}  // namespace bromvale

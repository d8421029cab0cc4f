#pragma once
// Has another process of the same width do what only it can do to itself.
#include <windows.h>

#include <string>

// The window is told that it came to a screen of that scaling, with the place that the system would suggest.
bool tellDpi(HWND window, int dpi);

// The window's process sets colours of the system and tells all windows: "5=FFFFFF 8=000000", numbers of
// GetSysColor and red, green, blue.
bool setColoursOf(HWND window, const std::string& colours);

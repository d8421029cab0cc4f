#pragma once
// Finds Bromvale's windows from outside by the names that it hangs on them as a window property.
#include <windows.h>

#include <string>
#include <vector>

struct NamedWindow {
    std::string name;  // the control's name in Windows-1252, "frmMain" for the window itself
    HWND window;
};

// All named windows of all forms, a form before its controls, in the order of the windows.
std::vector<NamedWindow> namedWindows();
// Null where there is none.
HWND findNamed(const std::string& name);

struct TopWindow {
    HWND window;
    std::wstring className;
    std::wstring title;
};
std::vector<TopWindow> visibleTopWindows();

std::wstring className(HWND window);
// The text as the window itself gives it; works across processes, empty where nothing answers within a
// second.
std::wstring windowText(HWND window);

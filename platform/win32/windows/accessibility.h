#pragma once
// Windows' interface for assistive tools, apart from windows.h, since few files need it and it brings a lot.
#include <string>

#include "platform/win32/system/windows.h"

#define interface struct
#include <oleacc.h>
#undef interface

namespace bromvale {

// What a program needs of that interface's libraries. Not every system has them.
struct AccessibilityFunctions {
    decltype(&::LresultFromObject) resultFromObject;
    decltype(&::CreateStdAccessibleObject) createStandard;
    decltype(&::SysAllocString) allocateString;
    decltype(&::SysFreeString) freeString;
};

// Loaded at the first use, with the calling thread made one that COM's calls reach. Null where the system
// lacks it: then nobody asks, and Windows' own answers stand.
[[nodiscard]] const AccessibilityFunctions* accessibility();

// A text of the code page for COM, to be freed by whoever gets it; null for an empty one.
[[nodiscard]] BSTR spokenText(const std::string& text);

// Answers a window's WM_GETOBJECT with an object; `flags` is the message's wParam. 0 where that fails.
[[nodiscard]] LRESULT answerWith(IAccessible& object, WPARAM flags);

// Tells whoever listens that something of a window changed (EVENT_OBJECT_FOCUS ...). `child` 0 is the window
// itself.
void tellAssistive(DWORD event, HWND window, LONG child = CHILDID_SELF);

// Answers calls of assistive tools that wait, and serves nothing else: for a routine at work that serves its
// windows alone.
void answerAssistive();

// Runs one call of COM's: nothing thrown leaves it.
template <class Call>
HRESULT answered(const Call& call) {
    try {
        return call();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace bromvale

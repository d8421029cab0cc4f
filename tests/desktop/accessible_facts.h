#pragma once
// What a window of another process tells through IAccessible.
#include <windows.h>

#define interface struct
#include <oleacc.h>
#undef interface

#include <memory>
#include <string>

struct ReleasingObject {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Object = std::unique_ptr<IAccessible, ReleasingObject>;

// Pixels of the screen. Nothing where there is no answer.
struct Facts {
    std::wstring name;
    std::wstring description;
    std::wstring action;
    LONG role = 0;
    LONG state = 0;
    RECT place{};
};

// Null where nothing answers.
Object objectOf(HWND window);
VARIANT childNumber(LONG number);
LONG childCount(IAccessible& object);
// The part is an object of its own, as a child window is.
bool hasObject(IAccessible& object, LONG part);
Facts factsOf(IAccessible& object, LONG part);

std::wstring roleName(LONG role);
std::wstring stateNames(LONG state);
// Null for an event that is not looked at.
const wchar_t* eventName(DWORD event);
// The control's name that the program hangs on its window; empty for none.
std::wstring nameOf(HWND window);
DWORD processOf(HWND window);

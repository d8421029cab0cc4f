#pragma once
#include <string>

// MessageBoxA under its own name. Without a display the boxes are recorded and answered by the machine's
// script.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/desktop/shell_api.h"
#endif

namespace bromvale {

// MessageBoxA without an owner, but modal to the whole program: no form takes clicks while the box waits. The
// window that was active before has the keyboard again afterwards.
int showMessageBox(const char* text, const char* title, unsigned style);

// The dialog "save as". Empty where the user has cancelled it.
[[nodiscard]] std::string askWhereToSave(const std::string& suggestedName);

}  // namespace bromvale

#pragma once
// Shell functions under their own names: ShellExecuteA, SHFileOperationA, Shell_NotifyIconA,
// SetForegroundWindow.
#include <cstdint>
#include <string_view>

#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/desktop/shell_api.h"
#endif

namespace bromvale {

// SHFileOperationA, with the windows served meanwhile (see ServeWindows): a folder with much in it takes its
// time.
int SHFileOperationServing(SHFILEOPSTRUCTA& operation);

// Where help files lie that are named without a path: the viewer itself knows the current folder only. With
// its trailing backslash.
void setHelpFolder(std::string_view folder);

// HtmlHelpA of hhctrl.ocx, which is loaded at the first call since a system may lack it.
// command 0 shows `file` at its default topic, command 18 closes all help windows of the process.
// Returns the help window, or null where nothing could be shown. Never fails.
HWND HtmlHelpA(HWND window, const char* file, unsigned command, std::uintptr_t data);

}  // namespace bromvale

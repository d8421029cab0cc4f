#pragma once
// Shell functions under their own names: ShellExecuteA, SHFileOperationA, Shell_NotifyIconA,
// SetForegroundWindow.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/desktop/shell_api.h"
#endif

namespace bromvale {

// SHFileOperationA, with the windows served meanwhile (see ServeWindows): a folder with much in it takes its
// time.
int SHFileOperationServing(SHFILEOPSTRUCTA& operation);

}  // namespace bromvale

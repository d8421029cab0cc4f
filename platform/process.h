#pragma once
// Process, token and shutdown functions under their own names: GetCurrentProcess, TerminateProcess,
// CreateMutexA, OpenProcessToken, LookupPrivilegeValueA, AdjustTokenPrivileges, ExitWindowsEx,
// CreateProcessA, ExpandEnvironmentStringsA.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/desktop/process_api.h"
#endif

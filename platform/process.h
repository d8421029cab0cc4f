#pragma once
// Process, token and shutdown functions under their own names: GetCurrentProcess, TerminateProcess,
// CreateMutexA, OpenProcessToken, LookupPrivilegeValueA, AdjustTokenPrivileges, ExitWindowsEx,
// CreateProcessA, ExpandEnvironmentStringsA.
#ifdef _WIN32
#include "platform/win32/windows.h"
#else
#include "platform/offline/process_api.h"
#endif

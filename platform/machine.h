#pragma once
// Machine facts, clock and locale under their own names: GetComputerNameA, GetUserNameA,
// GetWindowsDirectoryA, GetSystemDirectoryA, GetTempPathA, GetVersionExA, GetModuleFileNameA,
// GetCommandLineA, GetLocalTime, GetDateFormatA, GetTimeFormatA, GetLocaleInfoA,
// GetACP, GetCPInfo, MultiByteToWideChar, WideCharToMultiByte; of the NT family only: GetModuleFileNameW.
// Process, token and shutdown functions: GetCurrentProcess, TerminateProcess, CreateMutexA, OpenMutexA,
// OpenProcessToken, LookupPrivilegeValueA, AdjustTokenPrivileges, ExitWindowsEx, CreateProcessA,
// ExpandEnvironmentStringsA.
#ifdef _WIN32
#include "platform/win32/system/windows.h"
#else
#include "platform/offline/desktop/process_api.h"
#include "platform/offline/machine_api.h"
#endif

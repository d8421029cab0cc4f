#pragma once
// Process, token, shutdown and library functions of the offline machine. Nothing is started: command lines
// and restarts are recorded.
#include <string>
#include <string_view>

#include "platform/offline/windows_types.h"

struct STARTUPINFOA {
    DWORD cb;
    LPSTR lpReserved;
    LPSTR lpDesktop;
    LPSTR lpTitle;
    DWORD dwX;
    DWORD dwY;
    DWORD dwXSize;
    DWORD dwYSize;
    DWORD dwXCountChars;
    DWORD dwYCountChars;
    DWORD dwFillAttribute;
    DWORD dwFlags;
    WORD wShowWindow;
    WORD cbReserved2;
    LPBYTE lpReserved2;
    HANDLE hStdInput;
    HANDLE hStdOutput;
    HANDLE hStdError;
};
using LPSTARTUPINFOA = STARTUPINFOA*;

struct PROCESS_INFORMATION {
    HANDLE hProcess;
    HANDLE hThread;
    DWORD dwProcessId;
    DWORD dwThreadId;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

#define STARTF_USESHOWWINDOW 0x1u
#define CREATE_DEFAULT_ERROR_MODE 0x04000000u

namespace bromvale::offline {

// The program that a command line names, as CreateProcessA finds it: the text in quotes, or up to a blank
// behind which the text so far names a file; ".exe" is added to a name without a dot. Names without a folder
// are looked for in the program's folder, the current one, and the system's. Empty where there is no such
// file.
[[nodiscard]] std::string programOf(std::string_view commandLine);

}  // namespace bromvale::offline

HANDLE GetCurrentProcess();
BOOL TerminateProcess(HANDLE process, UINT exitCode);
HANDLE CreateMutexA(LPSECURITY_ATTRIBUTES security, BOOL owner, LPCSTR name);
// Null for one that no other process has made.
HANDLE OpenMutexA(DWORD access, BOOL inherit, LPCSTR name);
BOOL CreateProcessA(LPCSTR application, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                    LPSECURITY_ATTRIBUTES thread, BOOL inherit, DWORD flags, LPVOID environment,
                    LPCSTR directory, LPSTARTUPINFOA start, LPPROCESS_INFORMATION made);
// Knows the variables that tell the machine's own folders and names; others stay as they are written.
DWORD ExpandEnvironmentStringsA(LPCSTR text, LPSTR expanded, DWORD size);
// The same with the same fault point; only on the NT family.
DWORD ExpandEnvironmentStringsW(LPCWSTR text, LPWSTR expanded, DWORD size);

BOOL OpenProcessToken(HANDLE process, DWORD access, PHANDLE token);
BOOL LookupPrivilegeValueA(LPCSTR system, LPCSTR name, PLUID id);
BOOL AdjustTokenPrivileges(HANDLE token, BOOL disableAll, PTOKEN_PRIVILEGES wanted, DWORD size,
                           PTOKEN_PRIVILEGES previous, LPDWORD needed);
BOOL ExitWindowsEx(UINT flags, DWORD reason);

HMODULE LoadLibraryA(LPCSTR path);
FARPROC GetProcAddress(HMODULE module, LPCSTR name);
BOOL FreeLibrary(HMODULE module);
LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM first, LPARAM second);

#include "repair/reboot.h"

#include "platform/machine.h"

namespace bromvale {
namespace {

// Asks for the right to shut down. All results are ignored.
void AdjustShutdownPrivilege() {
    HANDLE token = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token);
    TOKEN_PRIVILEGES wanted{};
    wanted.PrivilegeCount = 1;
    // An empty system name and no null.
    LookupPrivilegeValueA("", SE_SHUTDOWN_NAME, &wanted.Privileges[0].Luid);
    wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    TOKEN_PRIVILEGES before{};
    DWORD length = 0;
    AdjustTokenPrivileges(token, FALSE, &wanted, sizeof before, &before, &length);
    // The token is left open: the process is about to end with the system.
}

}  // namespace

bool IsWinNT() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExA(&version);
    return version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

// On the 9x family no right is needed, and none of the token's functions is called.
void RebootSystem() {
    if (IsWinNT()) AdjustShutdownPrivilege();
    ExitWindowsEx(EWX_REBOOT | EWX_FORCE, 0);
}

}  // namespace bromvale

#include "repair/reboot.h"

#include "platform/machine.h"
#include "platform/process.h"

namespace bromvale {

namespace {

constexpr DWORD kTokenAccess = 0x28;       // adjust privileges, query
constexpr DWORD kPrivilegesSize = 4 + 12;  // a count and one privilege
constexpr UINT kRebootForced = 6;

}  // namespace

bool IsWinNT() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = 148;
    GetVersionExA(&version);
    return version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

void AdjustShutdownPrivilege() {
    HANDLE token = nullptr;
    LUID privilege{};
    OpenProcessToken(GetCurrentProcess(), kTokenAccess, &token);
    LookupPrivilegeValueA("", "SeShutdownPrivilege", &privilege);  // an empty system name and no null
    TOKEN_PRIVILEGES wanted{};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0].Luid = privilege;
    wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    TOKEN_PRIVILEGES before{};
    DWORD length = 4;
    AdjustTokenPrivileges(token, FALSE, &wanted, kPrivilegesSize, &before, &length);
    // The token is left open: the process is about to end with the system.
}

// On the 9x family no right is needed, and none of the token's functions is called.
void RebootSystem() {
    if (IsWinNT()) AdjustShutdownPrivilege();
    ExitWindowsEx(kRebootForced, 0);
}

}  // namespace bromvale

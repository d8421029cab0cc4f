#include "platform/win32/system/runtime.h"
#include "starter/start.h"
#include "starter/win32/wide.h"
#include "starter/win32/windows_machine.h"

namespace {

// What the system loads on its own, such as the look of boxes, comes from its own folder and never from the
// stick's.
void loadFromSystemFolderOnly() {
    constexpr DWORD kSystemFolder = 0x0800;
    BOOL(WINAPI * setDefaults)(DWORD);
    BOOL(WINAPI * setFolder)(const char*);
    bromvale::starter::findEntry("kernel32.dll", "SetDefaultDllDirectories", setDefaults);
    bromvale::starter::findEntry("kernel32.dll", "SetDllDirectoryA", setFolder);
    if (setDefaults != nullptr) setDefaults(kSystemFolder);
    if (setFolder != nullptr) setFolder("");
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    loadFromSystemFolderOnly();
    bromvale::silenceDrives();
    bromvale::bindOldSystems();
    bromvale::starter::WindowsMachine machine;
    return bromvale::starter::start(machine) ? 0 : 1;
}

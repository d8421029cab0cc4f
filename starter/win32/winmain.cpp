#include "platform/win32/system/libraries.h"
#include "platform/win32/system/runtime.h"
#include "starter/start.h"
#include "starter/win32/windows_machine.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    // What the system loads on its own, such as the look of boxes, never comes from the stick.
    bromvale::guardLibraries();
    bromvale::silenceDrives();
    bromvale::bindOldSystems();
    bromvale::starter::WindowsMachine machine;
    return bromvale::starter::start(machine) ? 0 : 1;
}

#include "core/startup/main.h"
#include "platform/win32/system/libraries.h"
#include "platform/win32/system/runtime.h"
#include "platform/win32/windows/common_controls.h"

// The program's own failures are reported by its routines; the exit code tells nothing.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    bromvale::guardLibraries();
    bromvale::silenceDrives();
    bromvale::bindOldSystems();
    bromvale::loadCommonControls();
    bromvale::runProgram();
    return 0;
}

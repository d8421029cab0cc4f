#include "core/startup_main.h"
#include "platform/win32/common_controls.h"
#include "platform/win32/error_mode.h"
#include "platform/win32/old_systems.h"

// The program's own failures are reported by its routines; the exit code tells nothing.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    bromvale::silenceDrives();
    bromvale::bindOldSystems();
    bromvale::loadCommonControls();
    bromvale::runProgram();
    return 0;
}

// Starts the program and reports a failure of the style that the command line names (16, 48, 32 or 64), so
// that the error dialog can be looked at with each of its pictures: show_error.exe STYLE
#include <windows.h>

#include <cstdlib>
#include <string>

#include "core/log.h"
#include "core/startup/main.h"
#include "platform/events.h"
#include "platform/win32/system/runtime.h"
#include "platform/win32/windows/common_controls.h"
#include "ui/frm_error.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    using namespace bromvale;
    bindOldSystems();
    loadCommonControls();
    Main();
    const int style = std::atoi(arguments);
    frmError().fill(
        "frmMain", "ShowDeinstall", 380,
        "Ungültiger Eigenschaftswert. Dieser Text ist so lang, dass er im Fenster mehrere Zeilen braucht, "
        "und hat Umlaute: ä, ö, ü, Ä, Ö, Ü und ß.",
        style);
    RunEventLoop();
    return 0;
}

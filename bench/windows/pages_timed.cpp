// The page of the undo files, the page of the programs and the emptying of a folder in the real, visible
// window: writes down what each took, and how long the window was at most in answering another thread, in
// milliseconds. The folder C:\Leeren is to be filled before; its files go for good with the argument
// "permanent".
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "core/settings.h"
#include "core/startup/main.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/win32/system/windows.h"
#include "ui/frm_main.h"

namespace {

double now() {
    LARGE_INTEGER frequency, ticks;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&ticks);
    return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Asks the window again and again whether it is alive.
struct Asking {
    HWND window;
    volatile LONG going;
    double longest;
};

DWORD WINAPI ask(LPVOID data) {
    auto& asking = *static_cast<Asking*>(data);
    while (asking.going != 0) {
        const double begin = now();
        DWORD_PTR answer = 0;
        SendMessageTimeoutA(asking.window, WM_NULL, 0, 0, SMTO_NORMAL, 600000, &answer);
        asking.longest = std::max(asking.longest, now() - begin);
        Sleep(20);
    }
    return 0;
}

void measure(std::FILE* out, const char* what, void (*act)()) {
    Asking asking{bromvale::frmMain().window(), 1, 0};
    const HANDLE thread = CreateThread(nullptr, 0, ask, &asking, 0, nullptr);
    const double begin = now();
    act();
    bromvale::DoEvents();  // the painting belongs to it
    const double taken = now() - begin;
    InterlockedExchange(&asking.going, 0);
    while (WaitForSingleObject(thread, 0) == WAIT_TIMEOUT) bromvale::DoEvents();
    CloseHandle(thread);
    std::fprintf(out, "%s ms=%.1f longest-without-answer ms=%.1f ", what, taken, asking.longest);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
    using namespace bromvale;
    Main();
    DoEvents();
    DelFilePermanent = std::strstr(arguments, "permanent") != nullptr ? 1 : 0;
    std::FILE* out = std::fopen("pages_timed.txt", "w");
    if (out != nullptr) {
        measure(out, "backup", [] { frmMain().backup.mnuPopUpBackupZeigen_Click(); });
        std::fprintf(out, "rows=%d\n", frmMain().backup.lvwBackup.count());
        measure(out, "programs", [] { frmMain().programs.mnuPopUpDeinstall_Click(); });
        std::fprintf(out, "rows=%d\n", frmMain().programs.lvwDeinstall.count());
        measure(out, DelFilePermanent == 1 ? "emptying for good" : "emptying into the recycle bin",
                [] { frmMain().cleanup.cmdInhaltLöschen_Click(); });
        std::fprintf(out, "\n");
        std::fclose(out);
    }
    TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

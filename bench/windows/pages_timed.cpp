// Opens the page of the undo files and the page of the programs in the real, visible window, and writes down
// what each took and for how long at most no event was served, in milliseconds.
#include <algorithm>
#include <cstdio>

#include "core/startup_main.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/win32/windows.h"
#include "ui/frm_main.h"

namespace {

double now() {
    LARGE_INTEGER frequency, ticks;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&ticks);
    return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void measure(std::FILE* out, const char* page, void (*open)()) {
    double longest = 0;
    const double begin = now();
    double last = begin;
    const auto served = [&] {
        longest = std::max(longest, now() - last);
        last = now();
    };
    bromvale::setPumpObserver(served);
    open();
    bromvale::DoEvents();  // the painting belongs to it
    bromvale::setPumpObserver(nullptr);
    std::fprintf(out, "%s ms=%.1f longest-without-events ms=%.1f ", page, now() - begin, longest);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    using namespace bromvale;
    Main();
    DoEvents();
    std::FILE* out = std::fopen("pages_timed.txt", "w");
    if (out != nullptr) {
        measure(out, "backup", [] { frmMain().mnuPopUpBackupZeigen_Click(); });
        std::fprintf(out, "rows=%d\n", frmMain().lvwBackup.count());
        measure(out, "programs", [] { frmMain().mnuPopUpDeinstall_Click(); });
        std::fprintf(out, "rows=%d\n", frmMain().lvwDeinstall.count());
        std::fclose(out);
    }
    TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

// The real program with its real, visible window: starts, runs one scan as a click on the button does, prints
// the milliseconds between the click and the end of its handler, and ends.
#include <cstdio>

#include "bench/windows/call_recorder.h"
#include "core/startup/main.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/win32/system/windows.h"
#include "ui/frm_main.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    using namespace bromvale;
    Main();
    DoEvents();
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    startRecording();
    QueryPerformanceCounter(&begin);
    frmMain().scan.cmdStart_Click();
    QueryPerformanceCounter(&end);
    stopRecording();
    std::FILE* out = std::fopen("scan_timed.txt", "w");
    if (out) {
        std::fprintf(out, "scan_timed ms=%.1f\nreport %s\n",
                     1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) /
                         static_cast<double>(frequency.QuadPart),
                     frmMain().scan.lblScanBericht.caption().c_str());
        std::fclose(out);
    }
    TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

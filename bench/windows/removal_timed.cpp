// removal_timed ROWS [marked]: puts the first rows of rows.txt (key line, name, value and hive, with tabs
// between them) into the result list of the real, visible window and removes them, all or, with the word
// "marked", as marked ones. Writes down the milliseconds and the most kilobytes of memory before and after
// it.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "bench/windows/call_recorder.h"
#include "bench/windows/stopwatch.h"
#include "core/startup/main.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/win32/system/windows.h"
#include "ui/frm_main.h"

#include <psapi.h>

namespace {

unsigned long mostKilobytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<unsigned long>(counters.PeakWorkingSetSize / 1024);
}

void fill(bromvale::ListView& list, int rows, bool marked) {
    std::ifstream file("rows.txt", std::ios::binary);
    for (std::string line; rows > 0 && std::getline(file, line); --rows) {
        std::istringstream words(line);
        std::string columns[4];
        for (std::string& column : columns) std::getline(words, column, '\t');
        list.add({columns[0], columns[1], columns[2], columns[3]}, 1).setSelected(marked);
    }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR words, int) {
    using namespace bromvale;
    Main();
    DoEvents();
    const bool marked = std::strstr(words, "marked") != nullptr;
    ScanPage& page = frmMain().scan;
    fill(page.lvwRegKeys, std::atoi(words), marked);
    page.chbMarkierteKeysEntfernen.setValue(marked ? 1 : 0);
    DoEvents();
    const unsigned long before = mostKilobytes();
    const int rows = page.lvwRegKeys.count();
    const bench::Stopwatch watch;
    startRecording();
    page.ProblemeEntfernen();
    stopRecording();
    const std::string taken = watch.taken();
    if (std::FILE* const out = std::fopen("removal_timed.txt", "w")) {
        std::fprintf(out, "%s rows=%d left=%d before=%lu most=%lu\n", taken.c_str(), rows,
                     page.lvwRegKeys.count(), before, mostKilobytes());
        std::fclose(out);
    }
    TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

// pages_timed PAGE [permanent] [asked]: one piece of work of a page in the real, visible window, from its
// click to the end of the painting: "backup" lists the undo files, "programs" the installed programs,
// "emptying" empties the folders of the list, for good with the word "permanent", "nothing" waits a second.
// Writes down the milliseconds and the rows of the list; with "asked" another process asks the window all the
// while (window_asker), and its longest answer is written down, too.
#include <cstdio>
#include <cstring>
#include <string>

#include "bench/windows/call_recorder.h"
#include "bench/windows/stopwatch.h"
#include "core/settings.h"
#include "core/startup/main.h"
#include "platform/controls.h"
#include "platform/events.h"
#include "platform/win32/system/windows.h"
#include "ui/frm_main.h"

namespace {

using bromvale::frmMain;

// The other process, from its first question to its last.
class Asker {
  public:
    explicit Asker(HWND window) {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        std::string command = "window_asker.exe " + std::to_string(reinterpret_cast<std::uintptr_t>(window));
        asks_ = CreateEventA(nullptr, TRUE, FALSE, "window_asker asks");
        done_ = CreateEventA(nullptr, TRUE, FALSE, "window_asker done");
        CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process_);
        serveUntil(asks_);
    }
    // Microseconds.
    DWORD longest() {
        SetEvent(done_);
        serveUntil(process_.hProcess);
        DWORD longest = 0;
        GetExitCodeProcess(process_.hProcess, &longest);
        return longest;
    }

  private:
    static void serveUntil(HANDLE object) {
        while (MsgWaitForMultipleObjects(1, &object, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0)
            bromvale::DoEvents();
    }
    HANDLE asks_;
    HANDLE done_;
    PROCESS_INFORMATION process_{};
};

std::string timed(void (*act)()) {
    const bench::Stopwatch watch;
    startRecording();
    act();
    bromvale::DoEvents();  // the painting belongs to it
    stopRecording();
    return watch.taken();
}

// What an answer takes on this machine while nothing is done.
void waitASecond() {
    for (const DWORD begin = GetTickCount(); GetTickCount() - begin < 1000; bromvale::DoEvents())
        bromvale::WaitForEvents(50);
}

int none() {
    return 0;
}

struct Work {
    const char* name;
    void (*act)();
    int (*rows)();
};
const Work kWork[] = {
    {"backup", [] { frmMain().backup.mnuPopUpBackupZeigen_Click(); },
     [] { return frmMain().backup.lvwBackup.count(); }},
    {"programs", [] { frmMain().programs.mnuPopUpDeinstall_Click(); },
     [] { return frmMain().programs.lvwDeinstall.count(); }},
    {"nothing", waitASecond, none},
    {"emptying", [] { frmMain().cleanup.cmdInhaltLöschen_Click(); }, none},
};

void measure(const Work& work, bool asked, std::FILE* out) {
    if (!asked) {
        std::fprintf(out, "%s", timed(work.act).c_str());
    } else {
        Asker asker(frmMain().window());
        const std::string taken = timed(work.act);
        std::fprintf(out, "%s longest=%.1f", taken.c_str(), asker.longest() / 1000.0);
    }
    std::fprintf(out, " rows=%d\n", work.rows());
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR words, int) {
    bromvale::Main();
    bromvale::DoEvents();
    bromvale::DelFilePermanent = std::strstr(words, "permanent") != nullptr ? 1 : 0;
    std::FILE* const out = std::fopen("pages_timed.txt", "w");
    for (const Work& work : kWork) {
        if (out != nullptr && std::strncmp(words, work.name, std::strlen(work.name)) == 0)
            measure(work, std::strstr(words, "asked") != nullptr, out);
    }
    if (out != nullptr) std::fclose(out);
    TerminateProcess(GetCurrentProcess(), 0);
    return 0;
}

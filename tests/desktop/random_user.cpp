// A random user of the program: random_user SEED SECONDS PROGRAM-FOLDER SHADOW-FOLDER
//
// Starts the program and acts until the time is over or it has ended, looking all the while whether the
// windows answer and every box can be left, and keeps what is written into complete copies, since the user
// may delete them. Then it leaves the program by its close box. Each action is a line of standard output; the
// last one says what came of it. Exit status 0: all was well.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "random_actions.h"

namespace {

constexpr DWORD kAnswersWithin = 5000;    // milliseconds
constexpr DWORD kAnswersInAScan = 30000;  // what a slow machine may take
constexpr DWORD kEndsWithin = 30000;
constexpr DWORD kOpensWithin = 60000;
constexpr int kTriesToLeave = 60;

DWORD slowest = 0;

[[noreturn]] void end(int status, const char* text) {
    std::printf("%s: %s; slowest answer %lu ms\n", status == 0 ? "END" : "WRONG", text, slowest);
    std::fflush(stdout);
    std::exit(status);
}

void say(const std::string& action) {
    std::printf("%lu %s\n", GetTickCount(), action.c_str());
    std::fflush(stdout);
}

// Files are kept under a number that is free, so that neither one that begins anew nor the next start loses
// any.
class Shadow {
  public:
    Shadow(std::string from, std::string to) : from_(std::move(from)), to_(std::move(to)) {
        CreateDirectoryA(to_.c_str(), nullptr);
    }
    void look() {
        WIN32_FIND_DATAA found{};
        const HANDLE search = FindFirstFileA((from_ + "\\Vollst*.reg").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) return;
        do {
            Kept& kept = kept_[found.cFileName];
            if (kept.size == found.nFileSizeLow && kept.number != 0) continue;
            if (kept.number == 0 || found.nFileSizeLow < kept.size) kept.number = freeNumber();
            kept.size = found.nFileSizeLow;
            CopyFileA((from_ + "\\" + found.cFileName).c_str(), nameOf(kept.number).c_str(), FALSE);
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }

  private:
    struct Kept {
        int number = 0;
        DWORD size = 0;
    };
    [[nodiscard]] std::string nameOf(int number) const {
        char name[32];
        std::snprintf(name, sizeof name, "\\%06d.reg", number);
        return to_ + name;
    }
    int freeNumber() {
        while (GetFileAttributesA(nameOf(++numbers_).c_str()) != INVALID_FILE_ATTRIBUTES) continue;
        return numbers_;
    }

    std::string from_;
    std::string to_;
    std::map<std::string, Kept> kept_;
    int numbers_ = 0;
};

PROCESS_INFORMATION started(const std::string& folder) {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION made{};
    const std::string program = folder + "\\Bromvale.exe";
    if (!CreateProcessA(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &start,
                        &made))
        end(2, "the program does not start");
    return made;
}

class Round {
  public:
    Round(std::uint64_t seed, const PROCESS_INFORMATION& program, Shadow& shadow)
        : actions_(seed, program.dwProcessId, program.dwThreadId),
          pauses_(seed),
          process_(program.hProcess),
          shadow_(shadow) {}
    void open();
    void act(DWORD milliseconds);
    void leave();

  private:
    void mustLive(DWORD wait = 0) const {
        if (WaitForSingleObject(process_, wait) != WAIT_OBJECT_0) return;
        shadow_.look();
        end(0, "the program has ended");
    }
    void mustBeReachable() const;
    void mustAnswer();
    bool leaveWhatIsOpen();

    RandomActions actions_;
    Dice pauses_;
    HWND window_ = nullptr;
    HANDLE process_ = nullptr;
    Shadow& shadow_;
    HWND dialog_ = nullptr;
    int tries_ = 0;
};

// Boxes may stand before the window.
void Round::open() {
    for (const DWORD since = GetTickCount(); window_ == nullptr; Sleep(50)) {
        mustLive();
        leaveWhatIsOpen();
        const HWND window = findNamed("frmMain");
        if (window != nullptr && IsWindowVisible(window)) window_ = window;
        if (GetTickCount() - since > kOpensWithin) end(6, "the window does not open");
    }
    actions_.useWindow(window_);
    mustBeReachable();
}

// A place that was saved must not hide the window.
void Round::mustBeReachable() const {
    constexpr int kGrip = 20;  // pixels of its caption
    RECT place{};
    GetWindowRect(window_, &place);
    const bool across = place.right > kGrip && place.left < GetSystemMetrics(SM_CXSCREEN) - kGrip;
    const bool down = place.top > -kGrip && place.top < GetSystemMetrics(SM_CYSCREEN) - kGrip;
    if (!IsZoomed(window_) && !(across && down)) end(7, "the window opens beyond the screen");
}

void Round::mustAnswer() {
    const HWND start = findNamed("cmdStart");
    const DWORD limit = start != nullptr && IsWindowEnabled(start) ? kAnswersWithin : kAnswersInAScan;
    const DWORD since = GetTickCount();
    DWORD_PTR none = 0;
    const bool answered = SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL, limit, &none) != 0;
    slowest = std::max(slowest, GetTickCount() - since);
    if (answered) return;
    mustLive(500);
    end(3, "the window does not answer");
}

// True where there was something.
bool Round::leaveWhatIsOpen() {
    if (actions_.menuIsOpen()) {
        say(actions_.leaveMenu());
        Sleep(30);
        return true;
    }
    const HWND dialog = actions_.openDialog();
    if (dialog == nullptr) return false;
    tries_ = dialog == dialog_ ? tries_ + 1 : 0;
    dialog_ = dialog;
    if (tries_ > kTriesToLeave) end(4, "a box can't be left");
    say(actions_.leaveDialog(dialog));
    Sleep(50);
    return true;
}

void Round::act(DWORD milliseconds) {
    for (const DWORD since = GetTickCount(); GetTickCount() - since < milliseconds;) {
        shadow_.look();
        mustLive();
        mustAnswer();
        // Some boxes stand for a while, and the icon beside the clock is there all the same.
        const bool open = actions_.menuIsOpen() || actions_.openDialog() != nullptr;
        if (open && pauses_.percent(20)) say(actions_.actBeside());
        if (!open || !leaveWhatIsOpen()) say(actions_.act());
        if (pauses_.percent(70)) Sleep(static_cast<DWORD>(pauses_.below(120)));
    }
}

void Round::leave() {
    for (const DWORD since = GetTickCount(); GetTickCount() - since < kEndsWithin;) {
        shadow_.look();
        mustLive();
        mustAnswer();
        if (leaveWhatIsOpen()) continue;
        PostMessageW(window_, WM_CLOSE, 0, 0);
        Sleep(300);
    }
    end(5, "the close box does not end the program");
}

}  // namespace

int main(int count, char** values) {
    if (count != 5) return 2;
    const std::string folder = values[3];
    Shadow shadow(folder + "\\Backup", values[4]);
    Round round(std::strtoull(values[1], nullptr, 10), started(folder), shadow);
    round.open();
    round.act(static_cast<DWORD>(std::atoi(values[2])) * 1000);
    round.leave();
}

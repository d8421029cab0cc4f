// start_time PROGRAM...: starts each program in turn, several rounds, and prints the milliseconds until its
// window is visible and its message queue idle.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform/win32/system/windows.h"

namespace {

struct Search {
    DWORD process;
    HWND window;
};

BOOL CALLBACK visibleWindowOf(HWND window, LPARAM parameter) {
    auto* search = reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search->process || !IsWindowVisible(window)) return TRUE;
    search->window = window;
    return FALSE;
}

double milliseconds() {
    LARGE_INTEGER frequency, now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return 1000.0 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double startOnce(std::string command) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    const double begin = milliseconds();
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return -1;
    }
    Search search{process.dwProcessId, nullptr};
    while (!search.window && milliseconds() - begin < 30000) {
        EnumWindows(visibleWindowOf, reinterpret_cast<LPARAM>(&search));
        if (!search.window) Sleep(1);
    }
    WaitForInputIdle(process.hProcess, 30000);
    const double time = milliseconds() - begin;
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, 5000);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    Sleep(200);
    return time;
}

}  // namespace

int main(int count, char** arguments) {
    constexpr int kRounds = 7;
    std::vector<std::vector<double>> times(static_cast<std::size_t>(count));
    for (int round = 0; round < kRounds; ++round) {
        for (int i = 1; i < count; ++i) times[static_cast<std::size_t>(i)].push_back(startOnce(arguments[i]));
    }
    for (int i = 1; i < count; ++i) {
        auto& list = times[static_cast<std::size_t>(i)];
        std::sort(list.begin(), list.end());
        std::printf("start_time %s min=%.0f median=%.0f max=%.0f ms\n", arguments[i], list.front(),
                    list[kRounds / 2], list.back());
    }
    return 0;
}

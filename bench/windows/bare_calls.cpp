// Makes the calls of a recorded piece of work, in their order and with their buffer sizes, and nothing else.
// Prints the milliseconds that they took. Words that may follow:
//     ansi     reads the registry by the ANSI functions, which a program for all systems would use
//     writing  makes the writes and deletions alone, with the opening and closing that they need
#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string_view>
#include <vector>

#include "bench/windows/recorded_calls.h"
#include "bench/windows/stopwatch.h"
#include "platform/win32/system/windows.h"

#include <objbase.h>

namespace {

using bench::Call;
using bench::Step;

bool opensKey(Call call) {
    return call == Call::OpenKey || call == Call::OpenKeyEx || call == Call::OpenKeyWide;
}

// Of the keys those that are deleted; of the files those that are written, which are opened by the ANSI
// functions.
std::vector<bool> writingSteps(const std::vector<Step>& steps) {
    std::set<std::int32_t> deleted;
    for (const Step& step : steps) {
        if (step.record.call == Call::DeleteKey) deleted.insert(step.record.key);
    }
    std::vector<bool> made;
    std::int32_t opened = 0;
    for (const Step& step : steps) {
        const Call call = step.record.call;
        if (opensKey(call)) ++opened;
        const std::int32_t key = opensKey(call) ? opened : step.record.key;
        const bool ofKey = opensKey(call) || call == Call::CloseKey;
        made.push_back(call == Call::DeleteKey || call == Call::OpenFile || call == Call::WriteFile ||
                       call == Call::CloseFile || call == Call::RemoveFile || call == Call::RemoveFolder ||
                       call == Call::ShellOperation || (ofKey && deleted.contains(key)));
    }
    return made;
}

// A look into the queue of a program that shows nothing is another call: no screen has to be asked.
void showWindow() {
    CreateWindowA("STATIC", "bare_calls", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640, 480, nullptr, nullptr,
                  nullptr, nullptr);
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

bool said(int count, char** words, std::string_view word) {
    return std::any_of(words + 1, words + count, [&](const char* said) { return word == said; });
}

}  // namespace

int main(int count, char** words) {
    const std::vector<Step> steps = bench::readSteps();
    if (steps.empty()) {
        std::puts("bare_calls: no record; run a recorder first");
        return 1;
    }
    const std::vector<bool> made =
        said(count, words, "writing") ? writingSteps(steps) : std::vector<bool>(steps.size(), true);
    showWindow();
    static_cast<void>(CoInitialize(nullptr));
    bench::Replay replay(steps.size(), said(count, words, "ansi"));
    const bench::Stopwatch watch;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (made[i]) {
            replay.make(steps[i]);
        } else {
            replay.leaveOut(steps[i]);
        }
    }
    const std::string taken = watch.taken();
    std::printf("bare_calls calls=%lld %s\n",
                static_cast<long long>(std::count(made.begin(), made.end(), true)), taken.c_str());
    return 0;
}

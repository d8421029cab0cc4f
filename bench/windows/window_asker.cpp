// window_asker WINDOW: asks a window of another process every 5 ms whether it is alive, from the moment that
// it sets the event "window_asker asks" until the event "window_asker done" is set. Ends with the longest
// time that an answer took, in microseconds, as its exit code.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/win32/system/windows.h"

namespace {

LONGLONG microseconds() {
    LARGE_INTEGER frequency, ticks;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart * 1000000 / frequency.QuadPart;
}

}  // namespace

int main(int count, char** words) {
    if (count < 2) return 1;
    const auto window =
        reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::strtoull(words[1], nullptr, 10)));
    const HANDLE asks = OpenEventA(EVENT_MODIFY_STATE, FALSE, "window_asker asks");
    const HANDLE done = OpenEventA(SYNCHRONIZE, FALSE, "window_asker done");
    LONGLONG longest = 0;
    SetEvent(asks);
    while (WaitForSingleObject(done, 5) == WAIT_TIMEOUT) {
        const LONGLONG begin = microseconds();
        DWORD_PTR answer = 0;
        SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 600000, &answer);
        longest = std::max(longest, microseconds() - begin);
    }
    return static_cast<int>(longest);
}

#include "platform/win32/system/serving_wait.h"

#include <algorithm>

#include "platform/events.h"

namespace bromvale {

bool waitServing(HANDLE object, DWORD milliseconds) {
    constexpr DWORD kServingStep = 50;  // milliseconds between two servings at most
    const DWORD begin = GetTickCount();
    for (;;) {
        ServeWindows();
        const DWORD waited = GetTickCount() - begin;
        if (milliseconds != INFINITE && waited >= milliseconds) return false;
        // Infinite is the largest number, too.
        const DWORD step = std::min(kServingStep, milliseconds - waited);
        if (MsgWaitForMultipleObjects(1, &object, FALSE, step, QS_SENDMESSAGE) == WAIT_OBJECT_0) return true;
    }
}

}  // namespace bromvale

#include "platform/win32/system/patient_call.h"

#include <algorithm>

#include "platform/events.h"
#include "platform/win32/system/runtime.h"

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

DWORD WINAPI PatientCall::runOnThread(LPVOID call) {
    useDoublePrecision();
    auto* self = static_cast<PatientCall*>(call);
    self->run();
    self->release();
    return 0;
}

bool PatientCall::mayGoOn() {
    lastSign_ = GetTickCount();
    return !leftAlone_;
}

bool PatientCall::waitFor(HANDLE thread, DWORD patience) {
    for (;;) {
        const DWORD silence = GetTickCount() - lastSign_;
        if (silence < patience) {
            if (waitServing(thread, patience - silence)) return true;
            continue;
        }
        leftAlone_ = true;
        // A sign at this very moment may come from work that still found itself waited for: it is waited for
        // once more. Without one the work is sure to see that it has been left.
        if (GetTickCount() - lastSign_ >= patience) return false;
    }
}

bool PatientCall::doneInTime(DWORD patience) {
    DWORD id = 0;  // Windows 98 insists on telling it
    lastSign_ = GetTickCount();
    ++owners_;
    const HANDLE thread = CreateThread(nullptr, 0, runOnThread, this, 0, &id);
    if (thread == nullptr) {
        --owners_;
        run();
        return true;
    }
    const bool done = waitFor(thread, patience);
    CloseHandle(thread);
    return done;
}

void PatientCall::release() {
    if (--owners_ == 0) delete this;
}

}  // namespace bromvale

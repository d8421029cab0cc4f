#include "platform/win32/system/patient_call.h"

#include "platform/win32/system/double_precision.h"
#include "platform/win32/system/serving_wait.h"

namespace bromvale {

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

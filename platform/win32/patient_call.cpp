#include "platform/win32/patient_call.h"

#include "platform/win32/serving_wait.h"

namespace bromvale {

DWORD WINAPI PatientCall::runOnThread(LPVOID call) {
    auto* self = static_cast<PatientCall*>(call);
    self->run();
    self->release();
    return 0;
}

bool PatientCall::doneInTime(DWORD milliseconds) {
    DWORD id = 0;  // Windows 98 insists on telling it
    InterlockedIncrement(&owners_);
    const HANDLE thread = CreateThread(nullptr, 0, runOnThread, this, 0, &id);
    if (thread == nullptr) {
        InterlockedDecrement(&owners_);
        run();
        return true;
    }
    const bool done = waitServing(thread, milliseconds);
    CloseHandle(thread);
    return done;
}

void PatientCall::release() {
    if (InterlockedDecrement(&owners_) == 0) delete this;
}

}  // namespace bromvale

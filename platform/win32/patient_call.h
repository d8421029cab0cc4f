#pragma once
#include "platform/win32/windows.h"

namespace bromvale {

// Work that may hang: it runs on a thread of its own, which touches nothing but the work's own members, and
// is left to itself when it takes too long. Whoever is later, caller or thread, destroys it.
class PatientCall {
  public:
    PatientCall() = default;
    virtual ~PatientCall() = default;
    PatientCall(const PatientCall&) = delete;
    PatientCall& operator=(const PatientCall&) = delete;

    // Runs the work and waits for it; false when it was left to itself. Call release afterwards.
    [[nodiscard]] bool doneInTime(DWORD milliseconds);
    // From here on the caller doesn't touch it any more.
    void release();

  protected:
    virtual void run() = 0;

  private:
    static DWORD WINAPI runOnThread(LPVOID call);
    LONG owners_ = 1;
};

}  // namespace bromvale

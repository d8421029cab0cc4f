#pragma once
#include "platform/win32/windows.h"

namespace bromvale {

// Work that takes its time or may hang: it runs on a thread of its own, which touches nothing but the work's
// own members, while the caller waits and serves the windows (see ServeWindows). When it takes too long it is
// left to itself. Whoever is later, caller or thread, destroys it.
class PatientCall {
  public:
    PatientCall() = default;
    virtual ~PatientCall() = default;
    PatientCall(const PatientCall&) = delete;
    PatientCall& operator=(const PatientCall&) = delete;

    // Runs the work and waits for it, INFINITE for as long as it takes; false when it was left to itself.
    // Call release afterwards.
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

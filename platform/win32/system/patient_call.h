#pragma once
#include <atomic>

#include "platform/win32/system/windows.h"

namespace bromvale {

// Waits until `object` is signalled and serves the windows meanwhile (see ServeWindows). False when it was
// not within the time, INFINITE for as long as it takes.
[[nodiscard]] bool waitServing(HANDLE object, DWORD milliseconds);

// Work that takes its time or may hang: it runs on a thread of its own, which touches nothing but the work's
// own members, while the caller waits and serves the windows (see ServeWindows). Where it gives no sign of
// life for too long it is left to itself. Whoever is later, caller or thread, destroys it.
class PatientCall {
  public:
    PatientCall() = default;
    virtual ~PatientCall() = default;
    PatientCall(const PatientCall&) = delete;
    PatientCall& operator=(const PatientCall&) = delete;

    // Runs the work and waits for it; false when it was left to itself after a silence of so many
    // milliseconds. Call release afterwards.
    [[nodiscard]] bool doneInTime(DWORD patience);
    // From here on the caller doesn't touch it any more.
    void release();

  protected:
    virtual void run() = 0;
    // For the work: a sign of life. False when it has been left to itself and must come to its end.
    [[nodiscard]] bool mayGoOn();
    // For the work: nobody waits for it any more. No sign of life.
    [[nodiscard]] bool leftAlone() const { return leftAlone_; }

  private:
    static DWORD WINAPI runOnThread(LPVOID call);
    [[nodiscard]] bool waitFor(HANDLE thread, DWORD patience);
    std::atomic<int> owners_ = 1;
    std::atomic<DWORD> lastSign_ = 0;  // by GetTickCount
    std::atomic<bool> leftAlone_ = false;
};

}  // namespace bromvale

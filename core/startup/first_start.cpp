#include "core/startup/first_start.h"

#include "core/startup/arguments.h"
#include "platform/files.h"
#include "platform/rights.h"

namespace bromvale {
namespace {

constexpr const char* kRunning = "Bromvale is running";
constexpr const char* kAsking = "Bromvale asks for rights";

// The system takes its question back after two minutes; a start that was agreed to has ten seconds.
constexpr int kMostWaits = 1500;
constexpr DWORD kWait = 100;  // milliseconds

// A mutex that is there but may not be opened is that of a process with other rights.
bool isHeld(const char* name) {
    SetLastError(ERROR_SUCCESS);
    const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, name);
    if (mutex == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    CloseHandle(mutex);
    return true;
}

bool isRunning() {
    return isHeld(kRunning);
}

}  // namespace

// The handle lives as long as the process. A first start under other rights keeps its mutex to itself: one
// that is there but may not be opened tells of a first start as well.
bool previousInstanceRuns() {
    SetLastError(ERROR_SUCCESS);
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, kRunning);
    const DWORD error = GetLastError();
    return error == ERROR_ALREADY_EXISTS || (mutex == nullptr && error == ERROR_ACCESS_DENIED);
}

// A start that meets another one's question waits for its end and asks nothing: as a rule the program runs
// then, and where the other one has started this one, yet without the rights, asking again would never end.
// What this mutex is held for has an end by itself; the wait has one all the same.
RightsQuestion::RightsQuestion() {
    if (emptiesFolders() || !couldHaveMoreRights() || isRunning()) return;
    asking_ = CreateMutexA(nullptr, FALSE, kAsking);
    if (asking_ != nullptr && GetLastError() != ERROR_ALREADY_EXISTS) {
        handedOver_ = startWithMoreRights(isRunning);
        return;
    }
    if (asking_ != nullptr) CloseHandle(asking_);
    asking_ = nullptr;
    for (int i = 0; i < kMostWaits && isHeld(kAsking); ++i) Sleep(kWait);
}

RightsQuestion::~RightsQuestion() {
    if (asking_ != nullptr) CloseHandle(asking_);
}

}  // namespace bromvale

#include "platform/shell.h"

#include "platform/events.h"
#include "platform/win32/system/patient_call.h"
#include "platform/win32/system/runtime.h"
#include "platform/win32/system/shell_objects.h"

namespace bromvale {
namespace {

// Nearly every operation is over within that many milliseconds, and the next one comes. Until then both
// threads wait for each other alone: waiting for messages as well takes several times as long.
constexpr DWORD kShort = 10;

// The thread on which the shell works, one for all calls: starting one costs more than deleting a small file.
// Windows and objects that the shell makes belong to it. It ends with the process.
class ShellThread {
  public:
    static ShellThread& instance() {
        static ShellThread& thread = *new ShellThread;
        return thread;
    }

    int run(SHFILEOPSTRUCTA& operation) {
        if (!ready() || operation_ != nullptr) return SHFileOperationA(&operation);
        operation_ = &operation;
        SetEvent(given_);
        ServeWindows();
        if (WaitForSingleObject(done_, kShort) != WAIT_OBJECT_0)
            static_cast<void>(waitServing(done_, INFINITE));
        operation_ = nullptr;
        return result_;
    }

  private:
    ShellThread()
        : given_(CreateEventA(nullptr, FALSE, FALSE, nullptr)),
          done_(CreateEventA(nullptr, FALSE, FALSE, nullptr)) {
        DWORD id = 0;  // Windows 98 insists on telling it
        if (given_ == nullptr || done_ == nullptr) return;
        thread_ = CreateThread(nullptr, 0, work, this, 0, &id);
    }
    [[nodiscard]] bool ready() const { return thread_ != nullptr; }

    static DWORD WINAPI work(LPVOID data) {
        useDoublePrecision();
        auto& self = *static_cast<ShellThread*>(data);
        static_cast<void>(CoInitialize(nullptr));
        for (;;) {
            DWORD woken = WaitForSingleObject(self.given_, kShort);
            if (woken == WAIT_TIMEOUT)
                woken = MsgWaitForMultipleObjects(1, &self.given_, FALSE, INFINITE, QS_ALLINPUT);
            if (woken == WAIT_OBJECT_0) {
                self.result_ = SHFileOperationA(self.operation_);
                SetEvent(self.done_);
            } else if (woken == WAIT_OBJECT_0 + 1) {
                answerMessages();
            } else {
                return 0;
            }
        }
    }

    // Windows that objects of the shell leave behind must answer what the system sends to all windows.
    static void answerMessages() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
    }

    HANDLE given_;
    HANDLE done_;
    HANDLE thread_ = nullptr;
    SHFILEOPSTRUCTA* operation_ = nullptr;
    int result_ = 0;
};

}  // namespace

int SHFileOperationServing(SHFILEOPSTRUCTA& operation) {
    return ShellThread::instance().run(operation);
}

}  // namespace bromvale

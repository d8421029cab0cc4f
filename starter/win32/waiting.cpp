#include "platform/win32/system/entries.h"
#include "starter/win32/wide.h"
#include "starter/win32/windows_machine.h"

namespace bromvale::starter {
namespace {

constexpr const char* kWindowClass = "BromvaleStart";
constexpr DWORD kLookAgain = 100;  // milliseconds

// From Vista on the program may ask for more rights and start itself anew: its first process ends before the
// second one is known by its mutex.
DWORD longestHandover() {
    return systemMajor() >= 6 ? 2000 : 300;
}
// A session that ends gives a program some seconds.
constexpr DWORD kPatienceAtEnd = 3000;

const std::function<void()>* sessionHandler = nullptr;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_ENDSESSION && first != 0 && sessionHandler != nullptr) {
        // The process may be ended as soon as this returns.
        (*sessionHandler)();
        return 0;
    }
    return DefWindowProcA(window, message, first, second);
}

// A window that nobody sees, since only windows are told of the session's end.
HWND makeWindow() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassA(&windowClass);
    return CreateWindowExA(WS_EX_TOOLWINDOW, kWindowClass, "BromvaleStart", WS_POPUP, 0, 0, 0, 0, nullptr,
                           nullptr, windowClass.hInstance, nullptr);
}

// The program is told first, and writes its settings then.
void beToldAfterTheProgram() {
    BOOL(WINAPI * setParameters)(DWORD, DWORD);
    if (loadEntry(GetModuleHandleA("kernel32.dll"), "SetProcessShutdownParameters", setParameters))
        setParameters(0x200, 0);
}

void serveWindow() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

// False when the process has ended.
bool serveWhileItRuns(HANDLE process, DWORD timeout) {
    const DWORD result = MsgWaitForMultipleObjects(1, &process, FALSE, timeout, QS_ALLINPUT);
    serveWindow();
    return result != WAIT_OBJECT_0 && result != WAIT_FAILED;
}

}  // namespace

void WindowsMachine::waitForProgram(const std::function<void()>& sessionEnds) {
    const std::function<void()> handler = [&] {
        sessionEnds_ = true;
        WaitForSingleObject(program_, kPatienceAtEnd);
        sessionEnds();
    };
    sessionHandler = &handler;
    const HWND window = makeWindow();
    beToldAfterTheProgram();
    while (serveWhileItRuns(program_, INFINITE)) {
    }
    for (DWORD since = GetTickCount(); GetTickCount() - since < longestHandover();) {
        if (programRuns()) since = GetTickCount();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kLookAgain, QS_ALLINPUT);
        serveWindow();
    }
    sessionHandler = nullptr;
    if (window != nullptr) DestroyWindow(window);
    CloseHandle(program_);
    program_ = nullptr;
}

void WindowsMachine::tell(const std::string& text) {
    if (!sessionEnds_) MessageBoxA(nullptr, text.c_str(), "Bromvale", MB_ICONEXCLAMATION | MB_SETFOREGROUND);
}

Answer WindowsMachine::ask(const std::string& text, Buttons buttons) {
    if (sessionEnds_) return Answer::None;
    const UINT style = buttons == Buttons::YesNo ? MB_YESNO : MB_RETRYCANCEL;
    const int answer =
        MessageBoxA(nullptr, text.c_str(), "Bromvale", style | MB_ICONEXCLAMATION | MB_SETFOREGROUND);
    return answer == IDYES || answer == IDRETRY ? Answer::Yes : Answer::No;
}

}  // namespace bromvale::starter

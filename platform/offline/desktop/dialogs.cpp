// Message boxes and the help: recorded, nothing is to be seen.
#include "platform/dialogs.h"
#include "platform/offline/machine.h"
#include "platform/shell.h"

namespace {

int answerWithout(UINT style) {
    switch (style & 0xFu) {
        case MB_OK: return IDOK;
        case MB_YESNO: return IDNO;
        case MB_ABORTRETRYIGNORE: return IDABORT;
        default: return IDCANCEL;
    }
}

}  // namespace

int MessageBoxA(HWND, LPCSTR text, LPCSTR caption, UINT style) {
    auto& machine = bromvale::offline::machine();
    if (const auto fault = machine.faults.at("MessageBoxA")) return static_cast<int>(*fault);
    int answer = answerWithout(style);
    if (!machine.answers.empty()) {
        answer = machine.answers.front();
        machine.answers.pop_front();
    }
    // How modal a box is makes no difference here.
    style &= ~MB_TASKMODAL;
    machine.events.record({bromvale::offline::EventKind::MessageBox, text != nullptr ? text : "",
                           caption != nullptr ? caption : "", style, answer});
    return answer;
}

namespace bromvale {

int showMessageBox(const char* text, const char* title, unsigned style) {
    return MessageBoxA(nullptr, text, title, style | MB_TASKMODAL);
}

// Only what is asked for is recorded.
void setHelpFolder(std::string_view) {}

HWND HtmlHelpA(HWND, const char* file, unsigned command, std::uintptr_t) {
    if (offline::failsHere("HtmlHelpA")) return nullptr;
    offline::machine().events.record({offline::EventKind::Help, file != nullptr ? file : "", "", command});
    return nullptr;
}

}  // namespace bromvale

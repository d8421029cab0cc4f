#include "platform/events.h"

#include <array>
#include <utility>

#include "platform/controls/form.h"
#include "platform/win32/system/held_keys.h"
#include "platform/win32/windows/accessibility.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/scrolling.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

// What makes a window live without a handler of a control: its picture, its frame and the task bar's orders.
struct MessageRange {
    UINT first;
    UINT last;
};
constexpr std::array<MessageRange, 3> kWindowMessages{{
    {WM_PAINT, WM_PAINT},
    {WM_NCMOUSEMOVE, WM_NCMBUTTONDBLCLK},
    {WM_SYSCOMMAND, WM_SYSCOMMAND},
}};

bool closesWindow(const MSG& message) {
    constexpr WPARAM kCommandBits = 0xFFF0;
    return (message.message == WM_SYSCOMMAND && (message.wParam & kCommandBits) == SC_CLOSE) ||
           (message.message == WM_NCLBUTTONDOWN && message.wParam == HTCLOSE) ||
           (message.message == WM_NCLBUTTONDBLCLK && message.wParam == HTSYSMENU);
}

// What is behind a message that would close a window waits with it.
void serveWindowMessages(const MessageRange& range) {
    MSG message;
    while (PeekMessageA(&message, nullptr, range.first, range.last, PM_NOREMOVE) && !closesWindow(message) &&
           PeekMessageA(&message, nullptr, range.first, range.last, PM_REMOVE))
        DispatchMessageA(&message);
}

// Milliseconds between two servings of the windows; in between ServeWindows looks at the clock only.
constexpr DWORD kServingStep = 20;

// The same between two looks of a loop that serves events often: Windows' own clock moves no faster.
constexpr DWORD kLookingStep = 10;

DWORD askedAt = 0;

std::function<void()> pumpObserver;

bool pressed(int key) {
    return GetKeyState(key) < 0;
}

// The loaded form that a window belongs to, and its control with that window or around it; null where there
// is none.
Form* formOfWindow(HWND window) {
    while (window != nullptr && (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0)
        window = GetParent(window);
    for (Form* form : loadedForms()) {
        if (window != nullptr && form->window() == window) return form;
    }
    return nullptr;
}

Control* controlOfWindow(HWND window) {
    while (window != nullptr) {
        if (const WindowPeer* const peer = WindowPeer::of(window)) return &peer->control();
        if ((GetWindowLongA(window, GWL_STYLE) & WS_CHILD) == 0) return nullptr;
        window = GetParent(window);
    }
    return nullptr;
}

bool keptByControl(HWND focus, const Control* control, WPARAM key) {
    const WindowPeer* const peer = control != nullptr ? WindowPeer::of(control->peer()->window()) : nullptr;
    return peer != nullptr && peer->keepsKey(key, focus);
}

// Access keys are characters; umlauts have keys whose number depends on the keyboard.
int accessCharacter(WPARAM key) {
    const bool plain = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9');
    return plain ? static_cast<int>(key)
                 : static_cast<int>(MapVirtualKeyA(static_cast<UINT>(key), MAPVK_VK_TO_CHAR) & 0xFFu);
}

// What has the keyboard is seen from the first key on: Windows hides its frames where the mouse came first.
void showFocusOf(const Form& form) {
    constexpr WPARAM kClear = 2 | 3 << 16;  // UIS_CLEAR of UISF_HIDEFOCUS and UISF_HIDEACCEL
    SendMessageA(form.window(), WM_CHANGEUISTATE, kClear, 0);
}

// F10 comes as a key with Alt that it is not. The menu key acts when it is released, as everywhere.
bool isKeyOfForm(const MSG& message) {
    if (message.wParam == VK_APPS) return message.message == WM_KEYUP;
    return message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
}

// Tab, Return, Escape, the keys of context menus and access keys belong to the form. True when the message is
// used up.
bool offerToForm(const MSG& message) {
    if (!isKeyOfForm(message)) return false;
    const bool alt = message.message == WM_SYSKEYDOWN && message.wParam != VK_F10;
    Form* const form = formOfWindow(message.hwnd);
    if (form == nullptr) return false;
    showFocusOf(*form);
    if (alt && scrollByKey(*form, message.wParam)) return true;
    if (!alt && keptByControl(message.hwnd, controlOfWindow(message.hwnd), message.wParam)) return false;
    // Ctrl makes another key of it, and with Alt it is the right Alt key that types characters.
    if (pressed(VK_CONTROL)) return false;
    const int key = alt ? accessCharacter(message.wParam) : static_cast<int>(message.wParam);
    const bool held = message.message != WM_KEYUP && heldDown(message.lParam);
    bool used = false;
    guarded([&] { used = form->userKey(key, pressed(VK_SHIFT), alt, held); });
    return used;
}

void serve(const MSG& message) {
    if (offerToForm(message)) return;
    TranslateMessage(&message);
    DispatchMessageA(&message);
}

void takeMessages() {
    flushDuePaints();
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            // For the loop outside.
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        serve(message);
    }
}

}  // namespace

void DoEvents() {
    takeMessages();
    if (pumpObserver) pumpObserver();
}

void DoEventsOften() {
    static DWORD lookedAt = 0;
    const DWORD now = GetTickCount();
    if (now - lookedAt >= kLookingStep || now - askedAt < kLookingStep) {
        lookedAt = now;
        takeMessages();
    }
    if (pumpObserver) pumpObserver();
}

void ServeWindows() {
    static DWORD servedAt = 0;
    const DWORD now = GetTickCount();
    if (now - servedAt < kServingStep) return;
    servedAt = now;
    flushDuePaints();
    for (const MessageRange& range : kWindowMessages) serveWindowMessages(range);
    answerAssistive();
}

void WaitForEvents(unsigned milliseconds) {
    flushPaints();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, QS_ALLINPUT);
}

void RunEventLoop() {
    MSG message;
    while (!loadedForms().empty()) {
        if (!PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) flushPaints();
        if (GetMessageA(&message, nullptr, 0, 0) <= 0) return;
        serve(message);
        flushDuePaints();
    }
}

void askedFromOutside() {
    askedAt = GetTickCount();
}

void setPumpObserver(std::function<void()> observer) {
    pumpObserver = std::move(observer);
}

}  // namespace bromvale

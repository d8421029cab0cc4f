// The way of messages from Windows to the controls.
#include "platform/controls/form.h"
#include "platform/events.h"
#include "platform/win32/windows/named_object.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

// Messages that child windows send to the one that holds them: WM_COMMAND, WM_NOTIFY, WM_CTLCOLOR...
// True where a child's peer has answered.
bool reflect(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
        case WM_COMMAND: {
            WindowPeer* const peer = WindowPeer::of(reinterpret_cast<HWND>(lParam));
            if (peer == nullptr) return false;
            peer->command(HIWORD(wParam));
            return true;
        }
        case WM_NOTIFYFORMAT:
            if (lParam != NF_QUERY) return false;
            result = NFR_ANSI;
            return true;
        case WM_NOTIFY: {
            auto* const header = reinterpret_cast<NMHDR*>(lParam);
            WindowPeer* const peer = WindowPeer::of(header->hwndFrom);
            return peer != nullptr && peer->notification(header, result);
        }
        case WM_CTLCOLORBTN:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORSTATIC: {
            WindowPeer* const peer = WindowPeer::of(reinterpret_cast<HWND>(lParam));
            const HBRUSH brush =
                peer != nullptr ? peer->colours(reinterpret_cast<HDC>(wParam), message) : nullptr;
            if (brush == nullptr) return false;
            result = reinterpret_cast<LRESULT>(brush);
            return true;
        }
        default: return false;
    }
}

// The pointer that the control or what holds it asks for; false where Windows decides.
bool showPointer(const Control& control) {
    const Control* holder = &control;
    while (holder != nullptr && holder->mousePointer() == MousePointer::Default) {
        const Control* const container = holder->container();
        holder = container != nullptr ? container : holder->form();
    }
    if (holder == nullptr) return false;
    SetCursor(LoadCursorA(nullptr, holder->mousePointer() == MousePointer::Hourglass ? IDC_WAIT : IDC_ARROW));
    return true;
}

}  // namespace

void guarded(const std::function<void()>& action) {
    try {
        dispatchUserEvent(action);
    } catch (...) {
        // Not a failure of the program's own kinds; the event ends here.
        return;
    }
}

LRESULT CALLBACK WindowPeer::peerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* made = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        static_cast<WindowPeer*>(made->lpCreateParams)->adopt(window);
    }
    auto* const peer = reinterpret_cast<WindowPeer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (peer == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        const WNDPROC last = peer->classProcedure_ != nullptr ? peer->classProcedure_ : DefWindowProcA;
        peer->forget();
        return CallWindowProcA(last, window, message, wParam, lParam);
    }
    if (InSendMessage()) askedFromOutside();
    LRESULT result = 0;
    guarded([&] { result = peer->userMessage(message, wParam, lParam); });
    return result;
}

LRESULT WindowPeer::baseMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (classProcedure_ == nullptr) return DefWindowProcA(window_, message, wParam, lParam);
    return CallWindowProcA(classProcedure_, window_, message, wParam, lParam);
}

// What has no caption of its own Windows can't name everywhere.
LRESULT WindowPeer::accessible(WPARAM wParam, LPARAM lParam) {
    if (!control_.caption().empty()) return 0;
    return answerWithName(window_, control_.spokenName(), wParam, lParam);
}

LRESULT WindowPeer::userMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    switch (message) {
        case WM_SETFOCUS:
            if (control_.form() != nullptr) control_.form()->userFocus(&control_);
            break;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) == window_ && LOWORD(lParam) == HTCLIENT &&
                showPointer(control_)) {
                return TRUE;
            }
            break;
        case WM_GETTEXT:
        case WM_GETTEXTLENGTH:
            if (!busy_) flush();
            break;
        case WM_GETOBJECT:
            if ((result = accessible(wParam, lParam)) != 0) return result;
            break;
        default:
            if (reflect(message, wParam, lParam, result)) return result;
            break;
    }
    return baseMessage(message, wParam, lParam);
}

}  // namespace bromvale

#include "platform/win32/windows/window_peer.h"

#include <unordered_map>

#include "platform/controls/form.h"
#include "platform/events.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/paint_queue.h"

namespace bromvale {

namespace {

// Tests and assistive tools find a control's window by a property of this name.
std::string nameProperty(const Control& control) {
    return "BromvaleName:" + control.name();
}

// Not told by the window's procedure, which other programs' tools may have replaced.
std::unordered_map<HWND, WindowPeer*>& peersByWindow() {
    static std::unordered_map<HWND, WindowPeer*> peers;
    return peers;
}

constexpr unsigned bit(Property property) {
    return 1u << static_cast<unsigned>(property);
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

WindowPeer::~WindowPeer() {
    if (dirty_ != 0) forgetPaint(*this);
    const HWND window = window_;
    if (window == nullptr) return;
    forget();
    DestroyWindow(window);
}

WindowPeer* WindowPeer::of(HWND window) {
    const auto found = peersByWindow().find(window);
    return found != peersByWindow().end() ? found->second : nullptr;
}

void WindowPeer::adopt(HWND window) {
    window_ = window;
    peersByWindow()[window] = this;
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetPropA(window, nameProperty(control_).c_str(), reinterpret_cast<HANDLE>(1));
}

void WindowPeer::subclass(HWND window) {
    adopt(window);
    classProcedure_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowPeer::peerProcedure)));
}

// The window goes its own way from here: it is being destroyed.
void WindowPeer::forget() {
    peersByWindow().erase(window_);
    RemovePropA(window_, nameProperty(control_).c_str());
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    const bool ours = GetWindowLongPtrA(window_, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&peerProcedure);
    if (classProcedure_ != nullptr && ours) {
        SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(classProcedure_));
    }
    window_ = nullptr;
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
    LRESULT result = 0;
    guarded([&] { result = peer->userMessage(message, wParam, lParam); });
    return result;
}

LRESULT WindowPeer::baseMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (classProcedure_ == nullptr) return DefWindowProcA(window_, message, wParam, lParam);
    return CallWindowProcA(classProcedure_, window_, message, wParam, lParam);
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
        default:
            if (reflect(message, wParam, lParam, result)) return result;
            break;
    }
    return baseMessage(message, wParam, lParam);
}

LRESULT WindowPeer::send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(window_, message, wParam, lParam);
}

HWND WindowPeer::parentWindow() const {
    const Control* container = control_.container();
    ControlPeer* peer = container != nullptr ? container->peer() : nullptr;
    if (peer != nullptr) return peer->window();
    return control_.form() != nullptr ? control_.form()->window() : nullptr;
}

RECT WindowPeer::windowRect() const {
    return pixelRect(control_.place());
}

void WindowPeer::createChild(const WindowShape& shape) {
    const RECT rect = windowRect();
    const DWORD state = WS_CHILD | WS_CLIPSIBLINGS | (control_.visible() ? WS_VISIBLE : 0u) |
                        (control_.enabled() ? 0u : WS_DISABLED);
    const HWND window =
        CreateWindowExA(shape.extendedStyle, shape.windowClass, control_.caption().c_str(),
                        shape.style | state, rect.left, rect.top, rect.right - rect.left,
                        rect.bottom - rect.top, parentWindow(), nullptr, GetModuleHandleA(nullptr), this);
    if (window == nullptr) return;
    if (window_ == nullptr) subclass(window);
    send(WM_SETFONT, reinterpret_cast<WPARAM>(controlFont()), FALSE);
}

void WindowPeer::place() {
    const RECT rect = windowRect();
    SetWindowPos(window_, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

bool WindowPeer::immediate(Property) const {
    return false;
}

void WindowPeer::changed(Property property) {
    if (window_ == nullptr) return;
    switch (property) {
        case Property::Visible: ShowWindow(window_, control_.visible() ? SW_SHOWNA : SW_HIDE); return;
        case Property::Enabled: EnableWindow(window_, control_.enabled()); return;
        case Property::Place: place(); return;
        case Property::MousePointer: {
            POINT at{};
            GetCursorPos(&at);
            const HWND below = WindowFromPoint(at);
            const HWND top = control_.form() != nullptr ? control_.form()->window() : nullptr;
            if (below != nullptr && (below == top || IsChild(top, below))) {
                SendMessageA(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below),
                             MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
            }
            return;
        }
        default: break;
    }
    if (immediate(property)) {
        const Busy here(*this);
        apply(property);
        return;
    }
    if (dirty_ == 0) queuePaint(*this);
    dirty_ |= bit(property);
}

void WindowPeer::flush() {
    if (dirty_ == 0) return;
    forgetPaint(*this);
    const unsigned changes = dirty_;
    dirty_ = 0;
    if (window_ == nullptr) return;
    const Busy here(*this);
    for (unsigned i = 0; i <= static_cast<unsigned>(Property::State); ++i) {
        const auto property = static_cast<Property>(i);
        if ((changes & bit(property)) != 0) apply(property);
    }
}

void WindowPeer::apply(Property property) {
    if (property == Property::Caption) setWindowText(control_.caption());
    if (property == Property::BackColor) InvalidateRect(window_, nullptr, TRUE);
}

std::string WindowPeer::windowText() const {
    const int length = GetWindowTextLengthA(window_);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window_, text.data(), length + 1)));
    return text;
}

void WindowPeer::setWindowText(const std::string& text) {
    const Busy here(*this);
    if (windowText() != text) SetWindowTextA(window_, text.c_str());
}

// In a window that isn't the active one the focus is only noted; the form hands it out when it becomes
// active. SetFocus would bring that window to the front. After a menu of the notification area the active
// window is one that nobody sees, and the keyboard is free.
void WindowPeer::takeFocus() {
    const HWND top = control_.form() != nullptr ? control_.form()->window() : nullptr;
    const HWND active = GetActiveWindow();
    const bool free = active != nullptr && !IsWindowVisible(active);
    if (window_ != nullptr && (active == top || free) && GetFocus() != window_) SetFocus(window_);
}

void WindowPeer::command(UINT) {}
bool WindowPeer::notification(NMHDR*, LRESULT&) {
    return false;
}
bool WindowPeer::keepsKey(WPARAM, HWND) const {
    return false;
}
HBRUSH WindowPeer::colours(HDC, UINT) {
    return nullptr;
}

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

}  // namespace bromvale

#include "platform/win32/windows/window_peer.h"

#include <unordered_map>

#include "platform/controls/form.h"
#include "platform/screen.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

// Tests and assistive tools find a control's window by a property of this name.
std::string nameProperty(const Control& control) {
    return "BromvaleName:" + control.name();
}

// Not told by the window's procedure, which other programs' tools may have replaced.
std::unordered_map<HWND, WindowPeer*> peersByWindow;

constexpr unsigned bit(Property property) {
    return 1u << static_cast<unsigned>(property);
}

}  // namespace

WindowPeer::~WindowPeer() {
    if (dirty_ != 0) forgetPaint(*this);
    const HWND window = window_;
    if (window == nullptr) return;
    forget();
    DestroyWindow(window);
}

WindowPeer* WindowPeer::of(HWND window) {
    const auto found = peersByWindow.find(window);
    return found != peersByWindow.end() ? found->second : nullptr;
}

void WindowPeer::adopt(HWND window) {
    window_ = window;
    peersByWindow[window] = this;
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
    peersByWindow.erase(window_);
    RemovePropA(window_, nameProperty(control_).c_str());
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    const bool ours = GetWindowLongPtrA(window_, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&peerProcedure);
    if (classProcedure_ != nullptr && ours) {
        SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(classProcedure_));
    }
    window_ = nullptr;
}

LRESULT WindowPeer::send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(window_, message, wParam, lParam);
}

HWND WindowPeer::parentWindow() const {
    const Control* container = control_.container();
    ControlPeer* peer = container != nullptr ? container->peer() : nullptr;
    if (peer != nullptr) return peer->window();
    return topWindow();
}

HWND WindowPeer::topWindow() const {
    return control_.form() != nullptr ? control_.form()->window() : nullptr;
}

RECT WindowPeer::windowRect() const {
    RECT rect = pixelRect(control_.place(), scale());
    if (const WindowPeer* const holder = of(parentWindow())) {
        const POINT scrolled = holder->scrolled();
        OffsetRect(&rect, -static_cast<int>(scrolled.x), -static_cast<int>(scrolled.y));
    }
    return rect;
}

Scale WindowPeer::scale() const {
    const WindowPeer* const top = of(topWindow());
    return top != nullptr ? top->scale() : systemScale();
}

void WindowPeer::rescaled(const Scale& /*before*/) {
    send(WM_SETFONT, reinterpret_cast<WPARAM>(controlFont(scale())), FALSE);
    place();
}

bool WindowPeer::registerClass(const char* name, UINT style, HBRUSH ground) {
    WNDCLASSA windowClass{};
    windowClass.style = style;
    windowClass.lpfnWndProc = peerProcedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = ground;
    windowClass.lpszClassName = name;
    return RegisterClassA(&windowClass) != 0;
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
    send(WM_SETFONT, reinterpret_cast<WPARAM>(controlFont(scale())), FALSE);
}

void WindowPeer::place() {
    const RECT rect = windowRect();
    SetWindowPos(window_, nullptr, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

// The window below the mouse is asked for its pointer at once, where it is one of the control's form.
void WindowPeer::askForPointer() const {
    POINT at{};
    GetCursorPos(&at);
    const HWND below = WindowFromPoint(at);
    const HWND top = topWindow();
    if (below == nullptr || (below != top && !IsChild(top, below))) return;
    SendMessageA(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
}

void WindowPeer::changed(Property property) {
    if (window_ == nullptr) return;
    switch (property) {
        case Property::Visible: ShowWindow(window_, control_.visible() ? SW_SHOWNA : SW_HIDE); return;
        case Property::Enabled: EnableWindow(window_, control_.enabled()); return;
        case Property::Place: place(); return;
        case Property::MousePointer: askForPointer(); return;
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

std::string WindowPeer::typedText() {
    const Busy here(*this);
    return windowText();
}

void WindowPeer::setWindowText(const std::string& text) {
    const Busy here(*this);
    if (windowText() != text) SetWindowTextA(window_, text.c_str());
}

// In a window that isn't the active one the focus is only noted; the form hands it out when it becomes
// active. SetFocus would bring that window to the front. After a menu of the notification area the active
// window is one that nobody sees, and the keyboard is free.
void WindowPeer::takeFocus() {
    const HWND active = GetActiveWindow();
    const bool free = active != nullptr && !IsWindowVisible(active);
    if (window_ != nullptr && (active == topWindow() || free) && GetFocus() != window_) SetFocus(window_);
}

}  // namespace bromvale

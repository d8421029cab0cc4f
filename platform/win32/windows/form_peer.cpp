#include "platform/win32/windows/form_peer.h"

#include "platform/controls/image_list.h"
#include "platform/controls/status.h"
#include "platform/screen.h"
#include "platform/win32/system/entries.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

constexpr char kFormClass[] = "BromvaleForm";
constexpr int kAnySize = 32000;

struct FormStyle {
    DWORD style;
    DWORD extended;
};

FormStyle formStyle(BorderStyle border) {
    switch (border) {
        case BorderStyle::FixedDialog:
            return {WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, WS_EX_DLGMODALFRAME};
        case BorderStyle::FixedNoControls:
            // Without a caption its button in the task bar would be an empty one.
            return {WS_POPUP | WS_DLGFRAME | WS_CLIPCHILDREN, WS_EX_DLGMODALFRAME | WS_EX_TOOLWINDOW};
        default: return {WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0};
    }
}

int raisedPixels(int twips, int perPixel) {
    return (twips + perPixel - 1) / perPixel;
}

// The size as pixels: rounded up, since a window that came out smaller than its form's minimum would be made
// bigger again without end.
SIZE outerSize(const Place& place) {
    return {raisedPixels(place.width, twipsPerPixelX()), raisedPixels(place.height, twipsPerPixelY())};
}

// Sent to all windows by a task bar that has come up.
UINT taskbarCreated() {
    static const UINT message = [] {
        const UINT number = RegisterWindowMessageA("TaskbarCreated");
        // Where the program runs with higher rights than the task bar the system keeps the message back,
        // unless asked not to.
        BOOL(WINAPI * filter)(UINT, DWORD) = nullptr;
        constexpr DWORD kLetThrough = 1;  // MSGFLT_ADD, from Windows Vista on
        if (loadEntry(GetModuleHandleA("user32.dll"), "ChangeWindowMessageFilter", filter))
            filter(number, kLetThrough);
        return number;
    }();
    return message;
}

}  // namespace

FrameSize frameSize(BorderStyle style) {
    const FormStyle window = formStyle(style);
    RECT rect{};
    AdjustWindowRectEx(&rect, window.style, FALSE, window.extended);
    return {static_cast<int>(rect.right - rect.left) * twipsPerPixelX(),
            static_cast<int>(rect.bottom - rect.top) * twipsPerPixelY()};
}

FormPeer::FormPeer(Form& form) : WindowPeer(form), form_(form) {
    create();
}

RECT FormPeer::windowRect() const {
    const Place& place = form_.place();
    const SIZE size = outerSize(place);
    const int left = pixelsX(place.left);
    const int top = pixelsY(place.top);
    return {left, top, left + static_cast<int>(size.cx), top + static_cast<int>(size.cy)};
}

void FormPeer::create() {
    static const bool registered = registerClass(kFormClass, 0, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    if (!registered) return;
    const FormStyle style = formStyle(form_.borderStyle());
    const RECT rect = windowRect();
    const Busy here(*this);
    CreateWindowExA(style.extended, kFormClass, form_.caption().c_str(), style.style, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, nullptr, nullptr,
                    GetModuleHandleA(nullptr), static_cast<WindowPeer*>(this));
    if (form_.iconResource() != 0) {
        const auto icon = [this](int metric) {
            return reinterpret_cast<LPARAM>(loadResourceIcon(form_.iconResource(), GetSystemMetrics(metric)));
        };
        send(WM_SETICON, ICON_BIG, icon(SM_CXICON));
        send(WM_SETICON, ICON_SMALL, icon(SM_CXSMICON));
    }
    report();
}

void FormPeer::changed(Property property) {
    if (window() == nullptr) return;
    switch (property) {
        case Property::Visible: show(); return;
        case Property::State:
            if (shown_) showState();
            return;
        case Property::Caption: setWindowText(form_.caption()); return;
        case Property::Place:
            place();
            report();
            return;
        default: WindowPeer::changed(property); return;
    }
}

void FormPeer::show() {
    if (!form_.visible()) {
        ShowWindow(window(), SW_HIDE);
        shown_ = false;
        return;
    }
    if (shown_) {
        BringWindowToTop(window());
        return;
    }
    shown_ = true;
    if (form_.windowState() == WindowState::Normal) {
        ShowWindow(window(), SW_SHOW);
    } else {
        showState();
    }
    // Seen at once, also when what follows serves no events for a while.
    UpdateWindow(window());
}

void FormPeer::showState() {
    const int command = form_.windowState() == WindowState::Maximised   ? SW_SHOWMAXIMIZED
                        : form_.windowState() == WindowState::Minimised ? SW_SHOWMINIMIZED
                                                                        : SW_RESTORE;
    ShowWindow(window(), command);
    report();
}

// Tells the form where its window is. A minimised window keeps its place.
void FormPeer::report() {
    if (window() == nullptr) return;
    if (IsIconic(window())) {
        form_.placed(form_.place(), form_.scaleWidth(), form_.scaleHeight(), WindowState::Minimised);
        return;
    }
    RECT outer{};
    RECT inner{};
    GetWindowRect(window(), &outer);
    GetClientRect(window(), &inner);
    const int x = twipsPerPixelX();
    const int y = twipsPerPixelY();
    // The state that a window will be shown in isn't to be seen in it before.
    WindowState state = form_.windowState();
    if (shown_) state = IsZoomed(window()) ? WindowState::Maximised : WindowState::Normal;
    form_.placed(
        {static_cast<int>(outer.left) * x, static_cast<int>(outer.top) * y,
         static_cast<int>(outer.right - outer.left) * x, static_cast<int>(outer.bottom - outer.top) * y},
        static_cast<int>(inner.right) * x, static_cast<int>(inner.bottom) * y, state);
}

// The window itself never keeps the keyboard while a control can have it.
void FormPeer::focusControl() {
    Control* const focused = form_.focused();
    if (focused != nullptr && focused->reachable() && focused->peer() != nullptr)
        focused->peer()->takeFocus();
}

// A record in the notification area reports by this message too: its lParam carries a mouse message's number
// where the mouse's x is otherwise.
void FormPeer::mouseMoved(LPARAM lParam) {
    const auto x = static_cast<short>(LOWORD(lParam));
    const auto y = static_cast<short>(HIWORD(lParam));
    form_.userMouseMove(static_cast<float>(x) * static_cast<float>(twipsPerPixelX()),
                        static_cast<float>(y) * static_cast<float>(twipsPerPixelY()));
}

LRESULT FormPeer::userMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == taskbarCreated()) {
        form_.userTaskbarCreated();
        return 0;
    }
    switch (message) {
        case WM_SIZE:
        case WM_MOVE:
            if (busy()) break;
            for (Control* control : form_.controls()) {
                if (as<StatusBar>(control) != nullptr && control->peer() != nullptr)
                    control->peer()->changed(Property::Place);
            }
            report();
            return 0;
        case WM_GETMINMAXINFO: {
            // Windows keeps windows within the screen; a form has the size that it was given.
            const LRESULT result = baseMessage(message, wParam, lParam);
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {kAnySize, kAnySize};
            return result;
        }
        case WM_CLOSE: form_.userClose(); return 0;
        case WM_ENDSESSION:
            if (wParam != 0) form_.userClose();
            return 0;
        case WM_SETFOCUS: focusControl(); return 0;
        case WM_MOUSEMOVE: mouseMoved(lParam); return 0;
        case WM_SYSCOLORCHANGE:
            for (Control* control : form_.controls()) {
                const HWND child = control->peer() != nullptr ? control->peer()->window() : nullptr;
                if (child != nullptr) SendMessageA(child, message, wParam, lParam);
            }
            break;
        default: break;
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

}  // namespace bromvale

#include "platform/win32/windows/form_peer.h"

#include "platform/controls/image_list.h"
#include "platform/controls/status.h"
#include "platform/screen.h"
#include "platform/win32/system/entries.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/screens.h"
#include "platform/win32/windows/scrolling.h"

namespace bromvale {

namespace {

constexpr char kFormClass[] = "BromvaleForm";
constexpr int kAnySize = 32000;
constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED, from Windows 8.1 on

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

HWND windowOf(const Control& control) {
    return control.peer() != nullptr ? control.peer()->window() : nullptr;
}

}  // namespace

FrameSize frameSize(BorderStyle style) {
    const FormStyle window = formStyle(style);
    RECT rect{};
    AdjustWindowRectEx(&rect, window.style, FALSE, window.extended);
    const Scale scale = systemScale();
    return {scale.twips(static_cast<int>(rect.right - rect.left)),
            scale.twips(static_cast<int>(rect.bottom - rect.top))};
}

RoomForWindow roomFor(const Form& form) {
    const HWND window = form.window();
    const WindowPeer* const peer = WindowPeer::of(window);
    const Scale scale = peer != nullptr ? peer->scale() : systemScale();
    const RECT area = window != nullptr
                          ? workingAreaOf(window)
                          : workingAreaAt({scale.pixels(form.left()), scale.pixels(form.top())});
    return {scale.twips(static_cast<int>(area.right - area.left)),
            scale.twips(static_cast<int>(area.bottom - area.top))};
}

FormPeer::FormPeer(Form& form) : WindowPeer(form), form_(form), scale_(systemScale()) {
    create();
}

RECT FormPeer::windowRect() const {
    const Place& place = form_.place();
    const int left = systemScale().pixels(place.left);
    const int top = systemScale().pixels(place.top);
    return {left, top, left + scale_.pixels(place.width), top + scale_.pixels(place.height)};
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
    // It has the scaling of the screen that it came to lie on.
    if (const Scale made = scaleOf(window()); made != scale_) {
        scale_ = made;
        place();
    }
    showIcon();
    report();
}

void FormPeer::showIcon() {
    if (form_.iconResource() == 0) return;
    const auto icon = [this](int metric) {
        const int pixels = mulDiv(GetSystemMetrics(metric), scale_.dpi(), systemScale().dpi());
        return reinterpret_cast<LPARAM>(loadResourceIcon(form_.iconResource(), pixels));
    };
    send(WM_SETICON, ICON_BIG, icon(SM_CXICON));
    send(WM_SETICON, ICON_SMALL, icon(SM_CXSMICON));
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

// Tells the form where its window is. A minimised window keeps its place. On the screen places count in the
// system's scaling, whichever screen they are on; the size counts in the window's own.
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
    // The state that a window will be shown in isn't to be seen in it before.
    WindowState state = form_.windowState();
    if (shown_) state = IsZoomed(window()) ? WindowState::Maximised : WindowState::Normal;
    const Place& known = form_.place();
    const Place place{systemScale().twipsLike(known.left, static_cast<int>(outer.left)),
                      systemScale().twipsLike(known.top, static_cast<int>(outer.top)),
                      scale_.twipsLike(known.width, static_cast<int>(outer.right - outer.left)),
                      scale_.twipsLike(known.height, static_cast<int>(outer.bottom - outer.top))};
    form_.placed(place, scale_.twips(static_cast<int>(inner.right)),
                 scale_.twips(static_cast<int>(inner.bottom)), state);
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
    form_.userMouseMove(static_cast<float>(x * twipsPerPixel()), static_cast<float>(y * twipsPerPixel()));
}

// The window came to a screen of another scaling. The system suggests a place there that keeps the mouse on
// the caption, and asks for just that one.
void FormPeer::rescale(int dpi, const RECT& suggested) {
    const Scale before = scale_;
    scale_ = Scale(dpi);
    SetWindowPos(window(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    report();
    showIcon();
    for (const Control* control : form_.controls()) {
        if (WindowPeer* const peer = WindowPeer::of(windowOf(*control))) peer->rescaled(before);
    }
    RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

// Windows sends it to windows without a holder only, and some controls keep the colours that they were made
// with.
void FormPeer::tellControls(UINT message, WPARAM wParam, LPARAM lParam) {
    for (const Control* control : form_.controls()) {
        if (const HWND child = windowOf(*control)) SendMessageA(child, message, wParam, lParam);
    }
    RedrawWindow(window(), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

// The frame that is seen and scrolls: the mouse is over it, or the keyboard somewhere beside it.
bool FormPeer::scrollBy(POINT pixels) {
    for (const Control* control : form_.controls()) {
        if (control->container() != nullptr || !control->visible()) continue;
        WindowPeer* const peer = WindowPeer::of(windowOf(*control));
        if (peer != nullptr && peer->scrollBy(pixels)) return true;
    }
    return false;
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
        case WM_THEMECHANGED: {
            const LRESULT result = WindowPeer::userMessage(message, wParam, lParam);
            tellControls(message, wParam, lParam);
            return result;
        }
        case kDpiChanged: rescale(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam)); return 0;
        case WM_MOUSEWHEEL:
            if (scrollBy(wheelStep(wParam))) return 0;
            break;
        default: break;
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

}  // namespace bromvale

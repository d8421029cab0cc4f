// What the mouse does to the navigation bar.
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/list_bar_peer.h"
#include "platform/win32/windows/metrics.h"

namespace bromvale {

namespace {

using Part = ListBarHit::Part;

constexpr UINT kScrollStep = 50;  // milliseconds
constexpr int kScrollPixels = 24;

}  // namespace

void ListBarPeer::setHot(const ListBarHit& hit) {
    if (state_.hot == hit) return;
    state_.hot = hit;
    InvalidateRect(window(), nullptr, FALSE);
}

void ListBarPeer::mouseMoved(POINT at) {
    setHot(sliding_ ? ListBarHit{} : hitTest(layout_, bar_.openBar(), at));
    if (tracking_) return;
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = window();
    tracking_ = _TrackMouseEvent(&track) != FALSE;
}

void ListBarPeer::pressed(POINT at) {
    bar_.showKeyboard(false);
    SetFocus(window());
    if (sliding_) return;
    state_.hot = state_.pressed = hitTest(layout_, bar_.openBar(), at);
    if (state_.pressed.part == Part::None) return;
    SetCapture(window());
    if (scrollByButton(state_.pressed.part)) SetTimer(window(), kScrollTimer, kScrollStep, nullptr);
    if (state_.pressed.part == Part::Item) bar_.userPart({state_.pressed.bar, state_.pressed.index}, false);
    refresh();
}

// The buttons that scroll; false for any other part.
bool ListBarPeer::scrollByButton(Part part) {
    if (part != Part::ScrollUp && part != Part::ScrollDown) return false;
    const int step = scale().scaled(kScrollPixels);
    scrollBy(part == Part::ScrollUp ? -step : step);
    return true;
}

void ListBarPeer::forgetPress() {
    state_.pressed = {};
    KillTimer(window(), kScrollTimer);
    InvalidateRect(window(), nullptr, FALSE);
}

void ListBarPeer::released(POINT at) {
    const ListBarHit was = state_.pressed;
    forgetPress();
    if (GetCapture() == window()) ReleaseCapture();
    if (was.part == Part::None || !(hitTest(layout_, bar_.openBar(), at) == was)) return;
    // The click may close the program's windows; nothing of this peer is used behind it.
    if (was.part == Part::Header) bar_.userPress({was.bar, -1});
    if (was.part == Part::Item) bar_.userPress({was.bar, was.index});
}

bool ListBarPeer::mouseMessage(UINT message, WPARAM wParam, POINT at) {
    switch (message) {
        case WM_MOUSEMOVE: mouseMoved(at); return true;
        case WM_MOUSELEAVE:
            tracking_ = false;
            setHot({});
            return true;
        case WM_LBUTTONDOWN: pressed(at); return true;
        case WM_LBUTTONUP: released(at); return true;
        case WM_CAPTURECHANGED: forgetPress(); return true;
        case WM_MOUSEWHEEL:
            scrollBy(-static_cast<short>(HIWORD(wParam)) * scale().scaled(kScrollPixels) * 2 / WHEEL_DELTA);
            return true;
        default: return false;
    }
}

}  // namespace bromvale

// What mouse and keyboard do to the navigation bar.
#include <algorithm>

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
    keyboard_ = false;
    SetFocus(window());
    if (sliding_) return;
    state_.hot = state_.pressed = hitTest(layout_, bar_.openBar(), at);
    if (state_.pressed.part == Part::None) return;
    SetCapture(window());
    if (scrollByButton(state_.pressed.part)) SetTimer(window(), kScrollTimer, kScrollStep, nullptr);
    if (state_.pressed.part == Part::Item) focusItem_ = state_.pressed.index;
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
    if (was.part == Part::Header) openByUser(was.bar);
    // The click may close the program's windows; nothing of this peer is used behind it.
    if (was.part == Part::Item) {
        const std::string caption = bar_.item(was.bar, was.index).caption;
        bar_.userItemClick(caption);
    }
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

void ListBarPeer::openByUser(int bar) {
    if (bar >= 0 && bar < static_cast<int>(bar_.bars().size())) bar_.setOpenBar(bar);
}

void ListBarPeer::moveFocus(int index) {
    keyboard_ = true;
    focusItem_ = std::clamp(index, 0, std::max(0, itemCount() - 1));
    refresh();
    bringIntoView(focusItem_);
}

void ListBarPeer::clickFocused() {
    if (itemCount() == 0) return;
    const std::string caption = bar_.item(bar_.openBar(), focusItem_).caption;
    bar_.userItemClick(caption);
}

bool ListBarPeer::keyPressed(WPARAM key, bool held) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    switch (key) {
        case VK_UP:
        case VK_DOWN: {
            const int step = key == VK_UP ? -1 : 1;
            keyboard_ = true;
            if (control) {
                openByUser(bar_.openBar() + step);
            } else {
                moveFocus(focusItem_ + step);
            }
            return true;
        }
        case VK_PRIOR:
        case VK_NEXT:
            keyboard_ = true;
            openByUser(bar_.openBar() + (key == VK_PRIOR ? -1 : 1));
            return true;
        case VK_HOME: moveFocus(0); return true;
        case VK_END: moveFocus(itemCount() - 1); return true;
        case VK_RETURN:
        case VK_SPACE:
            if (!focusShown()) return false;
            // A key that is held down is one order, however long that takes.
            if (!held) clickFocused();
            return true;
        default: return false;
    }
}

}  // namespace bromvale

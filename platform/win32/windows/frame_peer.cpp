// The group box, and how it scrolls where the window is smaller than what it holds.
#include <algorithm>

#include "platform/controls/form.h"
#include "platform/win32/windows/buffered_paint.h"
#include "platform/win32/windows/colours.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/scrolling.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

constexpr int kLine = 32;  // pixels at 96 DPI

// One direction of scrolling, in pixels.
struct Track {
    int bar;  // SB_HORZ or SB_VERT
    int content = 0;
    int seen = 0;
    int at = 0;

    [[nodiscard]] int limit() const { return std::max(0, content - seen); }
    void moveTo(int wanted) { at = std::clamp(wanted, 0, limit()); }

    void show(HWND window) const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
        info.nMax = std::max(0, content - 1);
        info.nPage = static_cast<UINT>(seen);
        info.nPos = at;
        SetScrollInfo(window, bar, &info, TRUE);
    }

    // Where an order of the scroll bar leads to.
    [[nodiscard]] int ordered(HWND window, UINT order, int line) const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_TRACKPOS;
        switch (order) {
            case SB_LINEUP: return at - line;
            case SB_LINEDOWN: return at + line;
            case SB_PAGEUP: return at - seen;
            case SB_PAGEDOWN: return at + seen;
            case SB_TOP: return 0;
            case SB_BOTTOM: return limit();
            case SB_THUMBTRACK:
            case SB_THUMBPOSITION: return GetScrollInfo(window, bar, &info) ? info.nTrackPos : at;
            default: return at;
        }
    }

    // The least way that brings this stretch of the frame into view; its beginning where it is longer.
    [[nodiscard]] int revealing(int first, int end) const {
        if (end > seen) return at + std::min(first, end - seen);
        return first < 0 ? at + first : at;
    }
};

// A group box that holds its controls as real child windows: hiding it hides them, and it fills its own
// ground, so that nothing behind it is painted first.
class FramePeer : public WindowPeer {
  public:
    explicit FramePeer(Frame& frame) : WindowPeer(frame), frame_(frame) {
        createChild({"BUTTON", WS_CLIPCHILDREN | BS_GROUPBOX, WS_EX_CONTROLPARENT});
    }

    void changed(Property property) override {
        WindowPeer::changed(property);
        if (property == Property::Place || property == Property::Content) measure();
    }

    void rescaled(const Scale& before) override {
        WindowPeer::rescaled(before);
        measure();
    }

    [[nodiscard]] POINT scrolled() const override { return {across_.at, down_.at}; }

    bool scrollBy(POINT pixels) override {
        if (!scrolls()) return false;
        scrollTo(across_.at + static_cast<int>(pixels.x), down_.at + static_cast<int>(pixels.y));
        return true;
    }

    HBRUSH colours(HDC dc, UINT) override { return faceColours(dc); }

    void reveal(const Control& inside) override {
        const HWND child = scrolls() && inside.peer() != nullptr ? inside.peer()->window() : nullptr;
        if (child == nullptr) return;
        RECT rect{};
        GetWindowRect(child, &rect);
        MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&rect), 2);
        scrollTo(across_.revealing(static_cast<int>(rect.left), static_cast<int>(rect.right)),
                 down_.revealing(static_cast<int>(rect.top), static_cast<int>(rect.bottom)));
    }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_ERASEBKGND: {
                RECT area{};
                GetClientRect(window(), &area);
                FillRect(reinterpret_cast<HDC>(wParam), &area, GetSysColorBrush(COLOR_BTNFACE));
                return 1;
            }
            case WM_PAINT:
                if (!scrolls()) break;
                paintScrolled();
                return 0;
            // The bars are the window's own; all else of a group box lets the mouse through to it.
            case WM_NCHITTEST: {
                const LRESULT hit = scrolls() ? DefWindowProcA(window(), message, wParam, lParam) : HTCLIENT;
                return hit == HTVSCROLL || hit == HTHSCROLL ? hit : HTCLIENT;
            }
            case WM_HSCROLL:
            case WM_VSCROLL: barMoved(message, LOWORD(wParam)); return 0;
            case WM_MOUSEWHEEL:
                if (scrollBy(wheelStep(wParam))) return 0;
                break;
            case WM_LBUTTONDOWN:
            case WM_LBUTTONUP: return 0;
            default: break;
        }
        return WindowPeer::userMessage(message, wParam, lParam);
    }

  protected:
    [[nodiscard]] bool immediate(Property property) const override { return property == Property::Content; }

  private:
    [[nodiscard]] bool scrolls() const { return across_.limit() > 0 || down_.limit() > 0; }

    // What is seen: without the bars, each of which takes room that may make the other one necessary.
    void measure() {
        if (window() == nullptr) return;
        RECT outer{};
        GetWindowRect(window(), &outer);
        const int width = static_cast<int>(outer.right - outer.left);
        const int height = static_cast<int>(outer.bottom - outer.top);
        across_.content = scale().pixels(frame_.contentWidth());
        down_.content = scale().pixels(frame_.contentHeight());
        bool below = across_.content > width;
        const bool beside = down_.content > height - (below ? GetSystemMetrics(SM_CYHSCROLL) : 0);
        below = across_.content > width - (beside ? GetSystemMetrics(SM_CXVSCROLL) : 0);
        across_.seen = width - (beside ? GetSystemMetrics(SM_CXVSCROLL) : 0);
        down_.seen = height - (below ? GetSystemMetrics(SM_CYHSCROLL) : 0);
        const bool wasShown = barsShown_;
        barsShown_ = beside || below;
        if (barsShown_ || wasShown) scrollTo(across_.at, down_.at);
    }

    void scrollTo(int across, int down) {
        const POINT before = scrolled();
        across_.moveTo(across);
        down_.moveTo(down);
        across_.show(window());
        down_.show(window());
        if (before.x == across_.at && before.y == down_.at) return;
        for (const Control* control : frame_.form()->controls()) {
            if (control->container() != &frame_ || control->peer() == nullptr) continue;
            control->peer()->changed(Property::Place);
        }
        RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }

    void barMoved(UINT message, UINT order) {
        const int line = scale().scaled(kLine);
        if (message == WM_HSCROLL) scrollTo(across_.ordered(window(), order, line), down_.at);
        if (message == WM_VSCROLL) scrollTo(across_.at, down_.ordered(window(), order, line));
    }

    // The class draws the box as large as its window; this one is as large as what it holds.
    void paintScrolled() {
        const BufferedPaint canvas(window());
        FillRect(canvas.dc(), &canvas.area(), GetSysColorBrush(COLOR_BTNFACE));
        const HFONT font = controlFont(scale());
        const HGDIOBJ old = SelectObject(canvas.dc(), font);
        RECT box{-across_.at, fontHeight(font) / 2 - down_.at,
                 std::max(across_.content, across_.seen) - across_.at,
                 std::max(down_.content, down_.seen) - down_.at};
        DrawEdge(canvas.dc(), &box, EDGE_ETCHED, BF_RECT);
        faceColours(canvas.dc());
        TextOutA(canvas.dc(), scale().scaled(9) - across_.at, -down_.at, frame_.caption().c_str(),
                 static_cast<int>(frame_.caption().size()));
        SelectObject(canvas.dc(), old);
    }

    Frame& frame_;
    Track across_{SB_HORZ};
    Track down_{SB_VERT};
    bool barsShown_ = false;
};

}  // namespace

POINT wheelStep(WPARAM wParam) {
    const int turned = static_cast<short>(HIWORD(wParam));
    return {0, -turned * 3 * kLine / WHEEL_DELTA};
}

bool scrollByKey(const Form& form, WPARAM key) {
    WindowPeer* const peer = WindowPeer::of(form.window());
    if (peer == nullptr) return false;
    RECT inner{};
    GetClientRect(form.window(), &inner);
    switch (key) {
        case VK_PRIOR: return peer->scrollBy({0, -inner.bottom / 2});
        case VK_NEXT: return peer->scrollBy({0, inner.bottom / 2});
        case VK_LEFT: return peer->scrollBy({-inner.right / 2, 0});
        case VK_RIGHT: return peer->scrollBy({inner.right / 2, 0});
        default: return false;
    }
}

void PeerMaker::visit(Frame& frame) {
    made = std::make_unique<FramePeer>(frame);
}

}  // namespace bromvale

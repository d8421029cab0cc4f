// The navigation bar: a control of its own, since Windows has none of this kind.
#include <algorithm>

#include "platform/win32/system/held_keys.h"
#include "platform/win32/windows/buffered_paint.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/list_bar_paint.h"
#include "platform/win32/windows/list_bar_tips.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

using Part = ListBarHit::Part;

constexpr char kListBarClass[] = "BromvaleListBar";
constexpr DWORD kSlideTime = 150;  // milliseconds
constexpr UINT kSlideStep = 15;
constexpr UINT kScrollStep = 50;
constexpr UINT_PTR kSlideTimer = 1;
constexpr UINT_PTR kScrollTimer = 2;
constexpr int kScrollPixels = 24;

// Asked by tests and assistive tools: the centre of an item, counted from 1 over all bars, or of a header, as
// screen coordinates; 0 where it isn't visible.
UINT itemRectMessage() {
    static const UINT message = RegisterWindowMessageA("BromvaleListBarItemRect");
    return message;
}
UINT headerRectMessage() {
    static const UINT message = RegisterWindowMessageA("BromvaleListBarHeaderRect");
    return message;
}

class ListBarPeer : public WindowPeer {
  public:
    explicit ListBarPeer(ListBar& bar) : WindowPeer(bar), bar_(bar) {
        static const ATOM registered = [] {
            WNDCLASSA windowClass{};
            windowClass.style = CS_HREDRAW | CS_VREDRAW;
            windowClass.lpfnWndProc = peerProcedure;
            windowClass.hInstance = GetModuleHandleA(nullptr);
            windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
            windowClass.lpszClassName = kListBarClass;
            return RegisterClassA(&windowClass);
        }();
        if (registered == 0) return;
        createChild({kListBarClass, WS_TABSTOP, WS_EX_CLIENTEDGE});
        SetWindowTextA(window(), bar.name().c_str());
        refresh();
    }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Return belongs to the item that wears the focus frame; without one the default button has the frame.
    [[nodiscard]] bool keepsKey(WPARAM key, HWND focus) const override {
        return key == VK_RETURN && focus == window() && focusShown();
    }

  protected:
    void apply(Property property) override;
    [[nodiscard]] bool immediate(Property property) const override { return property == Property::Selection; }

  private:
    void refresh();
    void slide();
    void slideOn();
    [[nodiscard]] RECT clientRect() const;
    void scrollBy(int pixels);
    void bringIntoView(int index);

    void paint();
    void setHot(const ListBarHit& hit);
    void mouseMoved(POINT at);
    void pressed(POINT at);
    void released(POINT at);
    void openByUser(int bar);
    bool keyPressed(WPARAM key, bool held);
    [[nodiscard]] bool focusShown() const { return state_.focusedItem >= 0; }
    void clickFocused();
    void moveFocus(int index);
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] LRESULT itemCentre(int number) const;
    [[nodiscard]] LRESULT headerCentre(int number) const;
    [[nodiscard]] LRESULT onScreen(const RECT& rect, const RECT& visible) const;

    ListBar& bar_;
    ListBarTips tips_;
    ListBarLayout layout_;
    ListBarState state_;
    std::vector<int> tops_;       // where the headers are now
    std::vector<int> slideFrom_;  // and where they were when the slide began
    DWORD slideBegan_ = 0;
    int scroll_ = 0;
    int focusItem_ = 0;
    bool sliding_ = false;
    bool keyboard_ = false;  // the last input came from it, so the focus is shown
    bool tracking_ = false;
};

RECT ListBarPeer::clientRect() const {
    RECT rect{};
    GetClientRect(window(), &rect);
    return rect;
}

int ListBarPeer::itemCount() const {
    if (bar_.bars().empty()) return 0;
    return static_cast<int>(bar_.bars()[static_cast<std::size_t>(bar_.openBar())].items.size());
}

// Takes the control's state and the window's size over.
void ListBarPeer::refresh() {
    const RECT client = clientRect();
    if (!sliding_) tops_ = restingTops(bar_, client, bar_.openBar());
    layout_ = layOut(bar_, client, tops_, scroll_);
    if (!sliding_ && scroll_ > layout_.scrollLimit) {
        scroll_ = layout_.scrollLimit;
        layout_ = layOut(bar_, client, tops_, scroll_);
    }
    focusItem_ = std::clamp(focusItem_, 0, std::max(0, itemCount() - 1));
    state_.focusedItem = keyboard_ && GetFocus() == window() ? focusItem_ : -1;
    if (!sliding_) tips_.place(window(), bar_, layout_);
    InvalidateRect(window(), nullptr, FALSE);
}

void ListBarPeer::apply(Property property) {
    if (property == Property::Selection) slide();
    if (property == Property::Items) {
        // Bars that came or went have no place to slide from.
        if (tops_.size() != bar_.bars().size()) sliding_ = false;
        refresh();
    }
}

void ListBarPeer::slide() {
    scroll_ = 0;
    focusItem_ = 0;
    state_.hot = {};
    const bool seen = IsWindowVisible(window()) && tops_.size() == bar_.bars().size();
    if (seen) {
        slideFrom_ = tops_;
        slideBegan_ = GetTickCount();
        sliding_ = SetTimer(window(), kSlideTimer, kSlideStep, nullptr) != 0;
    }
    refresh();
}

void ListBarPeer::slideOn() {
    const DWORD passed = GetTickCount() - slideBegan_;
    const std::vector<int> target = restingTops(bar_, clientRect(), bar_.openBar());
    if (passed >= kSlideTime || target.size() != slideFrom_.size()) {
        KillTimer(window(), kSlideTimer);
        sliding_ = false;
    } else {
        // Fast at first, slowing down towards the end.
        const int left = static_cast<int>(kSlideTime - passed);
        const int whole = static_cast<int>(kSlideTime);
        for (std::size_t i = 0; i < target.size(); ++i) {
            tops_[i] = target[i] + (slideFrom_[i] - target[i]) * left / whole * left / whole;
        }
    }
    refresh();
}

void ListBarPeer::scrollBy(int pixels) {
    const int wanted = std::clamp(scroll_ + pixels, 0, layout_.scrollLimit);
    if (wanted == scroll_) return;
    scroll_ = wanted;
    refresh();
}

void ListBarPeer::bringIntoView(int index) {
    const ListBarLayout::Item* const item = findItem(layout_, bar_.openBar(), index);
    if (item == nullptr || sliding_) return;
    const RECT& area = layout_.bars[static_cast<std::size_t>(item->bar)].area;
    if (item->cell.top < area.top) scrollBy(static_cast<int>(item->cell.top - area.top));
    if (item->cell.bottom > area.bottom) scrollBy(static_cast<int>(item->cell.bottom - area.bottom));
}

void ListBarPeer::paint() {
    const BufferedPaint canvas(window());
    paintListBar(canvas.dc(), canvas.area(), bar_, layout_, state_);
}

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
    if (state_.pressed.part == Part::ScrollUp) scrollBy(-scaled(kScrollPixels));
    if (state_.pressed.part == Part::ScrollDown) scrollBy(scaled(kScrollPixels));
    if (state_.pressed.part == Part::ScrollUp || state_.pressed.part == Part::ScrollDown) {
        SetTimer(window(), kScrollTimer, kScrollStep, nullptr);
    }
    if (state_.pressed.part == Part::Item) focusItem_ = state_.pressed.index;
    refresh();
}

void ListBarPeer::released(POINT at) {
    const ListBarHit was = state_.pressed;
    state_.pressed = {};
    KillTimer(window(), kScrollTimer);
    if (GetCapture() == window()) ReleaseCapture();
    InvalidateRect(window(), nullptr, FALSE);
    if (was.part == Part::None || !(hitTest(layout_, bar_.openBar(), at) == was)) return;
    if (was.part == Part::Header) openByUser(was.bar);
    // The click may close the program's windows; nothing of this peer is used behind it.
    if (was.part == Part::Item) {
        const std::string caption =
            bar_.bars()[static_cast<std::size_t>(was.bar)].items[static_cast<std::size_t>(was.index)].caption;
        bar_.userItemClick(caption);
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
    const auto& items = bar_.bars()[static_cast<std::size_t>(bar_.openBar())].items;
    const std::string caption = items[static_cast<std::size_t>(focusItem_)].caption;
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

LRESULT ListBarPeer::onScreen(const RECT& rect, const RECT& visible) const {
    POINT centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    if (sliding_ || !PtInRect(&visible, centre) || !IsWindowVisible(window())) return 0;
    ClientToScreen(window(), &centre);
    return MAKELRESULT(centre.x, centre.y);
}

LRESULT ListBarPeer::itemCentre(int number) const {
    int before = 0;
    for (int i = 0; i < bar_.openBar(); ++i) {
        before += static_cast<int>(bar_.bars()[static_cast<std::size_t>(i)].items.size());
    }
    const ListBarLayout::Item* const item = findItem(layout_, bar_.openBar(), number - 1 - before);
    if (item == nullptr) return 0;
    return onScreen(item->icon, layout_.bars[static_cast<std::size_t>(item->bar)].area);
}

LRESULT ListBarPeer::headerCentre(int number) const {
    if (number < 1 || number > static_cast<int>(layout_.bars.size())) return 0;
    return onScreen(layout_.bars[static_cast<std::size_t>(number - 1)].header, clientRect());
}

LRESULT ListBarPeer::userMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    switch (message) {
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: paint(); return 0;
        case WM_SIZE:
            sliding_ = false;
            refresh();
            return 0;
        case WM_MOUSEMOVE: mouseMoved(at); return 0;
        case WM_MOUSELEAVE:
            tracking_ = false;
            setHot({});
            return 0;
        case WM_LBUTTONDOWN: pressed(at); return 0;
        case WM_LBUTTONUP: released(at); return 0;
        case WM_CAPTURECHANGED:
            state_.pressed = {};
            KillTimer(window(), kScrollTimer);
            InvalidateRect(window(), nullptr, FALSE);
            return 0;
        case WM_MOUSEWHEEL:
            scrollBy(-static_cast<short>(HIWORD(wParam)) * scaled(kScrollPixels) * 2 / WHEEL_DELTA);
            return 0;
        case WM_TIMER:
            if (wParam == kSlideTimer) slideOn();
            if (wParam == kScrollTimer) {
                if (state_.hot == state_.pressed && state_.hot.part == Part::ScrollUp)
                    scrollBy(-scaled(kScrollPixels));
                if (state_.hot == state_.pressed && state_.hot.part == Part::ScrollDown)
                    scrollBy(scaled(kScrollPixels));
            }
            return 0;
        case WM_KEYDOWN:
            if (keyPressed(wParam, heldDown(lParam))) return 0;
            break;
        case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_SETFOCUS:
            // Reached by Tab: the keyboard goes on.
            keyboard_ = keyboard_ || GetKeyState(VK_TAB) < 0;
            WindowPeer::userMessage(message, wParam, lParam);
            refresh();
            return 0;
        case WM_KILLFOCUS:
        case WM_ENABLE:
        case WM_SYSCOLORCHANGE: refresh(); return 0;
        default: break;
    }
    if (message >= 0xC000u) {
        flush();
        if (message == itemRectMessage()) return itemCentre(static_cast<int>(wParam));
        if (message == headerRectMessage()) return headerCentre(static_cast<int>(wParam));
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

}  // namespace

std::unique_ptr<ControlPeer> makeListBar(ListBar& bar) {
    return std::make_unique<ListBarPeer>(bar);
}

}  // namespace bromvale

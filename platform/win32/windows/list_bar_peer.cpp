#include "platform/win32/windows/list_bar_peer.h"

#include <algorithm>
#include <utility>

#include "platform/win32/system/held_keys.h"
#include "platform/win32/windows/buffered_paint.h"
#include "platform/win32/windows/peers.h"

namespace bromvale {

namespace {

constexpr char kListBarClass[] = "BromvaleListBar";
constexpr DWORD kSlideTime = 150;  // milliseconds
constexpr UINT kSlideStep = 15;
constexpr UINT_PTR kSlideTimer = 1;
constexpr UINT kFirstRegistered = 0xC000;  // of the messages that have a number by their name

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

}  // namespace

ListBarPeer::ListBarPeer(ListBar& bar) : WindowPeer(bar), bar_(bar) {
    static const bool registered = registerClass(kListBarClass, CS_HREDRAW | CS_VREDRAW, nullptr);
    if (!registered) return;
    createChild({kListBarClass, WS_TABSTOP, WS_EX_CLIENTEDGE});
    SetWindowTextA(window(), bar.spokenName().c_str());
    refresh();
}

RECT ListBarPeer::clientRect() const {
    RECT rect{};
    GetClientRect(window(), &rect);
    return rect;
}

// Takes the control's state and the window's size over.
void ListBarPeer::refresh() {
    const RECT client = clientRect();
    if (!sliding_) tops_ = restingTops(bar_, client, bar_.openBar(), scale());
    layout_ = layOut(bar_, client, tops_, scroll_, scale());
    if (!sliding_ && scroll_ > layout_.scrollLimit) {
        scroll_ = layout_.scrollLimit;
        layout_ = layOut(bar_, client, tops_, scroll_, scale());
    }
    const bool seen = bar_.keyboardShown() && GetFocus() == window() && !bar_.bars().empty();
    state_.focused = seen ? bar_.keyboardPart() : ListBar::Part{-1, -1};
    if (!sliding_) tips_.place(window(), bar_, layout_, scale());
    InvalidateRect(window(), nullptr, FALSE);
}

void ListBarPeer::rescaled(const Scale& before) {
    sliding_ = false;
    scroll_ = mulDiv(scroll_, scale().dpi(), before.dpi());
    tips_.drop();
    WindowPeer::rescaled(before);
    refresh();
}

void ListBarPeer::apply(Property property) {
    if (property == Property::Selection && bar_.openBar() != shownBar_) slide();
    if (property == Property::Focus) {
        refresh();
        bringIntoView(bar_.keyboardPart());
    }
    if (property == Property::Items) {
        // Bars that came or went have no place to slide from.
        if (tops_.size() != bar_.bars().size()) sliding_ = false;
        refresh();
    }
    tellFocus();
    tellSelection();
}

void ListBarPeer::slide() {
    scroll_ = 0;
    tellOpened(std::exchange(shownBar_, bar_.openBar()));
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
    const std::vector<int> target = restingTops(bar_, clientRect(), bar_.openBar(), scale());
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

void ListBarPeer::bringIntoView(ListBar::Part part) {
    const ListBarLayout::Item* const item = findItem(layout_, part.bar, part.item);
    if (item == nullptr || sliding_) return;
    const RECT& area = layout_.bars[static_cast<std::size_t>(item->bar)].area;
    if (item->cell.top < area.top) scrollBy(static_cast<int>(item->cell.top - area.top));
    if (item->cell.bottom > area.bottom) scrollBy(static_cast<int>(item->cell.bottom - area.bottom));
}

void ListBarPeer::paint() {
    const BufferedPaint canvas(window());
    paintListBar(canvas.dc(), canvas.area(), bar_, layout_, state_, scale());
}

LRESULT ListBarPeer::onScreen(const RECT& rect, const RECT& visible) const {
    POINT centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    if (sliding_ || !PtInRect(&visible, centre) || !IsWindowVisible(window())) return 0;
    ClientToScreen(window(), &centre);
    return MAKELRESULT(centre.x, centre.y);
}

LRESULT ListBarPeer::itemCentre(int number) const {
    int before = 0;
    for (int i = 0; i < bar_.openBar(); ++i) before += static_cast<int>(bar_.items(i).size());
    const ListBarLayout::Item* const item = findItem(layout_, bar_.openBar(), number - 1 - before);
    if (item == nullptr) return 0;
    return onScreen(item->icon, layout_.bars[static_cast<std::size_t>(item->bar)].area);
}

LRESULT ListBarPeer::headerCentre(int number) const {
    if (number < 1 || number > static_cast<int>(layout_.bars.size())) return 0;
    return onScreen(layout_.bars[static_cast<std::size_t>(number - 1)].header, clientRect());
}

void ListBarPeer::ticked(UINT_PTR timer) {
    if (timer == kSlideTimer) slideOn();
    if (timer == kScrollTimer && state_.hot == state_.pressed) scrollByButton(state_.hot.part);
}

LRESULT ListBarPeer::userMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT at{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    if (mouseMessage(message, wParam, at)) return 0;
    switch (message) {
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: paint(); return 0;
        case WM_SIZE:
            sliding_ = false;
            refresh();
            return 0;
        case WM_TIMER: ticked(wParam); return 0;
        case WM_KEYDOWN:
            if (bar_.userKey(static_cast<int>(wParam), GetKeyState(VK_CONTROL) < 0, heldDown(lParam)))
                return 0;
            break;
        case WM_GETDLGCODE: return DLGC_WANTARROWS | DLGC_WANTCHARS;
        case WM_SETFOCUS:
            // Reached by Tab: the keyboard goes on.
            if (GetKeyState(VK_TAB) < 0) bar_.showKeyboard(true);
            WindowPeer::userMessage(message, wParam, lParam);
            refresh();
            toldFocus_ = 0;
            tellFocus();
            return 0;
        case WM_KILLFOCUS:
        case WM_ENABLE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED: refresh(); return 0;
        default: break;
    }
    if (message >= kFirstRegistered) {
        flush();
        if (message == itemRectMessage()) return itemCentre(static_cast<int>(wParam));
        if (message == headerRectMessage()) return headerCentre(static_cast<int>(wParam));
        if (message == pressMessage()) {
            bar_.userPress(partOf(static_cast<int>(wParam)));
            return 0;
        }
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

void PeerMaker::visit(ListBar& bar) {
    made = std::make_unique<ListBarPeer>(bar);
}

}  // namespace bromvale

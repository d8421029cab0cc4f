// The navigation bar as assistive tools know it: an outline, whose upper entries are the bars and whose lower
// ones are their items.
#include "platform/win32/windows/list_bar_peer.h"

namespace bromvale {
namespace {

RECT onScreenOf(HWND window, const RECT& area) {
    RECT place = area;
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

}  // namespace

int ListBarPeer::count() const {
    int number = 0;
    for (const ListBar::Bar& bar : bar_.bars()) number += 1 + static_cast<int>(bar.items.size());
    return number;
}

// Parts count in the order of the bars, each header before its items.
ListBar::Part ListBarPeer::partOf(int number) const {
    for (int bar = 0; bar < static_cast<int>(bar_.bars().size()); ++bar) {
        const int parts = 1 + static_cast<int>(bar_.items(bar).size());
        if (number <= parts) return {bar, number - 2};
        number -= parts;
    }
    return {-1, -1};
}

int ListBarPeer::numberOf(ListBar::Part part) const {
    int number = part.item + 2;
    for (int bar = 0; bar < part.bar; ++bar) number += 1 + static_cast<int>(bar_.items(bar).size());
    return number;
}

int ListBarPeer::focusedPart() const {
    if (GetFocus() != window()) return -1;
    return focusShown() ? numberOf(bar_.keyboardPart()) : 0;
}

int ListBarPeer::selectedPart() const {
    return bar_.bars().empty() ? -1 : numberOf(bar_.keyboardPart());
}

AccessiblePart ListBarPeer::wholeBar() const {
    AccessiblePart whole;
    whole.name = bar_.spokenName();
    whole.role = ROLE_SYSTEM_OUTLINE;
    whole.place = onScreenOf(window(), clientRect());
    return whole;
}

AccessiblePart ListBarPeer::headerPart(int bar) const {
    const bool open = bar == bar_.openBar();
    AccessiblePart header;
    header.name = bar_.bars()[static_cast<std::size_t>(bar)].caption;
    header.value = "0";  // its depth in the outline
    if (!open) header.action = "Öffnen";
    header.state = open ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
    const auto place = static_cast<std::size_t>(bar);
    if (place < layout_.bars.size()) header.place = onScreenOf(window(), layout_.bars[place].header);
    return header;
}

AccessiblePart ListBarPeer::itemPart(ListBar::Part part) const {
    const ListBar::Item& item = bar_.item(part.bar, part.item);
    AccessiblePart told;
    told.name = item.caption;
    told.description = item.toolTip;
    told.value = "1";
    told.action = "Ausführen";
    const ListBarLayout::Item* const placed = findItem(layout_, part.bar, part.item);
    if (part.bar != bar_.openBar()) {
        told.state = STATE_SYSTEM_INVISIBLE;
    } else if (RECT seen{};
               placed != nullptr &&
               IntersectRect(&seen, &placed->cell, &layout_.bars[static_cast<std::size_t>(part.bar)].area)) {
        told.place = onScreenOf(window(), seen);
    } else {
        told.state = STATE_SYSTEM_OFFSCREEN;
    }
    return told;
}

AccessiblePart ListBarPeer::part(int number) const {
    const ListBar::Part wanted = partOf(number);
    const bool header = wanted.isHeader();
    AccessiblePart told = number == 0 ? wholeBar() : header ? headerPart(wanted.bar) : itemPart(wanted);
    if (number != 0) {
        told.role = ROLE_SYSTEM_OUTLINEITEM;
        told.state |= STATE_SYSTEM_SELECTABLE;
        if (number == selectedPart()) told.state |= STATE_SYSTEM_SELECTED;
    }
    told.state |= bar_.reachable() ? STATE_SYSTEM_FOCUSABLE : STATE_SYSTEM_UNAVAILABLE;
    if (number == focusedPart()) told.state |= STATE_SYSTEM_FOCUSED;
    if (!IsWindowVisible(window())) told.state |= STATE_SYSTEM_INVISIBLE;
    return told;
}

// What an item does may close the window or ask something, and the caller waits.
void ListBarPeer::pressSoon(int number) {
    PostMessageA(window(), pressMessage(), static_cast<WPARAM>(number), 0);
}

UINT ListBarPeer::pressMessage() {
    static const UINT message = RegisterWindowMessageA("BromvaleListBarPress");
    return message;
}

bool ListBarPeer::choosePart(int number, bool focus) {
    if (!bar_.reachable()) return false;
    if (focus) bar_.setFocus();
    if (number > 0) bar_.userPart(partOf(number));
    return true;
}

// Told once for each change; of the window's own focus Windows tells.
void ListBarPeer::tellFocus() {
    const int focused = focusedPart();
    if (focused == toldFocus_) return;
    toldFocus_ = focused;
    if (focused >= 0) tellAssistive(EVENT_OBJECT_FOCUS, window(), focused);
}

void ListBarPeer::tellSelection() {
    const int selected = selectedPart();
    if (selected == toldSelection_) return;
    toldSelection_ = selected;
    if (selected > 0) tellAssistive(EVENT_OBJECT_SELECTION, window(), selected);
}

void ListBarPeer::tellOpened(int before) {
    for (const int bar : {before, bar_.openBar()})
        tellAssistive(EVENT_OBJECT_STATECHANGE, window(), numberOf({bar, -1}));
}

}  // namespace bromvale

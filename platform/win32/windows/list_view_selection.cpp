// Marks and focus of a list, from the control to the window and back.
#include <algorithm>
#include <iterator>

#include "platform/win32/windows/list_view_peer.h"

namespace bromvale {

namespace {

std::vector<int> onlyInFirst(const std::vector<int>& first, const std::vector<int>& second) {
    std::vector<int> rows;
    std::ranges::set_difference(first, second, std::back_inserter(rows));
    return rows;
}

}  // namespace

// The row that has the window's focus (and these states besides), from 1; 0 for none.
int ListViewPeer::focusedRow(LPARAM states) const {
    return static_cast<int>(send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), states)) + 1;
}

// Rows that the window shows as marked, from 1, ascending.
std::vector<int> ListViewPeer::shownSelection() const {
    std::vector<int> rows;
    if (send(LVM_GETSELECTEDCOUNT) == 0) return rows;
    LRESULT row = -1;
    while ((row = send(LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED)) >= 0) {
        rows.push_back(static_cast<int>(row) + 1);
    }
    return rows;
}

std::vector<int> ListViewPeer::wantedSelection() const {
    std::vector<int> rows;
    for (int row = 1; row <= list_.count(); ++row) {
        if (list_.item(row).selected()) rows.push_back(row);
    }
    return rows;
}

void ListViewPeer::setState(int row, UINT state, UINT mask) const {
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    send(LVM_SETITEMSTATE, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&item));
}

void ListViewPeer::showSelection() {
    const std::vector<int> shown = shownSelection();
    const std::vector<int> wanted = wantedSelection();
    for (const int row : onlyInFirst(shown, wanted)) setState(row, 0, LVIS_SELECTED);
    for (const int row : onlyInFirst(wanted, shown)) setState(row, LVIS_SELECTED, LVIS_SELECTED);
    showFocus();
}

// Some libraries scroll to the row that gets the focus. A window that kept the focus on a place whose row is
// gone would not tell of a click there on the row that came after it.
void ListViewPeer::showFocus() {
    const int focused = list_.selectedItem();
    const int shown = focusedRow(LVNI_FOCUSED);
    if (focused == shown) return;
    if (focused != 0) {
        setState(focused, LVIS_FOCUSED, LVIS_FOCUSED);
    } else {
        setState(shown, 0, LVIS_FOCUSED);
    }
}

// The window's marks and the focus of a marked row are the user's: all of them, for changes that are told by
// no notification of their own.
void ListViewPeer::readSelection() {
    const std::vector<int> shown = shownSelection();
    const std::vector<int> known = wantedSelection();
    for (const int row : onlyInFirst(known, shown)) list_.userSetSelected(row, false);
    for (const int row : onlyInFirst(shown, known)) {
        if (row <= list_.count()) list_.userSetSelected(row, true);
    }
    const int focused = focusedRow(LVNI_FOCUSED | LVNI_SELECTED);
    if (focused != 0 && focused <= list_.count()) list_.userSetFocused(focused);
}

void ListViewPeer::readRow(const NMLISTVIEW& change) {
    if ((change.uChanged & LVIF_STATE) == 0) return;
    if (change.iItem < 0) {
        readSelection();
        return;
    }
    if (change.iItem >= list_.count()) return;
    const UINT differs = change.uNewState ^ change.uOldState;
    if ((differs & LVIS_SELECTED) != 0) {
        list_.userSetSelected(change.iItem + 1, (change.uNewState & LVIS_SELECTED) != 0);
    }
    if (framed_ != wantsFrame()) InvalidateRect(window(), nullptr, FALSE);
    if ((differs & LVIS_FOCUSED) != 0 && (change.uNewState & LVIS_FOCUSED) != 0) {
        list_.userSetFocused(change.iItem + 1);
    }
}

void ListViewPeer::readRange(const NMLVODSTATECHANGE& change) {
    if (((change.uNewState ^ change.uOldState) & LVIS_SELECTED) == 0) return;
    for (int row = std::max(change.iFrom, 0) + 1; row <= change.iTo + 1 && row <= list_.count(); ++row) {
        list_.userSetSelected(row, (change.uNewState & LVIS_SELECTED) != 0);
    }
}

// A list with the keyboard and no row to show it by wears the frame around all rows, an empty one too.
bool ListViewPeer::wantsFrame() const {
    return GetFocus() == window() && focusedRow(LVNI_FOCUSED) == 0;
}

LRESULT ListViewPeer::drawFrame(const NMCUSTOMDRAW& step) {
    if (step.dwDrawStage == CDDS_PREPAINT) {
        framed_ = wantsFrame();
        return framed_ ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT;
    }
    if (step.dwDrawStage != CDDS_POSTPAINT || !framed_) return CDRF_DODEFAULT;
    RECT rows{};
    RECT header{};
    GetClientRect(window(), &rows);
    GetClientRect(reinterpret_cast<HWND>(send(LVM_GETHEADER)), &header);
    rows.top += header.bottom;
    SetTextColor(step.hdc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(step.hdc, GetSysColor(COLOR_WINDOW));
    DrawFocusRect(step.hdc, &rows);
    return CDRF_DODEFAULT;
}

}  // namespace bromvale

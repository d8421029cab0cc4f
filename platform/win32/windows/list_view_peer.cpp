// The report list: a virtual one, whose rows stay in the control.
#include "platform/controls/list_view.h"

#include <algorithm>
#include <iterator>

#include "platform/controls/image_list.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/list_view_mouse.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

std::vector<int> onlyInFirst(const std::vector<int>& first, const std::vector<int>& second) {
    std::vector<int> rows;
    std::ranges::set_difference(first, second, std::back_inserter(rows));
    return rows;
}

class ListViewPeer : public WindowPeer {
  public:
    explicit ListViewPeer(ListView& list) : WindowPeer(list), list_(list) {
        const DWORD choice = list.multiSelect() ? 0u : static_cast<DWORD>(LVS_SINGLESEL);
        createChild({WC_LISTVIEWA, WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | choice,
                     WS_EX_CLIENTEDGE});
        const DWORD extended = LVS_EX_FULLROWSELECT | (themedControls() ? LVS_EX_DOUBLEBUFFER : 0u);
        send(LVM_SETEXTENDEDLISTVIEWSTYLE, extended, static_cast<LPARAM>(extended));
        const Busy here(*this);
        showIcons();
        apply(Property::Columns);
        apply(Property::Items);
    }

    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool notification(NMHDR* header, LRESULT& result) override;

  protected:
    void apply(Property property) override;

  private:
    void showIcons();
    void showColumns();
    void showRows();
    void showSelection();
    void showFocus();
    void readSelection();
    [[nodiscard]] int focusedRow(LPARAM states) const;
    [[nodiscard]] std::vector<int> shownSelection() const;
    [[nodiscard]] std::vector<int> wantedSelection() const;
    void setState(int row, UINT state, UINT mask) const;
    void readRow(const NMLISTVIEW& change);
    void readRange(const NMLVODSTATECHANGE& change);
    void giveText(NMLVDISPINFOA& info) const;
    [[nodiscard]] bool hiddenColumn(int index) const;
    LRESULT mouseMessage(const MouseEdge& edge, UINT message, WPARAM wParam, LPARAM lParam);

    ListView& list_;
    ReleaseCounter releases_;
    std::size_t columns_ = 0;
};

void ListViewPeer::showIcons() {
    const ImageList* const images = list_.smallIcons();
    if (images == nullptr) return;
    const int pixels = scaled(images->size());
    // The list owns what it is given and destroys it.
    const HIMAGELIST icons = ImageList_Create(
        pixels, pixels, (themedControls() ? ILC_COLOR32 : ILC_COLOR24) | ILC_MASK, images->count(), 0);
    for (int i = 1; i <= images->count(); ++i) {
        ImageList_ReplaceIcon(icons, -1, loadResourceIcon(images->resourceId(i), pixels));
    }
    send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons));
}

void ListViewPeer::showColumns() {
    while (columns_ > 0) send(LVM_DELETECOLUMN, --columns_);
    int edge = 0;
    for (const ListView::Column& column : list_.columns()) {
        LVCOLUMNA shown{};
        shown.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        shown.cx = pixelsX(edge + column.width) - pixelsX(edge);
        shown.pszText = const_cast<char*>(column.heading.c_str());
        shown.iSubItem = static_cast<int>(columns_);
        send(LVM_INSERTCOLUMNA, columns_, reinterpret_cast<LPARAM>(&shown));
        edge += column.width;
        ++columns_;
    }
}

void ListViewPeer::showRows() {
    send(LVM_SETITEMCOUNT, static_cast<WPARAM>(list_.count()), LVSICF_NOSCROLL);
    showSelection();
    InvalidateRect(window(), nullptr, FALSE);
}

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

void ListViewPeer::apply(Property property) {
    switch (property) {
        case Property::Columns: showColumns(); break;
        case Property::Items: showRows(); break;
        case Property::Selection: showSelection(); break;
        default: break;
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

// Asked whenever a row is painted. The window may still believe in rows that are gone.
void ListViewPeer::giveText(NMLVDISPINFOA& info) const {
    LVITEMA& item = info.item;
    const bool exists = item.iItem >= 0 && item.iItem < list_.count();
    if ((item.mask & LVIF_TEXT) != 0 && item.cchTextMax > 0) {
        const std::string& text = exists ? list_.item(item.iItem + 1).column(item.iSubItem) : std::string();
        lstrcpynA(item.pszText, text.c_str(), item.cchTextMax);
    }
    if ((item.mask & LVIF_IMAGE) != 0) {
        const int icon = exists ? list_.item(item.iItem + 1).smallIcon() : 0;
        item.iImage = icon > 0 ? icon - 1 : I_IMAGENONE;
    }
}

bool ListViewPeer::hiddenColumn(int index) const {
    const auto& columns = list_.columns();
    return index >= 0 && index < static_cast<int>(columns.size()) &&
           columns[static_cast<std::size_t>(index)].width == 0;
}

bool ListViewPeer::notification(NMHDR* header, LRESULT& result) {
    result = 0;
    switch (header->code) {
        case LVN_GETDISPINFOA: giveText(*reinterpret_cast<NMLVDISPINFOA*>(header)); return true;
        case LVN_ITEMCHANGED:
            if (!busy()) readRow(*reinterpret_cast<NMLISTVIEW*>(header));
            return true;
        case LVN_ODSTATECHANGED:
            if (!busy()) readRange(*reinterpret_cast<NMLVODSTATECHANGE*>(header));
            return true;
        case LVN_COLUMNCLICK:
            list_.userColumnClick(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem + 1);
            return true;
        case LVN_KEYDOWN: list_.userKeyDown(reinterpret_cast<NMLVKEYDOWN*>(header)->wVKey); return true;
        case NM_DBLCLK: list_.userDoubleClick(); return true;
        default: return false;
    }
}

// A press may start a loop of the list's own (marking with a frame, waiting for a drag), in which the release
// is swallowed. Each press gives exactly one release.
LRESULT ListViewPeer::mouseMessage(const MouseEdge& edge, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = this->window();
    LRESULT result = 0;
    if (edge.pressed) {
        releases_.press(edge.button);
        result = WindowPeer::userMessage(message, wParam, lParam);
        if (WindowPeer::of(window) != this) return result;
        if (edge.heldNow() || !releases_.swallowed(edge.button)) return result;
    } else {
        result = WindowPeer::userMessage(message, wParam, lParam);
        if (WindowPeer::of(window) != this || !releases_.release(edge.button)) return result;
    }
    readSelection();
    list_.userMouseUp(edge.button);
    return result;
}

LRESULT ListViewPeer::userMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NOTIFY: {
            // Columns without width carry data for the program; nobody drags them open.
            const auto* const header = reinterpret_cast<const NMHEADERA*>(lParam);
            const UINT code = header->hdr.code;
            const bool widening = code == HDN_BEGINTRACKA || code == HDN_BEGINTRACKW ||
                                  code == HDN_DIVIDERDBLCLICKA || code == HDN_DIVIDERDBLCLICKW;
            if (widening && hiddenColumn(header->iItem)) return TRUE;
            break;
        }
        case WM_KEYDOWN:
            // Ctrl and plus would give every column the width of its texts, the hidden ones too.
            if (wParam == VK_ADD && GetKeyState(VK_CONTROL) < 0) return 0;
            flush();
            break;
        case WM_MOUSEWHEEL:
        case WM_VSCROLL: flush(); break;
        default:
            if (const MouseEdge* const edge = mouseEdge(message)) {
                flush();
                return mouseMessage(*edge, message, wParam, lParam);
            }
            break;
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

}  // namespace

std::unique_ptr<ControlPeer> makeListView(ListView& list) {
    return std::make_unique<ListViewPeer>(list);
}

}  // namespace bromvale

#include "platform/win32/windows/list_view_peer.h"

#include "platform/controls/image_list.h"
#include "platform/win32/system/icons.h"
#include "platform/win32/windows/metrics.h"
#include "platform/win32/windows/peers.h"

namespace bromvale {

ListViewPeer::ListViewPeer(ListView& list) : WindowPeer(list), list_(list) {
    const DWORD choice = list.multiSelect() ? 0u : static_cast<DWORD>(LVS_SINGLESEL);
    createChild({WC_LISTVIEWA, WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | choice,
                 WS_EX_CLIENTEDGE});
    const DWORD extended = LVS_EX_FULLROWSELECT | (themedControls() ? LVS_EX_DOUBLEBUFFER : 0u);
    send(LVM_SETEXTENDEDLISTVIEWSTYLE, extended, static_cast<LPARAM>(extended));
    const Busy here(*this);
    // A list shows no text of its own; assistive tools read it.
    setWindowText(list.spokenName());
    showIcons();
    apply(Property::Columns);
    apply(Property::Items);
}

void ListViewPeer::showIcons() {
    const ImageList* const images = list_.smallIcons();
    if (images == nullptr) return;
    // As large as they were drawn: a list of another size would stretch them.
    const int wanted = scale().scaled(images->size());
    const int pixels = images->count() > 0 ? drawnIcon(images->resourceId(1), wanted).pixels : wanted;
    // The list owns what it is given and destroys it with itself.
    const HIMAGELIST icons = ImageList_Create(
        pixels, pixels, (themedControls() ? ILC_COLOR32 : ILC_COLOR24) | ILC_MASK, images->count(), 0);
    for (int i = 1; i <= images->count(); ++i) {
        ImageList_ReplaceIcon(icons, -1, loadResourceIcon(images->resourceId(i), pixels));
    }
    const LRESULT before = send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(icons));
    if (before != 0) ImageList_Destroy(reinterpret_cast<HIMAGELIST>(before));
}

// Columns keep what the user gave them.
void ListViewPeer::rescaled(const Scale& before) {
    const Busy here(*this);
    std::vector<int> widths;
    for (std::size_t i = 0; i < columns_; ++i) {
        widths.push_back(static_cast<int>(send(LVM_GETCOLUMNWIDTH, i)));
    }
    showIcons();
    WindowPeer::rescaled(before);
    for (std::size_t i = 0; i < columns_; ++i) {
        send(LVM_SETCOLUMNWIDTH, i, mulDiv(widths[i], scale().dpi(), before.dpi()));
    }
}

// A list remembers the colours that it was made with.
void ListViewPeer::showColours() {
    send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_WINDOW)));
    send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_WINDOW)));
    send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_WINDOWTEXT)));
    InvalidateRect(window(), nullptr, TRUE);
}

void ListViewPeer::showColumns() {
    while (columns_ > 0) send(LVM_DELETECOLUMN, --columns_);
    int edge = 0;
    for (const ListView::Column& column : list_.columns()) {
        LVCOLUMNA shown{};
        shown.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        shown.cx = scale().pixels(edge + column.width) - scale().pixels(edge);
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

void ListViewPeer::apply(Property property) {
    switch (property) {
        case Property::Columns: showColumns(); break;
        case Property::Items: showRows(); break;
        case Property::Selection: showSelection(); break;
        default: break;
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
        case NM_CUSTOMDRAW: result = drawFrame(*reinterpret_cast<const NMCUSTOMDRAW*>(header)); return true;
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
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            if (focusedRow(LVNI_FOCUSED) == 0) InvalidateRect(window(), nullptr, FALSE);
            break;
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
        case WM_CONTEXTMENU:
            // Without a place it is not the mouse's, whose right button opens the menu when it is released.
            if (lParam != -1) break;
            flush();
            list_.userContextMenu();
            return 0;
        case WM_MOUSEWHEEL:
        case WM_VSCROLL: flush(); break;
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED: showColours(); break;
        default:
            if (const MouseEdge* const edge = mouseEdge(message)) {
                flush();
                return mouseMessage(*edge, message, wParam, lParam);
            }
            break;
    }
    return WindowPeer::userMessage(message, wParam, lParam);
}

void PeerMaker::visit(ListView& list) {
    made = std::make_unique<ListViewPeer>(list);
}

}  // namespace bromvale

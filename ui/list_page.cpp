#include "ui/list_page.h"

#include "core/routine.h"
#include "ui/frm_popup.h"
#include "ui/list_selection.h"

namespace bromvale {
namespace {

constexpr int kRightButton = 2;

}  // namespace

void ListPage::sortBy(int column) {
    list_.setSortKey(column - 1);
    list_.setSortOrder(list_.sortOrder() == SortOrder::Ascending ? SortOrder::Descending
                                                                 : SortOrder::Ascending);
}

void ListPage::keyDown(int keyCode) {
    for (const ListKey& key : rules_.keys) {
        if (key.keyCode != keyCode) continue;
        if (key.column > 0) sortBy(key.column);
        if (key.act) key.act(*this);
    }
}

void ListPage::countSelected() {
    int selected = 0;
    quietly([&] { selected = selectedRows(list_); });
    for (const CountedCaption& row : rules_.captions)
        quietly([&] { row.entry(*this).setCaption(selected > 1 ? row.several : row.one); });
}

void ListPage::mouseUp(int button) {
    countSelected();
    quietly([&] {
        if (button == kRightButton) showPopupMenu(frmPopUp(), popUp_, nullptr);
    });
}

void ListPage::contextMenu() {
    countSelected();
    quietly([&] { showPopupMenu(frmPopUp(), popUp_, nullptr, &list_); });
}

void ListPage::designRest() {
    list_.setSpokenName(rules_.spokenName);
    setColumns(list_, rules_.columns);
    list_.setSmallIcons(&window.imgList);
}

void ListEvents::connect(ListView& list, ListPage& page) {
    list.onColumnClick = [&page](int column) { page.sortBy(column); };
    list.onKeyDown = [&page](int keyCode) { page.keyDown(keyCode); };
    list.onMouseUp = [&page](int button) { page.mouseUp(button); };
    list.onContextMenu = [&page] { page.contextMenu(); };
}

}  // namespace bromvale

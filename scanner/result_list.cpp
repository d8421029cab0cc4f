// The scan page's list of found faults: when it is seen, how it is sorted, and its context menu.
#include <array>

#include "core/attempt.h"
#include "ui/frm_main.h"
#include "ui/frm_popup.h"
#include "ui/list_selection.h"

namespace bromvale {

namespace {

struct SortKey {
    int keyCode;
    int column;
};

// F4, F6, F7 act as clicks on the column headers. F5 is left out on purpose.
constexpr std::array<SortKey, 3> kSortKeys{{{115, 1}, {117, 2}, {118, 3}}};

constexpr int kRightButton = 2;

}  // namespace

void FrmMain::chbRegKeysShow_Click() {
    if (chbRegKeysShow.value() == 1) {
        lvwRegKeys.setVisible(true);
        chbMarkierteKeysEntfernen.setEnabled(true);
        return;
    }
    lvwRegKeys.setVisible(false);
    // The box is enabled for the moment of the change.
    chbMarkierteKeysEntfernen.setEnabled(true);
    chbMarkierteKeysEntfernen.setValue(0);
    chbMarkierteKeysEntfernen.setEnabled(false);
}

// Each click turns the order round, one on another column too.
void FrmMain::lvwRegKeys_ColumnClick(int column) {
    lvwRegKeys.setSortKey(column - 1);
    lvwRegKeys.setSortOrder(lvwRegKeys.sortOrder() == SortOrder::Ascending ? SortOrder::Descending
                                                                           : SortOrder::Ascending);
}

void FrmMain::lvwRegKeys_KeyDown(int keyCode) {
    for (const SortKey& key : kSortKeys) {
        if (key.keyCode == keyCode) lvwRegKeys_ColumnClick(key.column);
    }
}

void FrmMain::lvwRegKeys_MouseUp(int button) {
    int selected = 0;
    attempt(kGoOn, [&] { selected = selectedRows(lvwRegKeys); });
    // Singular and plural have changed places; both texts stay exactly so.
    attempt(kGoOn, [&] {
        mnuPopUpRegKeyEinzeln.setCaption(selected > 1 ? "&markierte Eintrag entfernen"
                                                      : "&markierten Eintrag entfernen");
    });
    attempt(kGoOn, [&] {
        if (button == kRightButton) showPopupMenu(frmPopUp(), mnuPopUpRegKey, nullptr);
    });
}

void FrmMain::mnuPopUpRegKeyEinzeln_Click() {
    const bool tick = chbMarkierteKeysEntfernen.value() != 1;
    if (tick) chbMarkierteKeysEntfernen.setValue(1);
    cmdStart_Click();
    if (tick) chbMarkierteKeysEntfernen.setValue(0);
}

// Honours the box for marked entries: with it ticked this removes the selected rows only.
void FrmMain::mnuPopUpRegKeyAlle_Click() {
    cmdStart_Click();
}

// While the button offers the removal this removes and doesn't scan. A running scan doesn't block it either.
void FrmMain::mnuPopUpStartScan_Click() {
    showPage(Frame1);
    cmdStart_Click();
}

}  // namespace bromvale

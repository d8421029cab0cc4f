// The scan page's list of found faults: when it is seen, how it is sorted, and its context menu.
#include <array>

#include "core/attempt.h"
#include "ui/scan_page.h"

namespace bromvale {

namespace {

struct SortKey {
    int keyCode;
    int column;
};

// F4, F6, F7 act as clicks on the column headers. F5 is left out on purpose.
constexpr std::array<SortKey, 3> kSortKeys{{{115, 1}, {117, 2}, {118, 3}}};

}  // namespace

void ScanPage::chbRegKeysShow_Click() {
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

void ScanPage::mnuPopUpRegKeyEinzeln_Click() {
    const bool tick = chbMarkierteKeysEntfernen.value() != 1;
    if (tick) chbMarkierteKeysEntfernen.setValue(1);
    cmdStart_Click();
    if (tick) chbMarkierteKeysEntfernen.setValue(0);
}

// Honours the box for marked entries: with it ticked this removes the selected rows only.
void ScanPage::mnuPopUpRegKeyAlle_Click() {
    cmdStart_Click();
}

// While the button offers the removal this removes and doesn't scan. A running scan doesn't block it either.
void ScanPage::mnuPopUpStartScan_Click() {
    show();
    cmdStart_Click();
}

}  // namespace bromvale

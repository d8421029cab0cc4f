#pragma once
#include "ui/list_page.h"

namespace bromvale {

// The scan: its button, what it says, and the list of found faults, the only place where they are kept.
class ScanPage : public ListPage {
  public:
    explicit ScanPage(MainWindow& ofWindow);

    Frame Frame1{&window, "Frame1"};
    CheckBox chbMarkierteKeysEntfernen{&window, "chbMarkierteKeysEntfernen"};
    CheckBox chbRegKeysShow{&window, "chbRegKeysShow"};
    Button cmdAbbrechen{&window, "cmdAbbrechen"};
    Button cmdStart{&window, "cmdStart"};
    ListView lvwRegKeys{&window, "lvwRegKeys"};
    Label lblScanBericht{&window, "lblScanBericht"};
    Label lblScanProzent{&window, "lblScanProzent"};
    Label lblScanTxt{&window, "lblScanTxt"};
    Label lblStartText{&window, "lblStartText"};
    MenuItem mnuPopUpRegKey{&window, "mnuPopUpRegKey"};
    MenuItem mnuPopUpRegKeyEinzeln{&window, "mnuPopUpRegKeyEinzeln"};
    MenuItem mnuPopUpRegKeyAlle{&window, "mnuPopUpRegKeyAlle"};

    // scanner/
    void cmdStart_Click();
    void cmdAbbrechen_Click();
    void mnuPopUpStartScan_Click();
    void mnuPopUpRegKeyEinzeln_Click();
    void mnuPopUpRegKeyAlle_Click();
    void chbRegKeysShow_Click();
    // repair/
    void ProblemeEntfernen();

    [[nodiscard]] static std::span<const Row<ScanPage>> rows();
    void design() override;
    void resize() override;
};

// Columns of lvwRegKeys: the four fields of a found fault. The list is the only place where faults are kept.
enum ResultColumn : int { kKeyLine = 0, kValueName = 1, kValueData = 2, kHiveHandle = 3 };

}  // namespace bromvale

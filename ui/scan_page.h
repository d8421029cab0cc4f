#pragma once
#include "core/result_row.h"
#include "ui/list_page.h"

namespace bromvale {

// The scan: its button, what it says, and the list of found faults, the only place where they are kept.
class ScanPage : public PageOf<ScanPage, ListPage>, public RowSink {
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

    // The rows of lvwRegKeys, written and read here alone. The user may have sorted them, and a scan within a
    // scan cleared them.
    void addRow(const ResultRow& row) override;
    void takeBackRow(const ResultRow& row) override;
    [[nodiscard]] ResultRow rowAt(int number) const;

    [[nodiscard]] static std::span<const Row<ScanPage>> rows();
};

// Columns of lvwRegKeys: the four fields of a ResultRow.
enum ResultColumn : int { kKeyLine = 0, kValueName = 1, kValueData = 2, kHiveHandle = 3 };

}  // namespace bromvale

// The buttons, the box and the context menu of the scan page. cmdStart scans, or with the caption
// "&Entfernen" removes what a scan found.
#include "core/settings.h"
#include "core/state.h"
#include "repair/reboot.h"
#include "scanner/scan_driver.h"
#include "scanner/search.h"

namespace bromvale {
namespace {

void showVersion(ScanPage& page) {
    page.window.StatusBar_.setPanelText(1, "Status");
    page.window.StatusBar_.setPanelText(2, "Version " + AppVersion);
}

void uncheckAndDisable(CheckBox& box) {
    kStartButton.step([&] { box.setValue(0); });
    box.setEnabled(false);
}

void resetPage(ScanPage& page) {
    page.lvwRegKeys.setVisible(false);
    uncheckAndDisable(page.chbRegKeysShow);
    uncheckAndDisable(page.chbMarkierteKeysEntfernen);
    page.cmdStart.setCaption("&Start");
    page.lblScanProzent.setVisible(false);
    showVersion(page);
}

// Where nothing may be removed the offer stays, too; what a removal that a setting has started leads to is
// said where its result would be.
void removeFaults(ScanPage& page, WishedBy who) {
    kStartButton.trace("Entfernen gedrückt");
    bool may = false;
    kStartButton.step([&] { may = mayRemoveFaults(page, who); });
    if (!may) {
        if (who == WishedBy::Setting)
            page.lblScanBericht.setCaption(
                "Es wurde nichts entfernt, da der Programmordner schreibgeschützt ist.");
        return;
    }
    kStartButton.step([&] { page.ProblemeEntfernen(); });
    if (page.chbMarkierteKeysEntfernen.value() == 1) return;  // the offer stays, without restart or close
    resetPage(page);
    if (RebootAfterDelete == 1) {
        kStartButton.trace("AutoClose + Reboot");
        kStartButton.step(RebootSystem);
        closeWindow(page);
    }
    closeIfWished(page);
}

}  // namespace

void pressStart(ScanPage& page, WishedBy who) {
    if (page.cmdStart.caption() == "&Entfernen") {
        removeFaults(page, who);
    } else {
        runScan(page);
    }
}

void ScanPage::cmdStart_Click() {
    pressStart(*this, WishedBy::User);
}

// Not restricted to a running scan: a click while the button reads "&Entfernen" discards that offer. Rows and
// group stay.
void ScanPage::cmdAbbrechen_Click() {
    ScanAbort = true;
    window.setMousePointer(MousePointer::Default);
    cmdStart.setEnabled(true);
    cmdStart.setCaption("Start");  // without the access key, unlike "&Start": a difference that stays
    cmdStart.setFocus();
    chbRegKeysShow.setValue(0);
    chbRegKeysShow.setEnabled(false);
    chbMarkierteKeysEntfernen.setValue(0);
    chbMarkierteKeysEntfernen.setEnabled(false);
    lvwRegKeys.setVisible(false);
    window.tmrTimer.setEnabled(false);
    window.ProgressBar_.setValue(0);
    lblScanBericht.setCaption("");
    lblScanProzent.setCaption("");
    lblScanTxt.setCaption("");
    showVersion(*this);
}

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

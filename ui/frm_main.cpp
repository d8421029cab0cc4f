#include "ui/frm_main.h"

#include "resources/resource_ids.h"
#include "ui/layout_main.h"

namespace bromvale {

FrmMain::FrmMain() : Form("frmMain") {
    wire();
}

FrmMain& frmMain() {
    // Lives as long as the process. Its handlers may ask for it while it is still being set up.
    static FrmMain* form = nullptr;
    if (!form) {
        form = new FrmMain;
        form->Form_Initialize();
    }
    return *form;
}

void FrmMain::design() {
    setBorderStyle(BorderStyle::Sizable);
    setIconResource(BROMVALE_ICON_PROGRAM);
    setScaleSize(kDesignWidth, kDesignHeight);
    centreOnScreen();
    for (const auto page : {layoutWindow(), layoutScan(), layoutBackup(), layoutBugReport(), layoutPrograms(),
                            layoutOptions(), layoutCleanup(), layoutMenus()}) {
        buildPage(*this, page);
    }
    buildColumns(*this, layoutColumns());
    buildImages(*this, layoutImages());
    for (ListView* list : {&lvwRegKeys, &lvwBackup, &lvwDeinstall, &lvwOrdnerList})
        list->setSmallIcons(&imgList);
}

// Every event and its handler, in one place.
void FrmMain::wire() {
    Menu.onItemClick = [this](const ListBar::Item& item) { Menu_ItemClick(item); };
    tmrTimer.onTimer = [this] { tmrTimer_Timer(); };

    cmdStart.onClick = [this] { cmdStart_Click(); };
    cmdAbbrechen.onClick = [this] { cmdAbbrechen_Click(); };
    chbRegKeysShow.onClick = [this] { chbRegKeysShow_Click(); };
    lvwRegKeys.onColumnClick = [this](int column) { lvwRegKeys_ColumnClick(column); };
    lvwRegKeys.onKeyDown = [this](int keyCode) { lvwRegKeys_KeyDown(keyCode); };
    lvwRegKeys.onMouseUp = [this](int button) { lvwRegKeys_MouseUp(button); };

    cmdBugReportSenden.onClick = [this] { cmdBugReportSenden_Click(); };
    cmdBugReportLöschen.onClick = [this] { cmdBugReportLöschen_Click(); };

    mnuPopUpStartScan.onClick = [this] { mnuPopUpStartScan_Click(); };
    mnuPopUpRegKeyEinzeln.onClick = [this] { mnuPopUpRegKeyEinzeln_Click(); };
    mnuPopUpRegKeyAlle.onClick = [this] { mnuPopUpRegKeyAlle_Click(); };
}

// A sign of life while the length of a step is unknown: 0, 5, ... 100 and round again.
void FrmMain::tmrTimer_Timer() {
    constexpr int kFull = 100;
    constexpr int kStep = 5;
    ProgressBar_.setValue(ProgressBar_.value() >= kFull ? 0 : ProgressBar_.value() + kStep);
}

}  // namespace bromvale

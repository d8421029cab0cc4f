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

    cmdBearbeiten.onClick = [this] { cmdBearbeiten_Click(); };
    cmdEintragen.onClick = [this] { cmdEintragen_Click(); };
    cmdLöschen.onClick = [this] { cmdLöschen_Click(); };
    lvwBackup.onColumnClick = [this](int column) { lvwBackup_ColumnClick(column); };
    lvwBackup.onKeyDown = [this](int keyCode) { lvwBackup_KeyDown(keyCode); };
    lvwBackup.onMouseUp = [this](int button) { lvwBackup_MouseUp(button); };
    lvwBackup.onDblClick = [this] { cmdBearbeiten_Click(); };

    cmdDeinstall.onClick = [this] { cmdDeinstall_Click(); };
    cmdDeinstallRefresh.onClick = [this] { cmdDeinstallRefresh_Click(); };
    lvwDeinstall.onColumnClick = [this](int column) { lvwDeinstall_ColumnClick(column); };
    lvwDeinstall.onKeyDown = [this](int keyCode) { lvwDeinstall_KeyDown(keyCode); };
    lvwDeinstall.onMouseUp = [this](int button) { lvwDeinstall_MouseUp(button); };
    lvwDeinstall.onDblClick = [this] { cmdDeinstall_Click(); };

    wireCleanup();
    wireOptions();
    wireMenus();
}

void FrmMain::wireCleanup() {
    cmdOrdnerWählen.onClick = [this] { cmdOrdnerWählen_Click(); };
    cmdOrdnerLöschen.onClick = [this] { cmdOrdnerLöschen_Click(); };
    cmdInhaltLöschen.onClick = [this] { cmdInhaltLöschen_Click(); };
    cmdHDDBereinigen.onClick = [this] { cmdHDDBereinigen_Click(); };
    chbTempFilesDel.onClick = [this] { chbTempFilesDel_Click(); };
    chbDelFilePermanent.onClick = [this] { chbDelFilePermanent_Click(); };
    lvwOrdnerList.onColumnClick = [this](int column) { lvwOrdnerList_ColumnClick(column); };
    lvwOrdnerList.onKeyDown = [this](int keyCode) { lvwOrdnerList_KeyDown(keyCode); };
    lvwOrdnerList.onMouseUp = [this](int button) { lvwOrdnerList_MouseUp(button); };
    lvwOrdnerList.onDblClick = [this] { lvwOrdnerList_DblClick(); };
}

void FrmMain::wireOptions() {
    chbScreenSave.onClick = [this] { chbScreenSave_Click(); };
    chbAutoScan.onClick = [this] { chbAutoScan_Click(); };
    chbAutoEntfernen.onClick = [this] { chbAutoEntfernen_Click(); };
    chbAutoClose.onClick = [this] { chbAutoClose_Click(); };
    chbRebootAfterDelete.onClick = [this] { chbRebootAfterDelete_Click(); };
    chbRebootAfterEntry.onClick = [this] { chbRebootAfterEntry_Click(); };
    chbAutoFileDelAfterReentry.onClick = [this] { chbAutoFileDelAfterReentry_Click(); };
    chbAutoRegFileDel.onClick = [this] { chbAutoRegFileDel_Click(); };
    // A text can be typed as well as chosen.
    cboAutoRegFileDel.onClick = [this] { cboAutoRegFileDel_Click(); };
    cboAutoRegFileDel.onChange = [this] { cboAutoRegFileDel_Click(); };
    chbProtokoll.onClick = [this] { chbProtokoll_Click(); };
    rdoINet1.onClick = [this] { rdoINet1_Click(); };
    rdoINet2.onClick = [this] { rdoINet2_Click(); };
    txtProxyAdresse.onChange = [this] { txtProxyAdresse_Change(); };
    txtProxyPort.onChange = [this] { txtProxyPort_Change(); };
    cmdÜbernehmen.onClick = [this] { cmdÜbernehmen_Click(); };
}

// mnuPopUpShowForm, the bold entry of the tray's menu, has no handler: choosing it does nothing, and is kept
// so.
void FrmMain::wireMenus() {
    mnuPopUpStartScan.onClick = [this] { mnuPopUpStartScan_Click(); };
    mnuPopUpBackupZeigen.onClick = [this] { mnuPopUpBackupZeigen_Click(); };
    mnuPopUpDeinstall.onClick = [this] { mnuPopUpDeinstall_Click(); };
    mnuPopUpBugReport.onClick = [this] { mnuPopUpBugReport_Click(); };
    mnuPopUpLiveUpdate.onClick = [this] { mnuPopUpLiveUpdate_Click(); };
    mnuPopUpOptionen.onClick = [this] { mnuPopUpOptionen_Click(); };
    mnuPopUpAbout.onClick = [this] { mnuPopUpAbout_Click(); };
    mnuPopUpQuit.onClick = [this] { mnuPopUpQuit_Click(); };
    mnuPopUpRegKeyEinzeln.onClick = [this] { mnuPopUpRegKeyEinzeln_Click(); };
    mnuPopUpRegKeyAlle.onClick = [this] { mnuPopUpRegKeyAlle_Click(); };
    mnuPopUpDeinstDeinstall.onClick = [this] { cmdDeinstall_Click(); };
    mnuPopUpDeinstRefresh.onClick = [this] { cmdDeinstallRefresh_Click(); };
    mnuPopUpBackupBearbeiten.onClick = [this] { cmdBearbeiten_Click(); };
    mnuPopUpBackupEinfügen.onClick = [this] { cmdEintragen_Click(); };
    mnuPopUpBackupLöschen.onClick = [this] { cmdLöschen_Click(); };
    mnuPopUpOrdnerHinzufügen.onClick = [this] { cmdOrdnerWählen_Click(); };
    mnuPopUpOrdnerEntfernen.onClick = [this] { cmdOrdnerLöschen_Click(); };
    mnuPopUpOrdnerEinzeln.onClick = [this] { mnuPopUpOrdnerEinzeln_Click(); };
    mnuPopUpOrdnerAlle.onClick = [this] { cmdInhaltLöschen_Click(); };
}

// A sign of life while the length of a step is unknown: 0, 5, ... 100 and round again.
void FrmMain::tmrTimer_Timer() {
    constexpr int kFull = 100;
    constexpr int kStep = 5;
    ProgressBar_.setValue(ProgressBar_.value() >= kFull ? 0 : ProgressBar_.value() + kStep);
}

}  // namespace bromvale

#pragma once
// The main window: its controls page by page, and its handlers with the folder that defines each of them.
#include "platform/controls.h"
#include "platform/shell.h"

namespace bromvale {

class FrmMain : public Form {
  public:
    FrmMain();

    // --- the window itself ---
    ListBar Menu{this, "Menu"};
    ImageList imgMenu1{this, "imgMenu1", 32};
    ImageList imgList{this, "imgList", 16};
    ProgressBar ProgressBar_{this, "ProgressBar"};  // lies over panel 3, so it stands before the status bar
    StatusBar StatusBar_{this, "StatusBar"};
    Timer tmrTimer{this, "tmrTimer"};
    Socket winsock{this, "winsock"};

    // --- Frame1: scan ---
    Frame Frame1{this, "Frame1"};
    CheckBox chbMarkierteKeysEntfernen{this, "chbMarkierteKeysEntfernen"};
    CheckBox chbRegKeysShow{this, "chbRegKeysShow"};
    Button cmdAbbrechen{this, "cmdAbbrechen"};
    Button cmdStart{this, "cmdStart"};
    ListView lvwRegKeys{this, "lvwRegKeys"};
    Label lblScanBericht{this, "lblScanBericht"};
    Label lblScanProzent{this, "lblScanProzent"};
    Label lblScanTxt{this, "lblScanTxt"};
    Label lblStartText{this, "lblStartText"};

    // --- Frame2: backup area ---
    Frame Frame2{this, "Frame2"};
    Button cmdLöschen{this, "cmdLöschen"};
    Button cmdEintragen{this, "cmdEintragen"};
    Button cmdBearbeiten{this, "cmdBearbeiten"};
    ListView lvwBackup{this, "lvwBackup"};

    // --- Frame3: bug report ---
    Frame Frame3{this, "Frame3"};
    Button cmdBugReportSenden{this, "cmdBugReportSenden"};
    Button cmdBugReportLöschen{this, "cmdBugReportLöschen"};
    TextBox txtAppVer{this, "txtAppVer"};
    TextBox txtErrNr{this, "txtErrNr"};
    TextBox txtErrDesc{this, "txtErrDesc"};
    ComboBox cboErrHow{this, "cboErrHow"};
    TextBox txtErrtxt{this, "txtErrtxt"};
    ComboBox cboOS{this, "cboOS"};
    ComboBox cboServicePack{this, "cboServicePack"};
    TextBox txtEMail{this, "txtEMail"};
    Label lblAppVer{this, "lblAppVer"};
    Label lblErrNr{this, "lblErrNr"};
    Label lblErrDesc{this, "lblErrDesc"};
    Label lblErrTxt{this, "lblErrTxt"};
    Label lblErrHow{this, "lblErrHow"};
    Label lblOS{this, "lblOS"};
    Label lblServicePack{this, "lblServicePack"};
    Label lblEMail{this, "lblEMail"};

    // --- Frame4: installed programs ---
    Frame Frame4{this, "Frame4"};
    Button cmdDeinstallRefresh{this, "cmdDeinstallRefresh"};
    Button cmdDeinstall{this, "cmdDeinstall"};
    ListView lvwDeinstall{this, "lvwDeinstall"};

    // --- Frame5: options ---
    Frame Frame5{this, "Frame5"};
    Frame Frame8Internet{this, "Frame8Internet"};
    TextBox txtProxyAdresse{this, "txtProxyAdresse"};
    TextBox txtProxyPort{this, "txtProxyPort"};
    OptionButton rdoINet2{this, "rdoINet2"};
    OptionButton rdoINet1{this, "rdoINet1"};
    Label lblProxyAdresse{this, "lblProxyAdresse"};
    Label lblProxyport{this, "lblProxyport"};
    Button cmdÜbernehmen{this, "cmdÜbernehmen"};
    Frame Frame6{this, "Frame6"};
    CheckBox chbAutoFileDelAfterReentry{this, "chbAutoFileDelAfterReentry"};
    CheckBox chbRebootAfterEntry{this, "chbRebootAfterEntry"};
    CheckBox chbAutoRegFileDel{this, "chbAutoRegFileDel"};
    CheckBox chbRebootAfterDelete{this, "chbRebootAfterDelete"};
    CheckBox chbProtokoll{this, "chbProtokoll"};
    CheckBox chbScreenSave{this, "chbScreenSave"};
    CheckBox chbAutoScan{this, "chbAutoScan"};
    CheckBox chbAutoClose{this, "chbAutoClose"};
    CheckBox chbAutoEntfernen{this, "chbAutoEntfernen"};
    ComboBox cboAutoRegFileDel{this, "cboAutoRegFileDel"};
    Line Line1{this, "Line1"};
    Label lblAutoRegFileDel2{this, "lblAutoRegFileDel2"};
    Label lblAutoRegFileDel1{this, "lblAutoRegFileDel1"};
    Frame Frame4Agents{this, "Frame4Agents"};
    ComboBox cboAgentType{this, "cboAgentType"};
    CheckBox chbLoadAgent{this, "chbLoadAgent"};
    Label lblNoAgents{this, "lblNoAgents"};
    Label lblAgentType{this, "lblAgentType"};

    // --- Frame7: cleanup ---
    Frame Frame7{this, "Frame7"};
    CheckBox chbDelFilePermanent{this, "chbDelFilePermanent"};
    Button cmdInhaltLöschen{this, "cmdInhaltLöschen"};
    Button cmdOrdnerLöschen{this, "cmdOrdnerLöschen"};
    Button cmdOrdnerWählen{this, "cmdOrdnerWählen"};
    ListView lvwOrdnerList{this, "lvwOrdnerList"};
    CheckBox chbTempFilesDel{this, "chbTempFilesDel"};
    Button cmdHDDBereinigen{this, "cmdHDDBereinigen"};
    Label lblOrdnerManuell{this, "lblOrdnerManuell"};
    Label lblTempFileDel{this, "lblTempFileDel"};
    Line Line2{this, "Line2"};
    Label lblHDDBereinigen{this, "lblHDDBereinigen"};

    // --- menus, only ever opened as pop-ups ---
    MenuItem mnuPopUp{this, "mnuPopUp"};
    MenuItem mnuPopUpShowForm{this, "mnuPopUpShowForm"};
    MenuItem mnuPopUpStartScan{this, "mnuPopUpStartScan"};
    MenuItem mnuPopUpBackupZeigen{this, "mnuPopUpBackupZeigen"};
    MenuItem mnuPopUpDeinstall{this, "mnuPopUpDeinstall"};
    MenuItem mnuPopUpBugReport{this, "mnuPopUpBugReport"};
    MenuItem mnuPopUpLiveUpdate{this, "mnuPopUpLiveUpdate"};
    MenuItem mnuPopUpOptionen{this, "mnuPopUpOptionen"};
    MenuItem mnuPopUpStep1{this, "mnuPopUpStep1"};
    MenuItem mnuPopUpAbout{this, "mnuPopUpAbout"};
    MenuItem mnuPopUpQuit{this, "mnuPopUpQuit"};
    MenuItem mnuPopUpRegKey{this, "mnuPopUpRegKey"};
    MenuItem mnuPopUpRegKeyEinzeln{this, "mnuPopUpRegKeyEinzeln"};
    MenuItem mnuPopUpRegKeyAlle{this, "mnuPopUpRegKeyAlle"};
    MenuItem mnuPopUpDeinst{this, "mnuPopUpDeinst"};
    MenuItem mnuPopUpDeinstDeinstall{this, "mnuPopUpDeinstDeinstall"};
    MenuItem mnuPopUpDeinstRefresh{this, "mnuPopUpDeinstRefresh"};
    MenuItem mnuPopUpBackup{this, "mnuPopUpBackup"};
    MenuItem mnuPopUpBackupBearbeiten{this, "mnuPopUpBackupBearbeiten"};
    MenuItem mnuPopUpBackupEinfügen{this, "mnuPopUpBackupEinfügen"};
    MenuItem mnuPopUpBackupLöschen{this, "mnuPopUpBackupLöschen"};
    MenuItem mnuPopUpOrdner{this, "mnuPopUpOrdner"};
    MenuItem mnuPopUpOrdnerHinzufügen{this, "mnuPopUpOrdnerHinzufügen"};
    MenuItem mnuPopUpOrdnerEntfernen{this, "mnuPopUpOrdnerEntfernen"};
    MenuItem mnuPopUpOrdnerEinzeln{this, "mnuPopUpOrdnerEinzeln"};
    MenuItem mnuPopUpOrdnerAlle{this, "mnuPopUpOrdnerAlle"};

    // ui/
    void Form_Initialize();
    void showBehindErrorDialog();
    void showPage(const Frame& page);
    void Menu_ItemClick(const ListBar::Item& item);
    void mnuPopUpBugReport_Click();
    void mnuPopUpAbout_Click();
    void mnuPopUpQuit_Click();
    void tmrTimer_Timer();
    void mnuPopUpOptionen_Click();
    void chbScreenSave_Click();
    void chbAutoScan_Click();
    void chbAutoEntfernen_Click();
    void chbAutoClose_Click();
    void chbRebootAfterDelete_Click();
    void chbRebootAfterEntry_Click();
    void chbAutoFileDelAfterReentry_Click();
    void chbAutoRegFileDel_Click();
    void cboAutoRegFileDel_Click();
    void chbProtokoll_Click();
    void rdoINet1_Click();
    void rdoINet2_Click();
    void txtProxyAdresse_Change();
    void txtProxyPort_Change();
    void cmdÜbernehmen_Click();

    // scanner/
    void cmdStart_Click();
    void cmdAbbrechen_Click();
    void mnuPopUpStartScan_Click();
    void mnuPopUpRegKeyEinzeln_Click();
    void mnuPopUpRegKeyAlle_Click();
    void chbRegKeysShow_Click();
    void lvwRegKeys_ColumnClick(int column);
    void lvwRegKeys_KeyDown(int keyCode);
    void lvwRegKeys_MouseUp(int button);

    // internet/
    void cmdBugReportSenden_Click();
    void cmdBugReportLöschen_Click();
    void mnuPopUpLiveUpdate_Click();

    // repair/
    void ProblemeEntfernen();
    void mnuPopUpBackupZeigen_Click();
    void ReadBackupFiles();
    void cmdBearbeiten_Click();
    void cmdEintragen_Click();
    void cmdLöschen_Click();
    void lvwBackup_ColumnClick(int column);
    void lvwBackup_KeyDown(int keyCode);
    void lvwBackup_MouseUp(int button);

    // uninstall/
    void mnuPopUpDeinstall_Click();
    void ShowDeinstall();
    void cmdDeinstall_Click();
    void cmdDeinstallRefresh_Click();
    void lvwDeinstall_ColumnClick(int column);
    void lvwDeinstall_KeyDown(int keyCode);
    void lvwDeinstall_MouseUp(int button);

    // cleanup/
    void Ordnerliste_laden();
    void cmdOrdnerWählen_Click();
    void cmdOrdnerLöschen_Click();
    void cmdInhaltLöschen_Click();
    void mnuPopUpOrdnerEinzeln_Click();
    void cmdHDDBereinigen_Click();
    void chbTempFilesDel_Click();
    void chbDelFilePermanent_Click();
    void lvwOrdnerList_ColumnClick(int column);
    void lvwOrdnerList_KeyDown(int keyCode);
    void lvwOrdnerList_DblClick();
    void lvwOrdnerList_MouseUp(int button);

  protected:
    void design() override;
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;
    void Form_MouseMove(float x, float y) override;
    void Form_TaskbarCreated() override;

  private:
    void wire();
    void wireCleanup();
    void wireOptions();
    void wireMenus();
    void addTrayIcon();
    void removeTrayIcon();
    void restoreGeometry();
    void saveGeometry();
    NOTIFYICONDATAA trayRecord_{};
};

// The one main window, made (Form_Initialize) and loaded at the first use.
FrmMain& frmMain();

// Columns of lvwRegKeys: the four fields of a found fault. The list is the only place where faults are kept.
enum ResultColumn : int { kKeyLine = 0, kValueName = 1, kValueData = 2, kHiveHandle = 3 };

// Columns of lvwDeinstall; all but the first are hidden.
enum ProgramColumn : int { kProgramName = 0, kUninstallCommand = 1, kProgramHive = 2, kProgramKey = 3 };

}  // namespace bromvale

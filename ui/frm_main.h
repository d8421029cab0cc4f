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
    MenuItem mnuPopUpRegKey{this, "mnuPopUpRegKey"};
    MenuItem mnuPopUpRegKeyEinzeln{this, "mnuPopUpRegKeyEinzeln"};
    MenuItem mnuPopUpRegKeyAlle{this, "mnuPopUpRegKeyAlle"};

    // ui/
    void Form_Initialize();
    void showPage(const Frame& page);
    void Menu_ItemClick(const ListBar::Item& item);
    void mnuPopUpBackupZeigen_Click();
    void mnuPopUpDeinstall_Click();
    void mnuPopUpOptionen_Click();
    void mnuPopUpBugReport_Click();
    void tmrTimer_Timer();

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

    // cleanup/
    void Ordnerliste_laden();

  protected:
    void design() override;
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;

  private:
    void wire();
    void addTrayIcon();
    void restoreGeometry();
    void saveGeometry();
    NOTIFYICONDATAA trayRecord_{};
};

// The one main window, made (Form_Initialize) and loaded at the first use.
FrmMain& frmMain();

// Columns of lvwRegKeys: the four fields of a found fault. The list is the only place where faults are kept.
enum ResultColumn : int { kKeyLine = 0, kValueName = 1, kValueData = 2, kHiveHandle = 3 };

}  // namespace bromvale

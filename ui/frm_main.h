#pragma once
#include "platform/shell.h"
#include "ui/backup_page.h"
#include "ui/bug_report_page.h"
#include "ui/cleanup_page.h"
#include "ui/options_page.h"
#include "ui/programs_page.h"
#include "ui/scan_page.h"

namespace bromvale {

// The main window: its pages, and the menu of the icon beside the clock.
class FrmMain : public MainWindow {
  public:
    FrmMain();

    ScanPage scan{*this};
    BackupPage backup{*this};
    BugReportPage bugReport{*this};
    ProgramsPage programs{*this};
    OptionsPage options{*this};
    CleanupPage cleanup{*this};

    // Menus are only ever opened as pop-ups.
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

    void Form_Initialize();
    void showBehindErrorDialog();
    void Menu_ItemClick(const ListBar::Item& item);
    void mnuPopUpAbout_Click();
    void mnuPopUpQuit_Click();
    void tmrTimer_Timer();

    [[nodiscard]] static std::span<const Row<FrmMain>> rows();

  protected:
    void design() override;
    void Form_Load() override;
    void Form_Unload() override;
    void Form_Resize() override;
    void Form_MouseMove(float x, float y) override;
    void Form_TaskbarCreated() override;

  private:
    void addTrayIcon();
    void removeTrayIcon();
    void restoreGeometry();
    void fitSmallScreen();
    void saveGeometry();
    NOTIFYICONDATAA trayRecord_{};
};

// The one main window, made (Form_Initialize) and loaded at the first use.
FrmMain& frmMain();

}  // namespace bromvale

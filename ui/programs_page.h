#pragma once
#include "ui/list_page.h"

namespace bromvale {

// The installed programs.
class ProgramsPage : public PageOf<ProgramsPage, ListPage> {
  public:
    explicit ProgramsPage(MainWindow& ofWindow);

    Frame Frame4{&window, "Frame4"};
    Button cmdDeinstallRefresh{&window, "cmdDeinstallRefresh"};
    Button cmdDeinstall{&window, "cmdDeinstall"};
    ListView lvwDeinstall{&window, "lvwDeinstall"};
    MenuItem mnuPopUpDeinst{&window, "mnuPopUpDeinst"};
    MenuItem mnuPopUpDeinstDeinstall{&window, "mnuPopUpDeinstDeinstall"};
    MenuItem mnuPopUpDeinstRefresh{&window, "mnuPopUpDeinstRefresh"};

    // uninstall/
    void mnuPopUpDeinstall_Click();
    void ShowDeinstall();
    void cmdDeinstall_Click();
    void cmdDeinstallRefresh_Click();

    [[nodiscard]] static std::span<const Row<ProgramsPage>> rows();
};

// Columns of lvwDeinstall; all but the first are hidden.
enum ProgramColumn : int { kProgramName = 0, kUninstallCommand = 1, kProgramHive = 2, kProgramKey = 3 };

}  // namespace bromvale

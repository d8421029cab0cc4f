#pragma once
#include "ui/list_page.h"

namespace bromvale {

// The undo files.
class BackupPage : public PageOf<BackupPage, ListPage> {
  public:
    explicit BackupPage(MainWindow& ofWindow);

    Frame Frame2{&window, "Frame2"};
    Button cmdLöschen{&window, "cmdLöschen"};
    Button cmdEintragen{&window, "cmdEintragen"};
    Button cmdBearbeiten{&window, "cmdBearbeiten"};
    ListView lvwBackup{&window, "lvwBackup"};
    MenuItem mnuPopUpBackup{&window, "mnuPopUpBackup"};
    MenuItem mnuPopUpBackupBearbeiten{&window, "mnuPopUpBackupBearbeiten"};
    MenuItem mnuPopUpBackupEinfügen{&window, "mnuPopUpBackupEinfügen"};
    MenuItem mnuPopUpBackupLöschen{&window, "mnuPopUpBackupLöschen"};

    // repair/
    void mnuPopUpBackupZeigen_Click();
    void ReadBackupFiles();
    void cmdBearbeiten_Click();
    void cmdEintragen_Click();
    void cmdLöschen_Click();

    [[nodiscard]] static std::span<const Row<BackupPage>> rows();
};

}  // namespace bromvale

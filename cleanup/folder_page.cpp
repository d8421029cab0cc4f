// The page of the folders: its switches, and how mouse and keyboard work on its list.
#include <string>

#include "core/command_start.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/exact/machine.h"
#include "platform/shell.h"
#include "ui/cleanup_page.h"

namespace bromvale {
namespace {

constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// The program file's name without folder and extension.
std::string programName() {
    const std::string name = programFile().name;
    return name.substr(0, name.rfind('.'));
}

}  // namespace

// The value that has Windows start the program with "-d" is the setting: nothing else marks it.
void CleanupPage::chbTempFilesDel_Click() {
    if (chbTempFilesDel.value() == 1) {
        SetKeyValue(kHiveLocalMachine, kRunKey, AppTitle, AppPath + programName() + ".exe -d", REG_SZ,
                    KEY_SET_VALUE);
    } else {
        DelKeyValue(kHiveLocalMachine, kRunKey, AppTitle);
    }
}

// Takes effect at once, unlike the switches of the options page.
void CleanupPage::chbDelFilePermanent_Click() {
    storeSetting(DelFilePermanent, std::to_string(chbDelFilePermanent.value()));
    ReadAppSwitch();
}

// Beside the rows there is nothing to open, and a missing file manager is passed over.
void CleanupPage::lvwOrdnerList_DblClick() {
    quietly([&] {
        startCommand(WinDir + "Explorer.exe " + lvwOrdnerList.item(lvwOrdnerList.selectedItem()).text(),
                     SW_SHOWNORMAL);
    });
}

}  // namespace bromvale

// The page of the folders: its switches, and how mouse and keyboard work on its list.
#include <array>
#include <string>

#include "core/attempt.h"
#include "core/command_start.h"
#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/exact/program_file.h"
#include "ui/frm_main.h"
#include "ui/frm_popup.h"
#include "ui/list_selection.h"

namespace bromvale {
namespace {

constexpr const char* kRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr int kRightButton = 2;
constexpr int kNormalWithFocus = 1;
constexpr int kNameColumn = 1;

struct KeyAction {
    int keyCode;
    void (*act)(FrmMain& form);
};
constexpr std::array<KeyAction, 8> kKeyActions{{
    {115, [](FrmMain& form) { form.lvwOrdnerList_ColumnClick(kNameColumn); }},  // F4
    {116, [](FrmMain& form) { form.Ordnerliste_laden(); }},                     // F5
    {117, [](FrmMain& form) { form.cmdOrdnerWählen_Click(); }},                 // F6
    {118, [](FrmMain& form) { form.cmdInhaltLöschen_Click(); }},                // F7
    {12, [](FrmMain& form) { form.cmdOrdnerLöschen_Click(); }},                 // Clear
    {46, [](FrmMain& form) { form.cmdOrdnerLöschen_Click(); }},                 // Delete
    {13, [](FrmMain& form) { form.lvwOrdnerList_DblClick(); }},                 // Return
    {43, [](FrmMain& form) { form.lvwOrdnerList_DblClick(); }},                 // Execute
}};

// The program file's name without folder and extension.
std::string programName() {
    const std::string name = programFile().name;
    return name.substr(0, name.rfind('.'));
}

}  // namespace

// The value that has Windows start the program with "-d" is the setting: nothing else marks it.
void FrmMain::chbTempFilesDel_Click() {
    if (chbTempFilesDel.value() == 1) {
        SetKeyValue(kHiveLocalMachine, kRunKey, AppTitle, AppPath + programName() + ".exe -d", REG_SZ,
                    kSetValue);
    } else {
        DelKeyValue(kHiveLocalMachine, kRunKey, AppTitle);
    }
}

// Takes effect at once, unlike the switches of the options page.
void FrmMain::chbDelFilePermanent_Click() {
    SetKeyValue(kHiveCurrentUser, kSettingsKey, "DelFilePermanent",
                std::to_string(chbDelFilePermanent.value()), REG_SZ, kSetValue);
    ReadAppSwitch();
}

// Each click turns the order round.
void FrmMain::lvwOrdnerList_ColumnClick(int column) {
    lvwOrdnerList.setSortKey(column - 1);
    lvwOrdnerList.setSortOrder(lvwOrdnerList.sortOrder() == SortOrder::Ascending ? SortOrder::Descending
                                                                                 : SortOrder::Ascending);
}

void FrmMain::lvwOrdnerList_KeyDown(int keyCode) {
    for (const KeyAction& key : kKeyActions) {
        if (key.keyCode == keyCode) key.act(*this);
    }
}

// Beside the rows there is nothing to open, and a missing file manager is passed over.
void FrmMain::lvwOrdnerList_DblClick() {
    attempt(kGoOn, [&] {
        startCommand(WinDir + "Explorer.exe " + lvwOrdnerList.item(lvwOrdnerList.selectedItem()).text(),
                     kNormalWithFocus);
    });
}

void FrmMain::lvwOrdnerList_MouseUp(int button) {
    int selected = 0;
    attempt(kGoOn, [&] { selected = selectedRows(lvwOrdnerList); });
    const bool several = selected > 1;
    attempt(kGoOn, [&] {
        mnuPopUpOrdnerEinzeln.setCaption(several ? "mark&ierte Ordner leeren" : "mark&ierten Ordner leeren");
    });
    attempt(kGoOn, [&] {
        mnuPopUpOrdnerEntfernen.setCaption(several ? "markierte &Ordner aus Liste entfernen"
                                                   : "markierten &Ordner aus Liste entfernen");
    });
    attempt(kGoOn, [&] {
        if (button == kRightButton) showPopupMenu(frmPopUp(), mnuPopUpOrdner, nullptr);
    });
}

}  // namespace bromvale

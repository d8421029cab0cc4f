// The options page. Each control writes its value into the settings key at the moment it changes; the
// variables that the rest of the program reads follow when cmdÜbernehmen has them read again.
#include "ui/options.h"

#include <string>

#include "core/attempt.h"
#include "core/log.h"
#include "core/registry_layer.h"
#include "core/settings.h"

namespace bromvale {
namespace {

void store(const CheckBox& box, std::string_view setting) {
    storeOption(setting, std::to_string(box.value()));
}

void check(CheckBox& box, std::int16_t setting) {
    box.setValue(setting);
}

}  // namespace

void storeOption(std::string_view setting, std::string_view text) {
    SetKeyValue(kHiveCurrentUser, kSettingsKey, setting, text, REG_SZ, kSetValue);
}

// Every assignment that changes a control runs its handler as a user's click would, so the order counts: a
// switch that depends on another one is set before it and may be forced by it.
void OptionsPage::mnuPopUpOptionen_Click() {
    show();
    check(chbScreenSave, ScreenSave);
    check(chbAutoClose, AutoClose);
    check(chbAutoEntfernen, AutoEntfernen);
    check(chbAutoRegFileDel, AutoRegFileDel);
    check(chbAutoScan, AutoScan);
    check(chbProtokoll, Protokoll);
    check(chbRebootAfterDelete, RebootAfterDelete);
    check(chbRebootAfterEntry, RebootAfterEntry);
    check(chbAutoFileDelAfterReentry, AutoFileDelAfterReentry);
    cboAgentType.setText(AgentType);
    check(chbLoadAgent, AgentLoad);
    cboAutoRegFileDel.setText(std::to_string(DelAfterDays));
    loadProxyOptions(*this);
    window.setMousePointer(MousePointer::Default);
}

void OptionsPage::chbScreenSave_Click() {
    store(chbScreenSave, "ScreenSave");
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::chbAutoScan_Click() {
    store(chbAutoScan, "AutoScan");
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::chbAutoEntfernen_Click() {
    store(chbAutoEntfernen, "AutoEntfernen");
    cmdÜbernehmen.setEnabled(true);
}

// A program that closes after the scan has to remove what it found by itself.
void OptionsPage::chbAutoClose_Click() {
    store(chbAutoClose, "AutoClose");
    const bool on = chbAutoClose.value() == 1;
    if (on) {
        chbAutoEntfernen_Click();  // stores the box as it is, then changes it
        chbAutoEntfernen.setValue(1);
    }
    chbAutoEntfernen.setEnabled(!on);
    cmdÜbernehmen.setEnabled(true);
}

// A restart after the removal closes the program, which takes the removal along.
void OptionsPage::chbRebootAfterDelete_Click() {
    store(chbRebootAfterDelete, "RebootAfterDelete");
    const bool on = chbRebootAfterDelete.value() == 1;
    if (on) {
        chbAutoClose_Click();
        chbAutoClose.setValue(1);
    }
    chbAutoClose.setEnabled(!on);
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::chbRebootAfterEntry_Click() {
    store(chbRebootAfterEntry, "RebootAfterEntry");
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::chbAutoFileDelAfterReentry_Click() {
    store(chbAutoFileDelAfterReentry, "AutoFileDelAfterReentry");
    cmdÜbernehmen.setEnabled(true);
}

// The number of days keeps its text and stays in force while the box is off.
void OptionsPage::chbAutoRegFileDel_Click() {
    store(chbAutoRegFileDel, "AutoRegFileDel");
    const bool on = chbAutoRegFileDel.value() == 1;
    cboAutoRegFileDel.setEnabled(on);
    lblAutoRegFileDel1.setEnabled(on);
    lblAutoRegFileDel2.setEnabled(on);
    cmdÜbernehmen.setEnabled(true);
}

// Any text, chosen or typed; the reading of the settings decides what it is worth.
void OptionsPage::cboAutoRegFileDel_Click() {
    storeOption("DelAfterDays", cboAutoRegFileDel.text());
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::chbProtokoll_Click() {
    store(chbProtokoll, "Protokoll");
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::cmdÜbernehmen_Click() {
    const auto onFailure = [](const Failure& failure) {
        ErrHandle("frmMain", "cmdÜbernehmen_Click", "", failure.number, failure.description,
                  kStyleExclamation, kHide);
        return Ending::Next;
    };
    attempt(onFailure, [] { ReadAppSwitch(); });
    attempt(onFailure, [&] { cmdÜbernehmen.setEnabled(false); });
}

}  // namespace bromvale

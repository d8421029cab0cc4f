// The options page. Each control writes its value into the settings key at the moment it changes; the
// variables that the rest of the program reads follow when cmdÜbernehmen has them read again.
#include <array>
#include <string>

#include "base/numbers.h"
#include "core/routine.h"
#include "core/settings.h"
#include "ui/options_page.h"

namespace bromvale {
namespace {

constexpr const char* kUsualPort = "80";

struct Box {
    CheckBox OptionsPage::*box;
    std::int16_t& setting;
    void (OptionsPage::*rule)(bool on) = nullptr;
};

// In the order of the loading. Every assignment that changes a box does what a user's click would, so the
// order counts: a box that depends on another one is set before it and may be forced by it.
const std::array kBoxes{
    Box{&OptionsPage::chbScreenSave, ScreenSave},
    Box{&OptionsPage::chbAutoClose, AutoClose, &OptionsPage::chbAutoClose_Click},
    Box{&OptionsPage::chbAutoEntfernen, AutoEntfernen},
    Box{&OptionsPage::chbAutoRegFileDel, AutoRegFileDel, &OptionsPage::chbAutoRegFileDel_Click},
    Box{&OptionsPage::chbAutoScan, AutoScan},
    Box{&OptionsPage::chbProtokoll, Protokoll},
    Box{&OptionsPage::chbRebootAfterDelete, RebootAfterDelete, &OptionsPage::chbRebootAfterDelete_Click},
    Box{&OptionsPage::chbRebootAfterEntry, RebootAfterEntry},
    Box{&OptionsPage::chbAutoFileDelAfterReentry, AutoFileDelAfterReentry},
};

}  // namespace

void OptionsPage::connectBoxes() {
    for (const Box& row : kBoxes) {
        (this->*row.box).onClick = [this, &row] {
            const int value = (this->*row.box).value();
            storeSetting(row.setting, std::to_string(value));
            if (row.rule) (this->*row.rule)(value == 1);
            cmdÜbernehmen.setEnabled(true);
        };
    }
}

void OptionsPage::mnuPopUpOptionen_Click() {
    show();
    for (const Box& row : kBoxes) (this->*row.box).setValue(row.setting);
    cboAgentType.setText(AgentType);
    chbLoadAgent.setValue(AgentLoad);
    cboAutoRegFileDel.setText(std::to_string(DelAfterDays));
    loadProxy();
    window.setMousePointer(MousePointer::Default);
}

// What is on can't be without this box. It is stored as it is, and then changed.
void OptionsPage::force(CheckBox& box, bool on) {
    if (on) {
        box.onClick();
        box.setValue(1);
    }
    box.setEnabled(!on);
}

// A program that closes after the scan has to remove what it found by itself.
void OptionsPage::chbAutoClose_Click(bool on) {
    force(chbAutoEntfernen, on);
}

// A restart after the removal closes the program, which takes the removal along.
void OptionsPage::chbRebootAfterDelete_Click(bool on) {
    force(chbAutoClose, on);
}

// The number of days keeps its text and stays in force while the box is off.
void OptionsPage::chbAutoRegFileDel_Click(bool on) {
    cboAutoRegFileDel.setEnabled(on);
    lblAutoRegFileDel1.setEnabled(on);
    lblAutoRegFileDel2.setEnabled(on);
}

// Any text, chosen or typed; the reading of the settings decides what it is worth.
void OptionsPage::cboAutoRegFileDel_Click() {
    storeSetting(DelAfterDays, cboAutoRegFileDel.text());
    cmdÜbernehmen.setEnabled(true);
}

// Another number than 0 and 1 leaves both buttons as they are.
void OptionsPage::loadProxy() {
    if (Proxy == 0 || Proxy == 1) {
        rdoINet1.setValue(Proxy == 0);
        rdoINet2.setValue(Proxy == 1);
    }
    txtProxyAdresse.setText(ProxyAdresse);
    txtProxyPort.setText(std::to_string(ProxyPort));
}

// Address and port stay stored, only greyed.
void OptionsPage::storeProxy(bool on) {
    storeSetting(Proxy, on ? "1" : "0");
    txtProxyPort.setEnabled(on);
    lblProxyport.setEnabled(on);
    txtProxyAdresse.setEnabled(on);
    lblProxyAdresse.setEnabled(on);
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::rdoINet1_Click() {
    storeProxy(false);
}

void OptionsPage::rdoINet2_Click() {
    storeProxy(true);
}

void OptionsPage::txtProxyAdresse_Change() {
    storeSetting(ProxyAdresse, txtProxyAdresse.text());
    cmdÜbernehmen.setEnabled(true);
}

// The box never stays empty: what is erased is "80" at once. That assignment runs this handler again, which
// then stores it.
void OptionsPage::txtProxyPort_Change() {
    if (!txtProxyPort.text().empty() && !isNumeric(txtProxyPort.text())) {
        MsgBox("Der Proxyport besteht nur aus einer Zahl. z.B. 80", kStyleInformation);
        txtProxyPort.setText(kUsualPort);
        txtProxyPort.setFocus();
        return;
    }
    if (txtProxyPort.text().empty() || txtProxyPort.text() == "0") txtProxyPort.setText(kUsualPort);
    storeSetting(ProxyPort, txtProxyPort.text());
    cmdÜbernehmen.setEnabled(true);
}

void OptionsPage::cmdÜbernehmen_Click() {
    constexpr Routine routine{{"frmMain", "cmdÜbernehmen_Click"}};
    routine.step(ReadAppSwitch);
    routine.step([&] { cmdÜbernehmen.setEnabled(false); });
}

}  // namespace bromvale

#pragma once
#include "ui/page.h"

namespace bromvale {

// The options.
class OptionsPage : public PageOf<OptionsPage> {
  public:
    explicit OptionsPage(MainWindow& ofWindow);

    Frame Frame5{&window, "Frame5"};
    Frame Frame8Internet{&window, "Frame8Internet"};
    Label lblProxyAdresse{&window, "lblProxyAdresse"};
    TextBox txtProxyAdresse{&window, "txtProxyAdresse"};
    Label lblProxyport{&window, "lblProxyport"};
    TextBox txtProxyPort{&window, "txtProxyPort"};
    OptionButton rdoINet2{&window, "rdoINet2"};
    OptionButton rdoINet1{&window, "rdoINet1"};
    Button cmdÜbernehmen{&window, "cmdÜbernehmen"};
    Frame Frame6{&window, "Frame6"};
    CheckBox chbAutoFileDelAfterReentry{&window, "chbAutoFileDelAfterReentry"};
    CheckBox chbRebootAfterEntry{&window, "chbRebootAfterEntry"};
    CheckBox chbAutoRegFileDel{&window, "chbAutoRegFileDel"};
    CheckBox chbRebootAfterDelete{&window, "chbRebootAfterDelete"};
    CheckBox chbProtokoll{&window, "chbProtokoll"};
    CheckBox chbScreenSave{&window, "chbScreenSave"};
    CheckBox chbAutoScan{&window, "chbAutoScan"};
    CheckBox chbAutoClose{&window, "chbAutoClose"};
    CheckBox chbAutoEntfernen{&window, "chbAutoEntfernen"};
    Label lblAutoRegFileDel1{&window, "lblAutoRegFileDel1"};
    ComboBox cboAutoRegFileDel{&window, "cboAutoRegFileDel"};
    Line Line1{&window, "Line1"};
    Label lblAutoRegFileDel2{&window, "lblAutoRegFileDel2"};
    Frame Frame4Agents{&window, "Frame4Agents"};
    Label lblAgentType{&window, "lblAgentType"};
    ComboBox cboAgentType{&window, "cboAgentType"};
    CheckBox chbLoadAgent{&window, "chbLoadAgent"};
    Label lblNoAgents{&window, "lblNoAgents"};

    void mnuPopUpOptionen_Click();
    // What follows from a box beside its storing; `on` is what it says now.
    void chbAutoClose_Click(bool on);
    void chbRebootAfterDelete_Click(bool on);
    void chbAutoRegFileDel_Click(bool on);
    void cboAutoRegFileDel_Click();
    void rdoINet1_Click();
    void rdoINet2_Click();
    void txtProxyAdresse_Change();
    void txtProxyPort_Change();
    void cmdÜbernehmen_Click();

    [[nodiscard]] static std::span<const Row<OptionsPage>> rows();

  private:
    void connectBoxes();
    void loadProxy();
    void storeProxy(bool on);
    void force(CheckBox& box, bool on);
};

}  // namespace bromvale

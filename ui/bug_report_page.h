#pragma once
#include "ui/page.h"

namespace bromvale {

// The bug report.
class BugReportPage : public PageOf<BugReportPage> {
  public:
    explicit BugReportPage(MainWindow& ofWindow);

    Frame Frame3{&window, "Frame3"};
    Button cmdBugReportSenden{&window, "cmdBugReportSenden"};
    Button cmdBugReportLöschen{&window, "cmdBugReportLöschen"};
    TextBox txtAppVer{&window, "txtAppVer"};
    TextBox txtErrNr{&window, "txtErrNr"};
    TextBox txtErrDesc{&window, "txtErrDesc"};
    ComboBox cboErrHow{&window, "cboErrHow"};
    TextBox txtErrtxt{&window, "txtErrtxt"};
    ComboBox cboOS{&window, "cboOS"};
    ComboBox cboServicePack{&window, "cboServicePack"};
    TextBox txtEMail{&window, "txtEMail"};
    Label lblAppVer{&window, "lblAppVer"};
    Label lblErrNr{&window, "lblErrNr"};
    Label lblErrDesc{&window, "lblErrDesc"};
    Label lblErrTxt{&window, "lblErrTxt"};
    Label lblErrHow{&window, "lblErrHow"};
    Label lblOS{&window, "lblOS"};
    Label lblServicePack{&window, "lblServicePack"};
    Label lblEMail{&window, "lblEMail"};

    // ui/
    void mnuPopUpBugReport_Click();
    // internet/
    void cmdBugReportSenden_Click();
    void cmdBugReportLöschen_Click();

    [[nodiscard]] static std::span<const Row<BugReportPage>> rows();
};

}  // namespace bromvale

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
    Label lblAppVer{&window, "lblAppVer"};
    TextBox txtAppVer{&window, "txtAppVer"};
    Label lblErrNr{&window, "lblErrNr"};
    TextBox txtErrNr{&window, "txtErrNr"};
    Label lblErrDesc{&window, "lblErrDesc"};
    TextBox txtErrDesc{&window, "txtErrDesc"};
    Label lblErrHow{&window, "lblErrHow"};
    ComboBox cboErrHow{&window, "cboErrHow"};
    Label lblErrTxt{&window, "lblErrTxt"};
    TextBox txtErrtxt{&window, "txtErrtxt"};
    Label lblOS{&window, "lblOS"};
    ComboBox cboOS{&window, "cboOS"};
    Label lblServicePack{&window, "lblServicePack"};
    ComboBox cboServicePack{&window, "cboServicePack"};
    Label lblEMail{&window, "lblEMail"};
    TextBox txtEMail{&window, "txtEMail"};

    // ui/
    void mnuPopUpBugReport_Click();
    // internet/
    void cmdBugReportSenden_Click();
    void cmdBugReportLöschen_Click();

    [[nodiscard]] static std::span<const Row<BugReportPage>> rows();
};

}  // namespace bromvale

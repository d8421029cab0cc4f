#pragma once
#include <cstdint>
#include <string_view>

#include "ui/rows.h"

namespace bromvale {

// The non-blocking dialog for failures of style 16 and 48. A second report overwrites the first.
class FrmError : public Form {
  public:
    FrmError();
    ImageList imgList{this, "imgList", 32};
    Picture imgErrImg{this, "imgErrImg"};
    Label lblErrDesc{this, "lblErrDesc"};
    Button cmdSchließen{this, "cmdSchließen"};
    Button cmdDetails{this, "cmdDetails"};
    TextBox txtDetails{this, "txtDetails"};
    Label lblErrNr{this, "lblErrNr"};
    Label lblErrHow{this, "lblErrHow"};
    Label lblEMail{this, "lblEMail"};
    TextBox txtEMail{this, "txtEMail"};
    Button cmdReportSenden{this, "cmdReportSenden"};

    // Loads the dialog if need be, puts the report into it and shows it without waiting.
    void fill(std::string_view modul, std::string_view funktion, std::int32_t nummer,
              std::string_view beschreibung, std::int32_t stil);
    void cmdDetails_Click();
    void cmdSchließen_Click();
    void cmdBeenden_Click();
    void cmdReportSenden_Click();  // internet/

    [[nodiscard]] static std::span<const Row<FrmError>> rows();

  protected:
    void design() override;
    void Form_Load() override;
};

FrmError& frmError();
// Hands the dialog to the reporting routine.
void registerErrorDialog();

}  // namespace bromvale

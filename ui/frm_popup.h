#pragma once
#include "platform/controls.h"

namespace bromvale {

// Never shown: the window from which all pop-up menus are opened, so that they close when the user clicks
// elsewhere.
class FrmPopUp : public Form {
  public:
    FrmPopUp() : Form("frmPopUp") {}

  protected:
    void design() override;
};

// Loaded at the first use.
FrmPopUp& frmPopUp();

}  // namespace bromvale

#pragma once
#include "platform/controls.h"

namespace bromvale {

// The waiting window: a fixed dialog without caption or buttons, one centred label. No code of its own.
class FrmLogin : public Form {
  public:
    FrmLogin() : Form("frmLogin") {}
    Label lblLogin{this, "lblLogin"};

  protected:
    void design() override;
};

// Loaded at each first use, so that a text put into it stands when it is shown.
FrmLogin& frmLogin();

}  // namespace bromvale

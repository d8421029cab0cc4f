#include "ui/frm_login.h"

#include "ui/rows.h"

namespace bromvale {
namespace {

constexpr Row<FrmLogin> kRows[] = {
    row<FrmLogin, &FrmLogin::lblLogin>("Die Programmeinstellungen werden geladen. Bitte warten...",
                                       {120, 75, 4455, 495}, 0, kCentred),
};
constexpr int kInnerWidth = 4710;
constexpr int kInnerHeight = 630;

}  // namespace

FrmLogin& frmLogin() {
    static FrmLogin& form = *new FrmLogin;
    form.load();
    return form;
}

void FrmLogin::design() {
    setBorderStyle(BorderStyle::FixedNoControls);
    setScaleSize(kInnerWidth, kInnerHeight);
    centreOnScreen();
    designRows(*this, kRows);
}

}  // namespace bromvale

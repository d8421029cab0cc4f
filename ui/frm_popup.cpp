#include "ui/frm_popup.h"

namespace bromvale {
namespace {

constexpr int kInnerWidth = 1185;
constexpr int kInnerHeight = 1155;

}  // namespace

FrmPopUp& frmPopUp() {
    static FrmPopUp& form = *new FrmPopUp;
    form.load();
    return form;
}

void FrmPopUp::design() {
    setBorderStyle(BorderStyle::Sizable);
    setCaption("Form1");
    setScaleSize(kInnerWidth, kInnerHeight);
}

}  // namespace bromvale

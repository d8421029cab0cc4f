#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame3", K::Frame, "Online Bug-Report", nullptr, kPagePlace, 26, kHidden | kArrowPointer},
    {"cmdBugReportSenden", K::Button, "Bericht senden", "Frame3", {240, 6000, 1335, 375}, 8, 0},
    {"cmdBugReportLöschen", K::Button, "Bericht löschen", "Frame3", {1680, 6000, 1335, 375}, 28, 0},
    {"txtAppVer", K::TextBox, "", "Frame3", {1920, 480, 975, 285}, 27, kDisabled | kGreyed},
    {"txtErrNr", K::TextBox, "", "Frame3", {1920, 840, 975, 285}, 1, 0},
    {"txtErrDesc", K::TextBox, "", "Frame3", {1920, 1200, 6015, 1455}, 2, kMultiLine},
    {"cboErrHow", K::ComboBox, "", "Frame3", {1920, 2750, 2895, 315}, 3, 0},
    {"txtErrtxt", K::TextBox, "", "Frame3", {1920, 3540, 6015, 1695}, 6, kMultiLine},
    {"cboOS", K::ComboBox, "", "Frame3", {1920, 3130, 2895, 315}, 4, 0},
    {"cboServicePack", K::ComboBox, "", "Frame3", {6000, 3130, 1935, 315}, 5, 0},
    {"txtEMail", K::TextBox, "", "Frame3", {1920, 5340, 3135, 285}, 7, 0},
    {"lblAppVer", K::Label, "Version:", "Frame3", {1080, 490, 735, 255}, 36, kRightAligned},
    {"lblErrNr", K::Label, "Fehlernummer:", "Frame3", {720, 850, 1095, 255}, 35, kRightAligned},
    {"lblErrDesc", K::Label, "Fehlertext:", "Frame3", {600, 1200, 1215, 255}, 34, kRightAligned},
    {"lblErrTxt", K::Label, "Fehlerbeschreibung:", "Frame3", {360, 3560, 1455, 255}, 33, kRightAligned},
    {"lblErrHow", K::Label, "Wo trat der Fehler auf?", "Frame3", {120, 2790, 1695, 255}, 32, kRightAligned},
    {"lblOS", K::Label, "Betriebssystem:", "Frame3", {710, 3160, 1095, 255}, 31, kRightAligned},
    {"lblServicePack", K::Label, "ServicePack:", "Frame3", {4920, 3160, 975, 255}, 30, kRightAligned},
    {"lblEMail", K::Label, "E-Mail-Adresse:", "Frame3", {600, 5360, 1215, 255}, 29, kRightAligned},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutBugReport() {
    return kRows;
}

}  // namespace bromvale

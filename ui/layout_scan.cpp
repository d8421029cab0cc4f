#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame1", K::Frame, "Fehler in der Registrierung-Datenbank suchen", nullptr, kPagePlace, 10, 0},
    {"chbMarkierteKeysEntfernen", K::CheckBox,
     "nur markierte Einträge entfernen", "Frame1", {4560, 6060, 2655, 255}, 78, kDisabled},
    {"chbRegKeysShow", K::CheckBox, "Ergebnis anzeigen", "Frame1", {2760, 6060, 1695, 255}, 16, kDisabled},
    {"cmdAbbrechen", K::Button,
     "&Abbrechen", "Frame1", {1440, 6000, 1095, 375}, 15, kCancelButton | kArrowPointer},
    {"cmdStart", K::Button, "&Start", "Frame1", {240, 6000, 1095, 375}, 14, kDefaultButton},
    {"lvwRegKeys", K::ListView, "", "Frame1", {240, 360, 7815, 5535}, 13, kHidden | kMultiSelect},
    {"lblScanBericht", K::Label, "", "Frame1", {240, 4560, 7815, 255}, 56, kMsSansSerif | kCentred},
    {"lblScanProzent", K::Label, "", "Frame1", {3360, 4230, 1575, 300}, 55, kMsSansSerif | kCentred},
    {"lblScanTxt", K::Label, "", "Frame1", {240, 3960, 7815, 255}, 54, kMsSansSerif | kCentred},
    {"lblStartText", K::Label, "", "Frame1", {240, 420, 7815, 3375}, 11, kTahoma},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutScan() {
    return kRows;
}

}  // namespace bromvale

#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame7", K::Frame,
     "Festplatte von nicht benötigten Dateien bereinigen", nullptr, kPagePlace, 60, kHidden},
    {"chbDelFilePermanent", K::CheckBox,
     "Dateien permanent löschen (nicht in Papierkorb verschieben)", "Frame7", {3240, 5040, 4695, 195}, 77, 0},
    {"cmdInhaltLöschen", K::Button, "Ordner leeren", "Frame7", {3120, 3960, 1335, 375}, 69, 0},
    {"cmdOrdnerLöschen", K::Button, "Ordner löschen", "Frame7", {1680, 3960, 1335, 375}, 68, 0},
    {"cmdOrdnerWählen", K::Button, "Ordner wählen", "Frame7", {240, 3960, 1335, 375}, 67, 0},
    {"lvwOrdnerList", K::ListView, "", "Frame7", {240, 2280, 7815, 1575}, 65, kMultiSelect},
    {"chbTempFilesDel", K::CheckBox,
     "automatisches Löschen einschalten", "Frame7", {240, 5040, 2895, 255}, 64, 0},
    {"cmdHDDBereinigen", K::Button, "Platte bereinigen", "Frame7", {240, 1200, 1335, 375}, 61, 0},
    {"lblOrdnerManuell", K::Label,
     "Hier können Sie Ordner hinzufügen, die beim Start von Windows geleert werden sollen.", "Frame7",
     {240, 2000, 7815, 255}, 66, 0},
    {"lblTempFileDel", K::Label,
     "Hier können Sie das Löschen der Dateien der in der oberen Liste eingetragenen Ordner beim Start von "
     "Windows ein- bzw. ausschalten. Die Dateien werden in den Windows Papierkorb verschoben.", "Frame7",
     {240, 4560, 7815, 495}, 63, 0},
    {"Line2", K::Line, "", "Frame7", {240, 1720, 7800, 0}, -1, 0},
    {"lblHDDBereinigen", K::Label,
     "Microsoft liefert mit dem Betriebssystem Windows ein verstecktes Programm aus, mit dem der "
     "Papierkorb, temporäre Programmdateien und temporäre Internetdateien, wieder entfernen kann. Hier "
     "kann das Programm schnell gestartet werden.", "Frame7", {240, 480, 7815, 615}, 62, 0},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutCleanup() {
    return kRows;
}

}  // namespace bromvale

#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr ControlRow kRows[] = {
    {"Frame5", K::Frame, "Optionen", nullptr, kPagePlace, 37, kHidden | kArrowPointer},
    {"Frame8Internet", K::Frame, "Internetverbindung", "Frame5", {4200, 2640, 3735, 1455}, 70, 0},
    {"txtProxyAdresse", K::TextBox, "", "Frame8Internet", {960, 960, 1335, 285}, 76, 0},
    {"txtProxyPort", K::TextBox, "", "Frame8Internet", {2880, 960, 495, 285}, 73, 0},
    {"rdoINet2", K::OptionButton,
     "Verbindung über Proxyserver", "Frame8Internet", {240, 580, 2415, 255}, 72, 0},
    {"rdoINet1", K::OptionButton,
     "Standard (ohne Proxyserver)", "Frame8Internet", {240, 300, 2415, 255}, 71, 0},
    {"lblProxyAdresse", K::Label, "Adresse:", "Frame8Internet", {120, 985, 735, 255}, 75, kRightAligned},
    {"lblProxyport", K::Label, "Port:", "Frame8Internet", {2400, 985, 375, 255}, 74, kRightAligned},
    {"cmdÜbernehmen", K::Button, "&Übernehmen", "Frame5", {240, 6000, 1335, 375}, 53, kDisabled},
    {"Frame6", K::Frame, "Allgemein", "Frame5", {240, 360, 7695, 2055}, 43, 0},
    {"chbAutoFileDelAfterReentry", K::CheckBox,
     "Sicherungsdatei nach Eintragen löschen", "Frame6", {4080, 660, 3375, 255}, 59, 0},
    {"chbRebootAfterEntry", K::CheckBox,
     "Neustart nach Eintragen entfernter Keys", "Frame6", {4080, 360, 3255, 255}, 58, 0},
    {"chbAutoRegFileDel", K::CheckBox,
     "Sicherungsdatei nach Zeit löschen", "Frame6", {4080, 960, 2895, 255}, 57, 0},
    {"chbRebootAfterDelete", K::CheckBox,
     "Neustart nach Entfernen der Probleme", "Frame6", {240, 1580, 3015, 255}, 52, 0},
    {"chbProtokoll", K::CheckBox, "Protokollierung einschalten", "Frame6", {4080, 1580, 2295, 255}, 51, 0},
    {"chbScreenSave", K::CheckBox, "Bildschirmposition speichern", "Frame6", {240, 360, 2295, 255}, 48, 0},
    {"chbAutoScan", K::CheckBox, "Registry Scan automatisch starten", "Frame6", {240, 600, 2895, 375}, 47, 0},
    {"chbAutoClose", K::CheckBox, "Nach Scan Programm beenden", "Frame6", {240, 1280, 2775, 255}, 46, 0},
    {"chbAutoEntfernen", K::CheckBox,
     "Probleme automatisch entfernen", "Frame6", {240, 960, 3135, 255}, 45, 0},
    {"cboAutoRegFileDel", K::ComboBox, "", "Frame6", {5160, 1245, 615, 315}, 44, kDisabled},
    {"Line1", K::Line, "", "Frame6", {3840, 240, 0, 1680}, -1, 0},
    {"lblAutoRegFileDel2", K::Label, "Tagen löschen", "Frame6", {5865, 1280, 1215, 255}, 50, kDisabled},
    {"lblAutoRegFileDel1", K::Label, "Dateien nach", "Frame6", {4080, 1280, 1095, 255}, 49, kDisabled},
    {"Frame4Agents", K::Frame, "Animation", "Frame5", {240, 2640, 3735, 1455}, 38, 0},
    {"cboAgentType", K::ComboBox, "", "Frame4Agents", {720, 720, 1215, 315}, 40, kDisabled | kSortedItems},
    {"chbLoadAgent", K::CheckBox, "Animation anzeigen", "Frame4Agents", {240, 360, 2055, 255}, 39, 0},
    {"lblNoAgents", K::Label,
     "Es ist kein MS Agent installiert.", "Frame4Agents", {240, 1080, 3375, 255}, 42, kHidden},
    {"lblAgentType", K::Label, "Type:", "Frame4Agents", {120, 775, 495, 255}, 41, kDisabled | kRightAligned},
};
// clang-format on

}  // namespace

std::span<const ControlRow> layoutOptions() {
    return kRows;
}

}  // namespace bromvale

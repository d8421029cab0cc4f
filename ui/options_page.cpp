#include "ui/options_page.h"

namespace bromvale {
namespace {

using P = OptionsPage;

// Controls in the order of the form: later ones lie further back. The label of a field stands right before
// it, since assistive tools take it for the field's name. The label of a field stands right before it, since
// assistive tools take it for the field's name. The label of a field stands right before it, since assistive
// tools take it for the field's name.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame5>("Optionen", kPagePlace, 37, kHidden | kArrowPointer),
    row<P, &P::Frame8Internet, &P::Frame5>("Internetverbindung", {4200, 2640, 3735, 1455}, 70, 0),
    row<P, &P::lblProxyAdresse, &P::Frame8Internet>("Adresse:", {120, 985, 735, 255}, 75, kRightAligned),
    row<P, &P::txtProxyAdresse, &P::Frame8Internet>("", {960, 960, 1335, 285}, 76, 0,
        on<&TextBox::onChange, &P::txtProxyAdresse_Change>()),
    row<P, &P::lblProxyport, &P::Frame8Internet>("Port:", {2400, 985, 375, 255}, 74, kRightAligned),
    row<P, &P::txtProxyPort, &P::Frame8Internet>("", {2880, 960, 495, 285}, 73, 0,
        on<&TextBox::onChange, &P::txtProxyPort_Change>()),
    row<P, &P::rdoINet2, &P::Frame8Internet>("Verbindung über Proxyserver", {240, 580, 2415, 255}, 72, 0,
        on<&OptionButton::onClick, &P::rdoINet2_Click>()),
    row<P, &P::rdoINet1, &P::Frame8Internet>("Standard (ohne Proxyserver)", {240, 300, 2415, 255}, 71, 0,
        on<&OptionButton::onClick, &P::rdoINet1_Click>()),
    row<P, &P::cmdÜbernehmen, &P::Frame5>("&Übernehmen", {240, 6000, 1335, 375}, 53, kDisabled,
        on<&Button::onClick, &P::cmdÜbernehmen_Click>()),
    row<P, &P::Frame6, &P::Frame5>("Allgemein", {240, 360, 7695, 2055}, 43, 0),
    row<P, &P::chbAutoFileDelAfterReentry, &P::Frame6>(
        "Sicherungsdatei nach Eintragen löschen", {4080, 660, 3375, 255}, 59, 0),
    row<P, &P::chbRebootAfterEntry, &P::Frame6>(
        "Neustart nach Eintragen entfernter Keys", {4080, 360, 3255, 255}, 58, 0),
    row<P, &P::chbAutoRegFileDel, &P::Frame6>("Sicherungsdatei nach Zeit löschen", {4080, 960, 2895, 255}, 57, 0),
    row<P, &P::chbRebootAfterDelete, &P::Frame6>(
        "Neustart nach Entfernen der Probleme", {240, 1580, 3015, 255}, 52, 0),
    row<P, &P::chbProtokoll, &P::Frame6>("Protokollierung einschalten", {4080, 1580, 2295, 255}, 51, 0),
    row<P, &P::chbScreenSave, &P::Frame6>("Bildschirmposition speichern", {240, 360, 2295, 255}, 48, 0),
    row<P, &P::chbAutoScan, &P::Frame6>("Registry Scan automatisch starten", {240, 600, 2895, 375}, 47, 0),
    row<P, &P::chbAutoClose, &P::Frame6>("Nach Scan Programm beenden", {240, 1280, 2775, 255}, 46, 0),
    row<P, &P::chbAutoEntfernen, &P::Frame6>("Probleme automatisch entfernen", {240, 960, 3135, 255}, 45, 0),
    row<P, &P::lblAutoRegFileDel1, &P::Frame6>("Dateien nach", {4080, 1280, 1095, 255}, 49, kDisabled),
    row<P, &P::cboAutoRegFileDel, &P::Frame6>("", {5160, 1245, 615, 315}, 44, kDisabled,
        on<&ComboBox::onClick, &P::cboAutoRegFileDel_Click>(),
        on<&ComboBox::onChange, &P::cboAutoRegFileDel_Click>()),
    row<P, &P::Line1, &P::Frame6>("", {3840, 240, 0, 1680}, -1, 0),
    row<P, &P::lblAutoRegFileDel2, &P::Frame6>("Tagen löschen", {5865, 1280, 1215, 255}, 50, kDisabled),
    row<P, &P::Frame4Agents, &P::Frame5>("Animation", {240, 2640, 3735, 1455}, 38, 0),
    row<P, &P::lblAgentType, &P::Frame4Agents>("Type:", {120, 775, 495, 255}, 41, kDisabled | kRightAligned),
    row<P, &P::cboAgentType, &P::Frame4Agents>("", {720, 720, 1215, 315}, 40, kDisabled | kSortedItems),
    row<P, &P::chbLoadAgent, &P::Frame4Agents>("Animation anzeigen", {240, 360, 2055, 255}, 39, 0),
    row<P, &P::lblNoAgents, &P::Frame4Agents>(
        "Es ist kein MS Agent installiert.", {240, 1080, 3375, 255}, 42, kHidden),
};
// clang-format on

}  // namespace

OptionsPage::OptionsPage(MainWindow& ofWindow) : PageOf(ofWindow, Frame5) {
    connect();
    connectBoxes();
}

std::span<const Row<OptionsPage>> OptionsPage::rows() {
    return kRows;
}

}  // namespace bromvale

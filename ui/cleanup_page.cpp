#include "ui/cleanup_page.h"

#include "platform/keys.h"

namespace bromvale {
namespace {

using P = CleanupPage;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame7>("Festplatte von nicht benötigten Dateien bereinigen", kPagePlace, 60, kHidden),
    row<P, &P::chbDelFilePermanent, &P::Frame7>(
        "Dateien permanent löschen (nicht in Papierkorb verschieben)", {3240, 5040, 4695, 195}, 77, 0, {.top = 2260},
        on<&CheckBox::onClick, &P::chbDelFilePermanent_Click>()),
    row<P, &P::cmdInhaltLöschen, &P::Frame7>("Ordner leeren", {3120, 3960, 1335, 375}, 69, 0, {.top = 3280},
        on<&Button::onClick, &P::cmdInhaltLöschen_Click>()),
    row<P, &P::cmdOrdnerLöschen, &P::Frame7>("Ordner löschen", {1680, 3960, 1335, 375}, 68, 0, {.top = 3280},
        on<&Button::onClick, &P::cmdOrdnerLöschen_Click>()),
    row<P, &P::cmdOrdnerWählen, &P::Frame7>("Ordner wählen", {240, 3960, 1335, 375}, 67, 0, {.top = 3280},
        on<&Button::onClick, &P::cmdOrdnerWählen_Click>()),
    row<P, &P::lvwOrdnerList, &P::Frame7>("", {240, 2280, 7815, 1575}, 65, kMultiSelect,
        {.height = 5700, .width = 2550}, kListEvents, on<&ListView::onDblClick, &P::lvwOrdnerList_DblClick>()),
    row<P, &P::chbTempFilesDel, &P::Frame7>("automatisches Löschen einschalten", {240, 5040, 2895, 255}, 64, 0,
        {.top = 2300}, on<&CheckBox::onClick, &P::chbTempFilesDel_Click>()),
    row<P, &P::cmdHDDBereinigen, &P::Frame7>("Platte bereinigen", {240, 1200, 1335, 375}, 61, 0,
        on<&Button::onClick, &P::cmdHDDBereinigen_Click>()),
    row<P, &P::lblOrdnerManuell, &P::Frame7>(
        "Hier können Sie Ordner hinzufügen, die beim Start von Windows geleert werden sollen.", {240, 2000, 7815, 255}, 66, 0),
    row<P, &P::lblTempFileDel, &P::Frame7>(
        "Hier können Sie das Löschen der Dateien der in der oberen Liste eingetragenen Ordner beim Start von "
     "Windows ein- bzw. ausschalten. Die Dateien werden in den Windows Papierkorb verschoben.", {240, 4560, 7815, 495}, 63, 0, {.top = 2750}),
    row<P, &P::Line2, &P::Frame7>("", {240, 1720, 7800, 0}, -1, 0, {.rightEnd = 2350}),
    row<P, &P::lblHDDBereinigen, &P::Frame7>(
        "Microsoft liefert mit dem Betriebssystem Windows ein verstecktes Programm aus, mit dem der "
     "Papierkorb, temporäre Programmdateien und temporäre Internetdateien, wieder entfernen kann. Hier "
     "kann das Programm schnell gestartet werden.", {240, 480, 7815, 615}, 62, 0),
    row<P, &P::mnuPopUpOrdner>("<popup ordner>", {}, -1, 0),
    row<P, &P::mnuPopUpOrdnerHinzufügen, &P::mnuPopUpOrdner>("neuen Ordner der Liste &hinzufügen", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdOrdnerWählen_Click>()),
    row<P, &P::mnuPopUpOrdnerEntfernen, &P::mnuPopUpOrdner>("markierten &Ordner aus Liste entfernen", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdOrdnerLöschen_Click>()),
    row<P, &P::mnuPopUpOrdnerEinzeln, &P::mnuPopUpOrdner>("mark&ierte(n) Ordner leeren", {}, -1, 0,
        on<&MenuItem::onClick, &P::mnuPopUpOrdnerEinzeln_Click>()),
    row<P, &P::mnuPopUpOrdnerAlle, &P::mnuPopUpOrdner>("alle Ordner l&eeren", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdInhaltLöschen_Click>()),
};
// clang-format on

constexpr ColumnRow kColumns[] = {{"Ordnername", 7500}};

constexpr ListKey kKeys[] = {sortKey(VK_F4, 1),
                             actKey<&P::Ordnerliste_laden>(VK_F5),
                             actKey<&P::cmdOrdnerWählen_Click>(VK_F6),
                             actKey<&P::cmdInhaltLöschen_Click>(VK_F7),
                             actKey<&P::cmdOrdnerLöschen_Click>(VK_CLEAR),
                             actKey<&P::cmdOrdnerLöschen_Click>(VK_DELETE),
                             actKey<&P::lvwOrdnerList_DblClick>(VK_RETURN),
                             actKey<&P::lvwOrdnerList_DblClick>(VK_EXECUTE)};

constexpr CountedCaption kCaptions[] = {
    counted<&P::mnuPopUpOrdnerEinzeln>("mark&ierten Ordner leeren", "mark&ierte Ordner leeren"),
    counted<&P::mnuPopUpOrdnerEntfernen>("markierten &Ordner aus Liste entfernen",
                                         "markierte &Ordner aus Liste entfernen")};

constexpr ListRules kRules{"Zu leerende Ordner", kColumns, kKeys, kCaptions};

}  // namespace

CleanupPage::CleanupPage(MainWindow& ofWindow)
    : PageOf(ofWindow, Frame7, lvwOrdnerList, mnuPopUpOrdner, kRules) {
    connect();
}

std::span<const Row<CleanupPage>> CleanupPage::rows() {
    return kRows;
}

}  // namespace bromvale

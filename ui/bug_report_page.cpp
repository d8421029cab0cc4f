#include "ui/bug_report_page.h"

namespace bromvale {
namespace {

using P = BugReportPage;

// Controls in the order of the form: later ones lie further back. The label of a field stands right before
// it, since assistive tools take it for the field's name.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame3>("Online Bug-Report", kPagePlace, 26, kHidden | kArrowPointer),
    row<P, &P::cmdBugReportSenden, &P::Frame3>("Bericht senden", {240, 6000, 1335, 375}, 8, 0,
        on<&Button::onClick, &P::cmdBugReportSenden_Click>()),
    row<P, &P::cmdBugReportLöschen, &P::Frame3>("Bericht löschen", {1680, 6000, 1335, 375}, 28, 0,
        on<&Button::onClick, &P::cmdBugReportLöschen_Click>()),
    row<P, &P::lblAppVer, &P::Frame3>("Version:", {1080, 490, 735, 255}, 36, kRightAligned),
    row<P, &P::txtAppVer, &P::Frame3>("", {1920, 480, 975, 285}, 27, kDisabled | kGreyed),
    row<P, &P::lblErrNr, &P::Frame3>("Fehlernummer:", {720, 850, 1095, 255}, 35, kRightAligned),
    row<P, &P::txtErrNr, &P::Frame3>("", {1920, 840, 975, 285}, 1, 0),
    row<P, &P::lblErrDesc, &P::Frame3>("Fehlertext:", {600, 1200, 1215, 255}, 34, kRightAligned),
    row<P, &P::txtErrDesc, &P::Frame3>("", {1920, 1200, 6015, 1455}, 2, kMultiLine),
    row<P, &P::lblErrHow, &P::Frame3>("Wo trat der Fehler auf?", {120, 2790, 1695, 255}, 32, kRightAligned),
    row<P, &P::cboErrHow, &P::Frame3>("", {1920, 2750, 2895, 315}, 3, 0),
    row<P, &P::lblErrTxt, &P::Frame3>("Fehlerbeschreibung:", {360, 3560, 1455, 255}, 33, kRightAligned),
    row<P, &P::txtErrtxt, &P::Frame3>("", {1920, 3540, 6015, 1695}, 6, kMultiLine),
    row<P, &P::lblOS, &P::Frame3>("Betriebssystem:", {710, 3160, 1095, 255}, 31, kRightAligned),
    row<P, &P::cboOS, &P::Frame3>("", {1920, 3130, 2895, 315}, 4, 0),
    row<P, &P::lblServicePack, &P::Frame3>("ServicePack:", {4920, 3160, 975, 255}, 30, kRightAligned),
    row<P, &P::cboServicePack, &P::Frame3>("", {6000, 3130, 1935, 315}, 5, 0),
    row<P, &P::lblEMail, &P::Frame3>("E-Mail-Adresse:", {600, 5360, 1215, 255}, 29, kRightAligned),
    row<P, &P::txtEMail, &P::Frame3>("", {1920, 5340, 3135, 285}, 7, 0),
};
// clang-format on

}  // namespace

BugReportPage::BugReportPage(MainWindow& ofWindow) : PageOf(ofWindow, Frame3) {
    connect();
}

std::span<const Row<BugReportPage>> BugReportPage::rows() {
    return kRows;
}

}  // namespace bromvale

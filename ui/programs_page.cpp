#include "ui/programs_page.h"

#include "platform/keys.h"

namespace bromvale {
namespace {

using P = ProgramsPage;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame4>("Installierte Programme", kPagePlace, 22, kHidden | kArrowPointer),
    row<P, &P::cmdDeinstallRefresh, &P::Frame4>("Aktualisieren", {1680, 6000, 1335, 375}, 25, 0, kButtonFollows,
        on<&Button::onClick, &P::cmdDeinstallRefresh_Click>()),
    row<P, &P::cmdDeinstall, &P::Frame4>("Deinstallieren", {240, 6000, 1335, 375}, 24, 0, kButtonFollows,
        on<&Button::onClick, &P::cmdDeinstall_Click>()),
    row<P, &P::lvwDeinstall, &P::Frame4>("", {240, 360, 7815, 5535}, 23, kMultiSelect, kListFollows, kListEvents,
        on<&ListView::onDblClick, &P::cmdDeinstall_Click>()),
    row<P, &P::mnuPopUpDeinst>("<popup deinst>", {}, -1, 0),
    row<P, &P::mnuPopUpDeinstDeinstall, &P::mnuPopUpDeinst>("markiertes Programm &deinstallieren", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdDeinstall_Click>()),
    row<P, &P::mnuPopUpDeinstRefresh, &P::mnuPopUpDeinst>("&Ansicht aktualisieren", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdDeinstallRefresh_Click>()),
};
// clang-format on

// Width 0 hides a column that carries data for the code.
constexpr ColumnRow kColumns[] = {
    {"Programmbezeichnung", 7521}, {"Deinstallationsaufruf", 0}, {"HKEY", 0}, {"Sub KEY", 0}};

constexpr ListKey kKeys[] = {
    sortKey(VK_F4, 1), actKey<&P::ShowDeinstall>(VK_F5), actKey<&P::cmdDeinstall_Click>(VK_CLEAR),
    actKey<&P::cmdDeinstall_Click>(VK_DELETE), actKey<&P::cmdDeinstall_Click>(VK_RETURN)};

constexpr CountedCaption kCaptions[] = {
    counted<&P::mnuPopUpDeinstDeinstall>("markiertes Programm &deinstallieren",
                                         "markierte Programme &deinstallieren"),
    counted<&P::mnuPopUpDeinstRefresh>("&Ansicht aktualisieren", "&Ansicht aktualisieren")};

constexpr ListRules kRules{"Installierte Programme", kColumns, kKeys, kCaptions};

}  // namespace

ProgramsPage::ProgramsPage(MainWindow& ofWindow)
    : PageOf(ofWindow, Frame4, lvwDeinstall, mnuPopUpDeinst, kRules) {
    connect();
}

std::span<const Row<ProgramsPage>> ProgramsPage::rows() {
    return kRows;
}

}  // namespace bromvale

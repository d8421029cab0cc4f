#include "ui/backup_page.h"

#include "platform/keys.h"

namespace bromvale {
namespace {

using P = BackupPage;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame2>("Backup-Bereich", kPagePlace, 17, kHidden | kArrowPointer),
    row<P, &P::cmdLöschen, &P::Frame2>("Löschen", {2640, 6000, 1095, 375}, 21, 0, kButtonFollows,
        on<&Button::onClick, &P::cmdLöschen_Click>()),
    row<P, &P::cmdEintragen, &P::Frame2>("Eintragen", {1440, 6000, 1095, 375}, 20, 0, kButtonFollows,
        on<&Button::onClick, &P::cmdEintragen_Click>()),
    row<P, &P::cmdBearbeiten, &P::Frame2>("Bearbeiten", {240, 6000, 1095, 375}, 19, 0, kButtonFollows,
        on<&Button::onClick, &P::cmdBearbeiten_Click>()),
    row<P, &P::lvwBackup, &P::Frame2>("", {240, 360, 7815, 5535}, 18, kMultiSelect, kListFollows, kListEvents,
        on<&ListView::onDblClick, &P::cmdBearbeiten_Click>()),
    row<P, &P::mnuPopUpBackup>("<popup backup>", {}, -1, 0),
    row<P, &P::mnuPopUpBackupBearbeiten, &P::mnuPopUpBackup>("markierte(n) Eintrag &bearbeiten", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdBearbeiten_Click>()),
    row<P, &P::mnuPopUpBackupEinfügen, &P::mnuPopUpBackup>("markierte(n) Eintrag ein&fügen", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdEintragen_Click>()),
    row<P, &P::mnuPopUpBackupLöschen, &P::mnuPopUpBackup>("markierte(n) Eintrag lö&schen", {}, -1, 0,
        on<&MenuItem::onClick, &P::cmdLöschen_Click>()),
};
// clang-format on

constexpr ColumnRow kColumns[] = {{"Dateiname", 4351}, {"Größe", 1500}, {"Erstellt", 1900}};

constexpr ListKey kKeys[] = {sortKey(VK_F4, 1),
                             actKey<&P::ReadBackupFiles>(VK_F5),
                             sortKey(VK_F6, 2),
                             sortKey(VK_F7, 3),
                             actKey<&P::cmdEintragen_Click>(VK_F8),
                             actKey<&P::cmdLöschen_Click>(VK_CLEAR),
                             actKey<&P::cmdLöschen_Click>(VK_DELETE),
                             actKey<&P::cmdBearbeiten_Click>(VK_RETURN),
                             actKey<&P::cmdBearbeiten_Click>(VK_EXECUTE)};

// The captions lose the access keys of the design with the first release; the menu has never got them
// back.
constexpr CountedCaption kCaptions[] = {
    counted<&P::mnuPopUpBackupBearbeiten>("markierten Eintrag bearbeiten", "markierte Einträge bearbeiten"),
    counted<&P::mnuPopUpBackupEinfügen>("markierten Eintrag einfügen", "markierte Einträge einfügen"),
    counted<&P::mnuPopUpBackupLöschen>("markierten Eintrag löschen", "markierte Einträge löschen")};

constexpr ListRules kRules{"Sicherungsdateien", kColumns, kKeys, kCaptions};

}  // namespace

BackupPage::BackupPage(MainWindow& ofWindow) : PageOf(ofWindow, Frame2, lvwBackup, mnuPopUpBackup, kRules) {
    connect();
}

std::span<const Row<BackupPage>> BackupPage::rows() {
    return kRows;
}

}  // namespace bromvale

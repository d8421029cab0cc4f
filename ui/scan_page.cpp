#include "ui/scan_page.h"

#include "base/numbers.h"
#include "platform/keys.h"

namespace bromvale {
namespace {

using P = ScanPage;

// Controls in the order of the form: later ones lie further back.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Frame1>("Fehler in der Registrierung-Datenbank suchen", kPagePlace, 10, 0),
    row<P, &P::chbMarkierteKeysEntfernen, &P::Frame1>(
        "nur markierte Einträge entfernen", {4560, 6060, 2655, 255}, 78, kDisabled, {.top = 1120}),
    row<P, &P::chbRegKeysShow, &P::Frame1>("Ergebnis anzeigen", {2760, 6060, 1695, 255}, 16, kDisabled,
        {.top = 1120}, on<&CheckBox::onClick, &P::chbRegKeysShow_Click>()),
    row<P, &P::cmdAbbrechen, &P::Frame1>("&Abbrechen", {1440, 6000, 1095, 375}, 15, kCancelButton | kArrowPointer,
        kButtonFollows, on<&Button::onClick, &P::cmdAbbrechen_Click>()),
    row<P, &P::cmdStart, &P::Frame1>("&Start", {240, 6000, 1095, 375}, 14, kDefaultButton, kButtonFollows,
        on<&Button::onClick, &P::cmdStart_Click>()),
    row<P, &P::lvwRegKeys, &P::Frame1>("", {240, 360, 7815, 5535}, 13, kHidden | kMultiSelect, kListFollows,
        kListEvents),
    row<P, &P::lblScanBericht, &P::Frame1>("", {240, 4560, 7815, 255}, 56, kMsSansSerif | kCentred | kAnnounced),
    row<P, &P::lblScanProzent, &P::Frame1>("", {3360, 4230, 1575, 300}, 55, kMsSansSerif | kCentred | kAnnounced),
    row<P, &P::lblScanTxt, &P::Frame1>("", {240, 3960, 7815, 255}, 54, kMsSansSerif | kCentred | kAnnounced),
    row<P, &P::lblStartText, &P::Frame1>("", {240, 420, 7815, 3375}, 11, kTahoma),
    row<P, &P::mnuPopUpRegKey>("<popup regkey>", {}, -1, 0),
    row<P, &P::mnuPopUpRegKeyEinzeln, &P::mnuPopUpRegKey>("&markierte Eintrag entfernen", {}, -1, 0,
        on<&MenuItem::onClick, &P::mnuPopUpRegKeyEinzeln_Click>()),
    row<P, &P::mnuPopUpRegKeyAlle, &P::mnuPopUpRegKey>("&alle Einträge entfernen", {}, -1, 0,
        on<&MenuItem::onClick, &P::mnuPopUpRegKeyAlle_Click>()),
};
// clang-format on

// Width 0 hides a column that carries data for the code.
constexpr ColumnRow kColumns[] = {
    {"Registryschlüssel", 4301}, {"Variable", 1380}, {"Wert", 2060}, {"HKEY_ID", 0}};

// F4, F6, F7 act as clicks on the column headers. F5 is left out on purpose.
constexpr ListKey kKeys[] = {sortKey(VK_F4, 1), sortKey(VK_F6, 2), sortKey(VK_F7, 3)};

// Singular and plural have changed places; both texts stay exactly so.
constexpr CountedCaption kCaptions[] = {
    counted<&P::mnuPopUpRegKeyEinzeln>("&markierten Eintrag entfernen", "&markierte Eintrag entfernen")};

constexpr ListRules kRules{"Gefundene Fehler", kColumns, kKeys, kCaptions};

constexpr int kFaultIcon = 1;

bool shows(const ListItem& item, const ResultRow& row) {
    return item.column(kKeyLine) == row.keyLine && item.column(kValueName) == row.valueName &&
           item.column(kValueData) == row.valueData &&
           item.column(kHiveHandle) == NumberPart(row.hive).text();
}

}  // namespace

ScanPage::ScanPage(MainWindow& ofWindow) : PageOf(ofWindow, Frame1, lvwRegKeys, mnuPopUpRegKey, kRules) {
    connect();
}

std::span<const Row<ScanPage>> ScanPage::rows() {
    return kRows;
}

void ScanPage::addRow(const ResultRow& row) {
    lvwRegKeys.add({row.keyLine, row.valueName, row.valueData, NumberPart(row.hive).text()}, kFaultIcon);
}

void ScanPage::takeBackRow(const ResultRow& row) {
    for (int number = lvwRegKeys.count(); number >= 1; --number) {
        if (shows(lvwRegKeys.item(number), row)) return lvwRegKeys.remove(number);
    }
}

ResultRow ScanPage::rowAt(int number) const {
    const ListItem& item = lvwRegKeys.item(number);
    return {item.column(kKeyLine), item.column(kValueName), item.column(kValueData),
            toInt32(item.column(kHiveHandle))};
}

}  // namespace bromvale

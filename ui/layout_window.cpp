#include "resources/resource_ids.h"
#include "ui/layout_main.h"

namespace bromvale {
namespace {

using K = ControlKind;

// clang-format off
constexpr ControlRow kRows[] = {
    {"Menu", K::ListBar, "", nullptr, {120, 210, 1575, 6555}, 0, 0},
    {"imgMenu1", K::ImageList, "", nullptr, {}, -1, 0},
    {"imgList", K::ImageList, "", nullptr, {}, -1, 0},
    {"ProgressBar", K::ProgressBar, "", nullptr, {7515, 6990, 2650, 195}, 12, 0},
    {"StatusBar", K::StatusBar, "", nullptr, {0, 6945, 10395, 255}, 9, 0},
    {"tmrTimer", K::Timer, "", nullptr, {}, -1, kDisabled},
    {"winsock", K::Socket, "", nullptr, {}, -1, 0},
};

constexpr ControlRow kMenuRows[] = {
    {"mnuPopUp", K::Menu, "<popup menu>", nullptr, {}, -1, 0},
    {"mnuPopUpShowForm", K::Menu, "&Zeige Programm", "mnuPopUp", {}, -1, kDisabled},
    {"mnuPopUpStartScan", K::Menu, "&Scan starten", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpBackupZeigen", K::Menu, "B&ackup-Bereich", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpDeinstall", K::Menu, "Programme &deinstallieren", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpBugReport", K::Menu, "Bug-&Report", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpLiveUpdate", K::Menu, "&Live-Update", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpOptionen", K::Menu, "&Optionen", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpStep1", K::Menu, "-", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpAbout", K::Menu, "&Über", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpQuit", K::Menu, "&Beenden", "mnuPopUp", {}, -1, 0},
    {"mnuPopUpRegKey", K::Menu, "<popup regkey>", nullptr, {}, -1, 0},
    {"mnuPopUpRegKeyEinzeln", K::Menu, "&markierte Eintrag entfernen", "mnuPopUpRegKey", {}, -1, 0},
    {"mnuPopUpRegKeyAlle", K::Menu, "&alle Einträge entfernen", "mnuPopUpRegKey", {}, -1, 0},
    {"mnuPopUpDeinst", K::Menu, "<popup deinst>", nullptr, {}, -1, 0},
    {"mnuPopUpDeinstDeinstall", K::Menu, "markiertes Programm &deinstallieren", "mnuPopUpDeinst", {}, -1, 0},
    {"mnuPopUpDeinstRefresh", K::Menu, "&Ansicht aktualisieren", "mnuPopUpDeinst", {}, -1, 0},
    {"mnuPopUpBackup", K::Menu, "<popup backup>", nullptr, {}, -1, 0},
    {"mnuPopUpBackupBearbeiten", K::Menu, "markierte(n) Eintrag &bearbeiten", "mnuPopUpBackup", {}, -1, 0},
    {"mnuPopUpBackupEinfügen", K::Menu, "markierte(n) Eintrag ein&fügen", "mnuPopUpBackup", {}, -1, 0},
    {"mnuPopUpBackupLöschen", K::Menu, "markierte(n) Eintrag lö&schen", "mnuPopUpBackup", {}, -1, 0},
    {"mnuPopUpOrdner", K::Menu, "<popup ordner>", nullptr, {}, -1, 0},
    {"mnuPopUpOrdnerHinzufügen", K::Menu, "neuen Ordner der Liste &hinzufügen", "mnuPopUpOrdner", {}, -1, 0},
    {"mnuPopUpOrdnerEntfernen", K::Menu,
     "markierten &Ordner aus Liste entfernen", "mnuPopUpOrdner", {}, -1, 0},
    {"mnuPopUpOrdnerEinzeln", K::Menu, "mark&ierte(n) Ordner leeren", "mnuPopUpOrdner", {}, -1, 0},
    {"mnuPopUpOrdnerAlle", K::Menu, "alle Ordner l&eeren", "mnuPopUpOrdner", {}, -1, 0},
};

// clang-format on

// Width 0 hides a column that carries data for the code. Panel 1 takes the width that the window leaves it,
// panel 3 lies below the progress bar.
constexpr ColumnRow kColumns[] = {
    {"lvwRegKeys", "Registryschlüssel", 4301},
    {"lvwRegKeys", "Variable", 1380},
    {"lvwRegKeys", "Wert", 2060},
    {"lvwRegKeys", "HKEY_ID", 0},
    {"lvwBackup", "Dateiname", 4351},
    {"lvwBackup", "Größe", 1500},
    {"lvwBackup", "Erstellt", 1900},
    {"lvwDeinstall", "Programmbezeichnung", 7521},
    {"lvwDeinstall", "Deinstallationsaufruf", 0},
    {"lvwDeinstall", "HKEY", 0},
    {"lvwDeinstall", "Sub KEY", 0},
    {"lvwOrdnerList", "Ordnername", 7500},
    {"StatusBar", "Status", 5195},
    {"StatusBar", "", 2300},
    {"StatusBar", "", 2721},
};

// The keys of the navigation pictures are the captions of the navigation items.
constexpr ImageRow kImages[] = {
    {"imgMenu1", "Registry Scan starten", BROMVALE_ICON_NAV_FIRST},
    {"imgMenu1", "Backup", BROMVALE_ICON_NAV_FIRST + 1},
    {"imgMenu1", "Registriereditor starten", BROMVALE_ICON_NAV_FIRST + 2},
    {"imgMenu1", "Hilfe", BROMVALE_ICON_NAV_FIRST + 3},
    {"imgMenu1", "Beenden", BROMVALE_ICON_NAV_FIRST + 4},
    {"imgMenu1", "Programme deinstallieren", BROMVALE_ICON_NAV_FIRST + 5},
    {"imgMenu1", "Festplatte aufräumen", BROMVALE_ICON_NAV_FIRST + 6},
    {"imgMenu1", "Optionen", BROMVALE_ICON_NAV_FIRST + 7},
    {"imgMenu1", "Bug-Report", BROMVALE_ICON_NAV_FIRST + 8},
    {"imgMenu1", "Live-Update", BROMVALE_ICON_NAV_FIRST + 9},
    {"imgMenu1", "Homepage", BROMVALE_ICON_NAV_FIRST + 10},
    {"imgList", "RZIcon", BROMVALE_ICON_LIST_FIRST},
    {"imgList", "BinärIcon", BROMVALE_ICON_LIST_FIRST + 1},
    {"imgList", "RegFileIcon", BROMVALE_ICON_LIST_FIRST + 2},
    {"imgList", "TaskbarIcon", BROMVALE_ICON_LIST_TASKBAR},
    {"imgList", "DeinstallIcon", BROMVALE_ICON_LIST_FIRST + 4},
    {"imgList", "OrdnerIcon", BROMVALE_ICON_LIST_FIRST + 5},
};

}  // namespace

std::span<const ControlRow> layoutWindow() {
    return kRows;
}
std::span<const ControlRow> layoutMenus() {
    return kMenuRows;
}
std::span<const ColumnRow> layoutColumns() {
    return kColumns;
}
std::span<const ImageRow> layoutImages() {
    return kImages;
}

}  // namespace bromvale

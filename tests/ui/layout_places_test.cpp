// Where every control of the main window stands, which tab position it has and what it says.
#include <algorithm>
#include <array>
#include <iterator>

#include "tests/ui/form_rows.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

struct Designed {
    std::string_view name;
    std::string_view container;
    Place place;  // a line's width and height lead to its second point
    int tab;
    std::string_view caption;
};

// clang-format off
constexpr Designed kDesigned[] = {
    {"Menu", "", {120, 210, 1575, 6555}, 0, ""},
    {"StatusBar", "", {0, 6945, 10395, 255}, 9, ""},
    {"ProgressBar", "", {7515, 6990, 2650, 195}, 12, ""},
    {"chbMarkierteKeysEntfernen", "Frame1", {4560, 6060, 2655, 255}, 78, "nur markierte Einträge entfernen"},
    {"chbRegKeysShow", "Frame1", {2760, 6060, 1695, 255}, 16, "Ergebnis anzeigen"},
    {"cmdAbbrechen", "Frame1", {1440, 6000, 1095, 375}, 15, "&Abbrechen"},
    {"cmdStart", "Frame1", {240, 6000, 1095, 375}, 14, "&Start"},
    {"lvwRegKeys", "Frame1", {240, 360, 7815, 5535}, 13, ""},
    {"lblScanBericht", "Frame1", {240, 4560, 7815, 255}, 56, ""},
    {"lblScanProzent", "Frame1", {3360, 4230, 1575, 300}, 55, ""},
    {"lblScanTxt", "Frame1", {240, 3960, 7815, 255}, 54, ""},
    {"lblStartText", "Frame1", {240, 420, 7815, 3375}, 11, ""},
    {"cmdLöschen", "Frame2", {2640, 6000, 1095, 375}, 21, "Löschen"},
    {"cmdEintragen", "Frame2", {1440, 6000, 1095, 375}, 20, "Eintragen"},
    {"cmdBearbeiten", "Frame2", {240, 6000, 1095, 375}, 19, "Bearbeiten"},
    {"lvwBackup", "Frame2", {240, 360, 7815, 5535}, 18, ""},
    {"cmdBugReportSenden", "Frame3", {240, 6000, 1335, 375}, 8, "Bericht senden"},
    {"cmdBugReportLöschen", "Frame3", {1680, 6000, 1335, 375}, 28, "Bericht löschen"},
    {"txtAppVer", "Frame3", {1920, 480, 975, 285}, 27, ""},
    {"txtErrNr", "Frame3", {1920, 840, 975, 285}, 1, ""},
    {"txtErrDesc", "Frame3", {1920, 1200, 6015, 1455}, 2, ""},
    {"cboErrHow", "Frame3", {1920, 2750, 2895, 315}, 3, ""},
    {"txtErrtxt", "Frame3", {1920, 3540, 6015, 1695}, 6, ""},
    {"cboOS", "Frame3", {1920, 3130, 2895, 315}, 4, ""},
    {"cboServicePack", "Frame3", {6000, 3130, 1935, 315}, 5, ""},
    {"txtEMail", "Frame3", {1920, 5340, 3135, 285}, 7, ""},
    {"lblAppVer", "Frame3", {1080, 490, 735, 255}, 36, "Version:"},
    {"lblErrNr", "Frame3", {720, 850, 1095, 255}, 35, "Fehlernummer:"},
    {"lblErrDesc", "Frame3", {600, 1200, 1215, 255}, 34, "Fehlertext:"},
    {"lblErrTxt", "Frame3", {360, 3560, 1455, 255}, 33, "Fehlerbeschreibung:"},
    {"lblErrHow", "Frame3", {120, 2790, 1695, 255}, 32, "Wo trat der Fehler auf?"},
    {"lblOS", "Frame3", {710, 3160, 1095, 255}, 31, "Betriebssystem:"},
    {"lblServicePack", "Frame3", {4920, 3160, 975, 255}, 30, "ServicePack:"},
    {"lblEMail", "Frame3", {600, 5360, 1215, 255}, 29, "E-Mail-Adresse:"},
    {"cmdDeinstallRefresh", "Frame4", {1680, 6000, 1335, 375}, 25, "Aktualisieren"},
    {"cmdDeinstall", "Frame4", {240, 6000, 1335, 375}, 24, "Deinstallieren"},
    {"lvwDeinstall", "Frame4", {240, 360, 7815, 5535}, 23, ""},
    {"Frame8Internet", "Frame5", {4200, 2640, 3735, 1455}, 70, "Internetverbindung"},
    {"txtProxyAdresse", "Frame8Internet", {960, 960, 1335, 285}, 76, ""},
    {"txtProxyPort", "Frame8Internet", {2880, 960, 495, 285}, 73, ""},
    {"rdoINet2", "Frame8Internet", {240, 580, 2415, 255}, 72, "Verbindung über Proxyserver"},
    {"rdoINet1", "Frame8Internet", {240, 300, 2415, 255}, 71, "Standard (ohne Proxyserver)"},
    {"lblProxyAdresse", "Frame8Internet", {120, 985, 735, 255}, 75, "Adresse:"},
    {"lblProxyport", "Frame8Internet", {2400, 985, 375, 255}, 74, "Port:"},
    {"cmdÜbernehmen", "Frame5", {240, 6000, 1335, 375}, 53, "&Übernehmen"},
    {"Frame6", "Frame5", {240, 360, 7695, 2055}, 43, "Allgemein"},
    {"chbAutoFileDelAfterReentry", "Frame6", {4080, 660, 3375, 255}, 59,
     "Sicherungsdatei nach Eintragen löschen"},
    {"chbRebootAfterEntry", "Frame6", {4080, 360, 3255, 255}, 58, "Neustart nach Eintragen entfernter Keys"},
    {"chbAutoRegFileDel", "Frame6", {4080, 960, 2895, 255}, 57, "Sicherungsdatei nach Zeit löschen"},
    {"chbRebootAfterDelete", "Frame6", {240, 1580, 3015, 255}, 52, "Neustart nach Entfernen der Probleme"},
    {"chbProtokoll", "Frame6", {4080, 1580, 2295, 255}, 51, "Protokollierung einschalten"},
    {"chbScreenSave", "Frame6", {240, 360, 2295, 255}, 48, "Bildschirmposition speichern"},
    {"chbAutoScan", "Frame6", {240, 600, 2895, 375}, 47, "Registry Scan automatisch starten"},
    {"chbAutoClose", "Frame6", {240, 1280, 2775, 255}, 46, "Nach Scan Programm beenden"},
    {"chbAutoEntfernen", "Frame6", {240, 960, 3135, 255}, 45, "Probleme automatisch entfernen"},
    {"cboAutoRegFileDel", "Frame6", {5160, 1245, 615, 315}, 44, ""},
    {"Line1", "Frame6", {3840, 240, 0, 1680}, -1, ""},
    {"lblAutoRegFileDel2", "Frame6", {5865, 1280, 1215, 255}, 50, "Tagen löschen"},
    {"lblAutoRegFileDel1", "Frame6", {4080, 1280, 1095, 255}, 49, "Dateien nach"},
    {"Frame4Agents", "Frame5", {240, 2640, 3735, 1455}, 38, "Animation"},
    {"cboAgentType", "Frame4Agents", {720, 720, 1215, 315}, 40, ""},
    {"chbLoadAgent", "Frame4Agents", {240, 360, 2055, 255}, 39, "Animation anzeigen"},
    {"lblNoAgents", "Frame4Agents", {240, 1080, 3375, 255}, 42, "Es ist kein MS Agent installiert."},
    {"lblAgentType", "Frame4Agents", {120, 775, 495, 255}, 41, "Type:"},
    {"chbDelFilePermanent", "Frame7", {3240, 5040, 4695, 195}, 77,
     "Dateien permanent löschen (nicht in Papierkorb verschieben)"},
    {"cmdInhaltLöschen", "Frame7", {3120, 3960, 1335, 375}, 69, "Ordner leeren"},
    {"cmdOrdnerLöschen", "Frame7", {1680, 3960, 1335, 375}, 68, "Ordner löschen"},
    {"cmdOrdnerWählen", "Frame7", {240, 3960, 1335, 375}, 67, "Ordner wählen"},
    {"lvwOrdnerList", "Frame7", {240, 2280, 7815, 1575}, 65, ""},
    {"chbTempFilesDel", "Frame7", {240, 5040, 2895, 255}, 64, "automatisches Löschen einschalten"},
    {"cmdHDDBereinigen", "Frame7", {240, 1200, 1335, 375}, 61, "Platte bereinigen"},
    {"lblOrdnerManuell", "Frame7", {240, 2000, 7815, 255}, 66,
     "Hier können Sie Ordner hinzufügen, die beim Start von Windows geleert werden sollen."},
    {"lblTempFileDel", "Frame7", {240, 4560, 7815, 495}, 63,
     "Hier können Sie das Löschen der Dateien der in der oberen Liste eingetragenen Ordner beim "
     "Start von Windows ein- bzw. ausschalten. Die Dateien werden in den Windows Papierkorb "
     "verschoben."},
    {"Line2", "Frame7", {240, 1720, 7800, 0}, -1, ""},
    {"lblHDDBereinigen", "Frame7", {240, 480, 7815, 615}, 62,
     "Microsoft liefert mit dem Betriebssystem Windows ein verstecktes Programm aus, mit dem der "
     "Papierkorb, temporäre Programmdateien und temporäre Internetdateien, wieder entfernen kann. "
     "Hier kann das Programm schnell gestartet werden."},
};
// clang-format on

// The pages' own frames and the menus are told elsewhere.
std::vector<FormRow> placedRows() {
    std::vector<FormRow> rows = rowsOf(frmMain());
    std::erase_if(rows, [](const FormRow& row) {
        const bool isPage = row.kind == ControlKind::Frame && row.container.empty();
        return isPage || row.kind == ControlKind::ImageList || row.kind == ControlKind::Timer ||
               row.kind == ControlKind::Socket || row.kind == ControlKind::Menu;
    });
    return rows;
}

std::string namesWith(LayoutFlag flag) {
    std::string names;
    for (const FormRow& row : placedRows()) {
        if ((row.facts.flags & flag) != 0) names += row.name + " ";
    }
    return names;
}

using LayoutPlaces = MainFormTest;

TEST_F(LayoutPlaces, EveryControlStandsAsDesigned) {
    const std::vector<FormRow> rows = placedRows();
    EXPECT_EQ(rows.size(), std::size(kDesigned));
    for (const Designed& wanted : kDesigned) {
        const auto row = std::ranges::find(rows, std::string(wanted.name), &FormRow::name);
        ASSERT_NE(row, rows.end()) << wanted.name;
        EXPECT_EQ(row->container, wanted.container) << wanted.name;
        EXPECT_EQ(row->facts.place, wanted.place) << wanted.name;
        EXPECT_EQ(row->facts.tab, wanted.tab) << wanted.name;
        EXPECT_EQ(row->facts.caption, wanted.caption) << wanted.name;
    }
}

// What the window does with a row: before anything is resized a control stands where its row says.
TEST_F(LayoutPlaces, TheWindowTakesPlacesFromTheRows) {
    const FrmMain& form = frmMain();
    EXPECT_EQ(form.options.chbProtokoll.place(), (Place{4080, 1580, 2295, 255}));
    EXPECT_EQ(form.options.chbProtokoll.tabIndex(), 51);
    EXPECT_EQ(form.bugReport.txtErrDesc.place(), (Place{1920, 1200, 6015, 1455}));
    EXPECT_EQ(form.bugReport.txtErrDesc.tabIndex(), 2);
}

TEST_F(LayoutPlaces, DisabledAtDesign) {
    EXPECT_EQ(namesWith(kDisabled),
              "chbMarkierteKeysEntfernen chbRegKeysShow txtAppVer cmdÜbernehmen lblAutoRegFileDel1 "
              "cboAutoRegFileDel lblAutoRegFileDel2 lblAgentType cboAgentType ");
}

TEST_F(LayoutPlaces, HiddenAtDesign) {
    EXPECT_EQ(namesWith(kHidden), "lvwRegKeys lblNoAgents ");
}

TEST_F(LayoutPlaces, TwoBoxesHoldSeveralLinesAndOneListIsSorted) {
    EXPECT_EQ(namesWith(kMultiLine), "txtErrDesc txtErrtxt ");
    EXPECT_EQ(namesWith(kSortedItems), "cboAgentType ");
    EXPECT_TRUE(frmMain().bugReport.txtErrDesc.multiLine());
    EXPECT_TRUE(frmMain().options.cboAgentType.sorted());
}

}  // namespace
}  // namespace bromvale::testing

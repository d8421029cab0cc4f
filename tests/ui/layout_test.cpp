// The layout tables against the window that they describe.
#include <algorithm>
#include <map>
#include <set>

#include "base/failure.h"
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_error.h"
#include "ui/layout_error.h"
#include "ui/layout_main.h"

namespace bromvale::testing {
namespace {

std::vector<ControlRow> allRows() {
    std::vector<ControlRow> rows;
    for (const auto page : {layoutWindow(), layoutScan(), layoutBackup(), layoutBugReport(), layoutPrograms(),
                            layoutOptions(), layoutCleanup(), layoutMenus()}) {
        rows.insert(rows.end(), page.begin(), page.end());
    }
    return rows;
}

void expectOneRowEach(const Form& form, const std::vector<ControlRow>& rows) {
    std::map<std::string, ControlKind> table;
    for (const ControlRow& row : rows)
        EXPECT_TRUE(table.emplace(row.name, row.kind).second) << row.name << " twice";
    EXPECT_EQ(table.size(), form.controls().size());
    for (const Control* control : form.controls()) {
        const auto row = table.find(control->name());
        ASSERT_NE(row, table.end()) << control->name() << " has no row";
        EXPECT_EQ(row->second, control->kind()) << control->name();
    }
}

using Layout = MainFormTest;

TEST_F(Layout, EveryControlOfTheMainWindowHasOneRowOfItsKind) {
    expectOneRowEach(frmMain(), allRows());
}

TEST_F(Layout, EveryControlOfTheErrorDialogHasOneRowOfItsKind) {
    const auto rows = layoutError();
    expectOneRowEach(frmError(), {rows.begin(), rows.end()});
}

TEST_F(Layout, NoTwoControlsShareATabPosition) {
    std::set<int> tabs;
    for (const ControlRow& row : allRows()) {
        if (row.tab < 0) continue;
        EXPECT_TRUE(tabs.insert(row.tab).second) << row.name << " " << row.tab;
    }
    EXPECT_EQ(tabs.size(), 79u);
    EXPECT_EQ(*tabs.begin(), 0);
    EXPECT_EQ(*tabs.rbegin(), 78);
}

TEST_F(Layout, PagesLieOnTheSameSpotAndHoldTheirControls) {
    FrmMain& form = frmMain();
    for (const Frame* page :
         {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4, &form.Frame5, &form.Frame7}) {
        EXPECT_EQ(page->left(), 1920) << page->name();
        EXPECT_EQ(page->top(), 120) << page->name();
        EXPECT_EQ(page->container(), nullptr) << page->name();
    }
    EXPECT_EQ(form.cmdStart.container(), &form.Frame1);
    EXPECT_EQ(form.cmdLöschen.container(), &form.Frame2);
    EXPECT_EQ(form.txtEMail.container(), &form.Frame3);
    EXPECT_EQ(form.lvwDeinstall.container(), &form.Frame4);
    EXPECT_EQ(form.Frame6.container(), &form.Frame5);
    EXPECT_EQ(form.txtProxyPort.container(), &form.Frame8Internet);
    EXPECT_EQ(form.chbLoadAgent.container(), &form.Frame4Agents);
    EXPECT_EQ(form.Line1.container(), &form.Frame6);
    EXPECT_EQ(form.Line2.container(), &form.Frame7);
}

TEST_F(Layout, CaptionsAreExact) {
    FrmMain& form = frmMain();
    EXPECT_EQ(form.Frame1.caption(), "Fehler in der Registrierung-Datenbank suchen");
    EXPECT_EQ(form.Frame2.caption(), "Backup-Bereich");
    EXPECT_EQ(form.Frame3.caption(), "Online Bug-Report");
    EXPECT_EQ(form.Frame4.caption(), "Installierte Programme");
    EXPECT_EQ(form.Frame5.caption(), "Optionen");
    EXPECT_EQ(form.Frame7.caption(), "Festplatte von nicht benötigten Dateien bereinigen");
    EXPECT_EQ(form.cmdÜbernehmen.caption(), "&Übernehmen");
    EXPECT_EQ(form.chbMarkierteKeysEntfernen.caption(), "nur markierte Einträge entfernen");
    EXPECT_EQ(form.rdoINet2.caption(), "Verbindung über Proxyserver");
    EXPECT_EQ(form.chbAutoFileDelAfterReentry.caption(), "Sicherungsdatei nach Eintragen löschen");
    EXPECT_EQ(form.cmdBugReportLöschen.caption(), "Bericht löschen");
    EXPECT_EQ(form.cmdOrdnerWählen.caption(), "Ordner wählen");
    EXPECT_EQ(
        form.lblTempFileDel.caption(),
        "Hier können Sie das Löschen der Dateien der in der oberen Liste eingetragenen Ordner beim Start von "
        "Windows ein- bzw. ausschalten. Die Dateien werden in den Windows Papierkorb verschoben.");
    EXPECT_EQ(form.mnuPopUpRegKeyAlle.caption(), "&alle Einträge entfernen");
}

TEST_F(Layout, TheListsHaveTheirColumns) {
    FrmMain& form = frmMain();
    const auto text = [](const ListView& list) {
        std::string all;
        for (const auto& column : list.columns()) {
            all += column.heading + " " + std::to_string(column.width) + "; ";
        }
        return all;
    };
    EXPECT_EQ(text(form.lvwRegKeys), "Registryschlüssel 4301; Variable 1380; Wert 2060; HKEY_ID 0; ");
    EXPECT_EQ(text(form.lvwBackup), "Dateiname 4351; Größe 1500; Erstellt 1900; ");
    EXPECT_EQ(text(form.lvwDeinstall),
              "Programmbezeichnung 7521; Deinstallationsaufruf 0; HKEY 0; Sub KEY 0; ");
    EXPECT_EQ(text(form.lvwOrdnerList), "Ordnername 7500; ");
    for (const ListView* list :
         {&form.lvwRegKeys, &form.lvwBackup, &form.lvwDeinstall, &form.lvwOrdnerList}) {
        EXPECT_EQ(list->smallIcons(), &form.imgList) << list->name();
        EXPECT_TRUE(list->multiSelect()) << list->name();
        EXPECT_FALSE(list->sorted()) << list->name();
    }
}

TEST_F(Layout, TheImageListsHaveTheirKeysInOrder) {
    FrmMain& form = frmMain();
    const auto keys = [](const ImageList& images) {
        std::vector<std::string> all;
        for (int n = 1; n <= images.count(); ++n) all.push_back(images.key(n));
        return all;
    };
    EXPECT_EQ(keys(form.imgMenu1), (std::vector<std::string>{
                                       "Registry Scan starten", "Backup", "Registriereditor starten", "Hilfe",
                                       "Beenden", "Programme deinstallieren", "Festplatte aufräumen",
                                       "Optionen", "Bug-Report", "Live-Update", "Homepage"}));
    EXPECT_EQ(keys(form.imgList), (std::vector<std::string>{"RZIcon", "BinärIcon", "RegFileIcon",
                                                            "TaskbarIcon", "DeinstallIcon", "OrdnerIcon"}));
    EXPECT_EQ(form.imgMenu1.size(), 32);
    EXPECT_EQ(form.imgList.size(), 16);
    EXPECT_EQ(form.imgMenu1.resourceId(11), 111);
    EXPECT_EQ(form.imgList.resourceId(4), 204);
    EXPECT_THROW(static_cast<void>(form.imgList.key(7)), Failure);
}

TEST_F(Layout, ControlsStartEnabledAndVisibleAsDesigned) {
    FrmMain& form = frmMain();
    for (const Control* control : std::vector<const Control*>{
             &form.chbMarkierteKeysEntfernen, &form.chbRegKeysShow, &form.cmdÜbernehmen,
             &form.cboAutoRegFileDel, &form.lblAutoRegFileDel1, &form.lblAutoRegFileDel2, &form.txtAppVer,
             &form.cboAgentType, &form.chbLoadAgent, &form.lblAgentType, &form.tmrTimer, &form.cboOS}) {
        EXPECT_FALSE(control->enabled()) << control->name();
    }
    for (const Control* control :
         std::vector<const Control*>{&form.cmdStart, &form.cmdAbbrechen, &form.Menu, &form.cboServicePack,
                                     &form.chbDelFilePermanent, &form.rdoINet1, &form.mnuPopUpShowForm}) {
        EXPECT_TRUE(control->enabled()) << control->name();
    }
    EXPECT_FALSE(form.lvwRegKeys.visible());
    EXPECT_TRUE(form.lvwBackup.visible());
    EXPECT_EQ(form.txtAppVer.backColor(), BackColor::Greyed);
}

TEST_F(Layout, FourPagesAndTheAbortButtonKeepTheArrowPointer) {
    FrmMain& form = frmMain();
    std::string arrows;
    for (const Control* control : form.controls()) {
        if (control->mousePointer() == MousePointer::Arrow) arrows += control->name() + " ";
    }
    EXPECT_EQ(arrows, "cmdAbbrechen Frame2 Frame3 Frame4 Frame5 ");
}

TEST_F(Layout, TheScanPageHasTheDefaultAndTheCancelButton) {
    EXPECT_EQ(frmMain().defaultButton(), &frmMain().cmdStart);
    EXPECT_EQ(frmMain().cancelButton(), &frmMain().cmdAbbrechen);
}

TEST_F(Layout, LabelsAreAlignedAsDesigned) {
    FrmMain& form = frmMain();
    std::string right;
    std::string centred;
    for (const Control* control : form.controls()) {
        if (control->kind() != ControlKind::Label) continue;
        const Alignment alignment = static_cast<const Label*>(control)->alignment();
        if (alignment == Alignment::Right) right += control->name() + " ";
        if (alignment == Alignment::Centre) centred += control->name() + " ";
    }
    EXPECT_EQ(right,
              "lblAppVer lblErrNr lblErrDesc lblErrTxt lblErrHow lblOS lblServicePack lblEMail "
              "lblProxyAdresse lblProxyport lblAgentType ");
    EXPECT_EQ(centred, "lblScanBericht lblScanProzent lblScanTxt ");
    EXPECT_EQ(form.lblStartText.font(), "Tahoma");
    EXPECT_EQ(form.lblScanTxt.font(), "MS Sans Serif");
}

TEST_F(Layout, TheRulesHaveTheirTwoPoints) {
    const Line& upright = frmMain().Line1;
    EXPECT_EQ(upright.place(), (Place{3840, 240, 0, 1680}));
    const Line& rule = frmMain().Line2;
    EXPECT_EQ(rule.left(), 240);
    EXPECT_EQ(rule.top(), 1720);
    EXPECT_EQ(rule.height(), 0);
}

TEST_F(Layout, TheMenusHoldTheirEntries) {
    FrmMain& form = frmMain();
    EXPECT_EQ(form.mnuPopUp.children(),
              (std::vector<MenuItem*>{
                  &form.mnuPopUpShowForm, &form.mnuPopUpStartScan, &form.mnuPopUpBackupZeigen,
                  &form.mnuPopUpDeinstall, &form.mnuPopUpBugReport, &form.mnuPopUpLiveUpdate,
                  &form.mnuPopUpOptionen, &form.mnuPopUpStep1, &form.mnuPopUpAbout, &form.mnuPopUpQuit}));
    EXPECT_EQ(form.mnuPopUpRegKey.children(),
              (std::vector<MenuItem*>{&form.mnuPopUpRegKeyEinzeln, &form.mnuPopUpRegKeyAlle}));
    EXPECT_EQ(form.mnuPopUpStartScan.caption(), "&Scan starten");
}

}  // namespace
}  // namespace bromvale::testing

// The layout tables against the window that they describe.
#include <algorithm>
#include <map>
#include <set>

#include "base/failure.h"
#include "tests/ui/form_rows.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

void expectOneRowEach(const Form& form, const std::vector<FormRow>& rows) {
    std::set<std::string> names;
    for (const FormRow& row : rows) EXPECT_TRUE(names.insert(row.name).second) << row.name << " twice";
    EXPECT_EQ(names.size(), form.controls().size());
    for (const Control* control : form.controls())
        EXPECT_TRUE(names.contains(control->name())) << control->name() << " has no row";
}

using Layout = MainFormTest;

TEST_F(Layout, EveryControlOfTheMainWindowHasOneRow) {
    expectOneRowEach(frmMain(), rowsOf(frmMain()));
}

TEST_F(Layout, EveryControlOfTheErrorDialogHasOneRow) {
    expectOneRowEach(frmError(), rowsOf(frmError()));
}

TEST_F(Layout, NoTwoControlsShareATabPosition) {
    std::set<int> tabs;
    for (const FormRow& row : rowsOf(frmMain())) {
        if (row.facts.tab < 0) continue;
        EXPECT_TRUE(tabs.insert(row.facts.tab).second) << row.name << " " << row.facts.tab;
    }
    EXPECT_EQ(tabs.size(), 79u);
    EXPECT_EQ(*tabs.begin(), 0);
    EXPECT_EQ(*tabs.rbegin(), 78);
}

TEST_F(Layout, PagesLieOnTheSameSpotAndHoldTheirControls) {
    FrmMain& form = frmMain();
    for (const Frame* page : {&form.scan.Frame1, &form.backup.Frame2, &form.bugReport.Frame3,
                              &form.programs.Frame4, &form.options.Frame5, &form.cleanup.Frame7}) {
        EXPECT_EQ(page->left(), 1920) << page->name();
        EXPECT_EQ(page->top(), 120) << page->name();
        EXPECT_EQ(page->container(), nullptr) << page->name();
    }
    EXPECT_EQ(form.scan.cmdStart.container(), &form.scan.Frame1);
    EXPECT_EQ(form.backup.cmdLöschen.container(), &form.backup.Frame2);
    EXPECT_EQ(form.bugReport.txtEMail.container(), &form.bugReport.Frame3);
    EXPECT_EQ(form.programs.lvwDeinstall.container(), &form.programs.Frame4);
    EXPECT_EQ(form.options.Frame6.container(), &form.options.Frame5);
    EXPECT_EQ(form.options.txtProxyPort.container(), &form.options.Frame8Internet);
    EXPECT_EQ(form.options.chbLoadAgent.container(), &form.options.Frame4Agents);
    EXPECT_EQ(form.options.Line1.container(), &form.options.Frame6);
    EXPECT_EQ(form.cleanup.Line2.container(), &form.cleanup.Frame7);
}

TEST_F(Layout, CaptionsAreExact) {
    FrmMain& form = frmMain();
    EXPECT_EQ(form.scan.Frame1.caption(), "Fehler in der Registrierung-Datenbank suchen");
    EXPECT_EQ(form.backup.Frame2.caption(), "Backup-Bereich");
    EXPECT_EQ(form.bugReport.Frame3.caption(), "Online Bug-Report");
    EXPECT_EQ(form.programs.Frame4.caption(), "Installierte Programme");
    EXPECT_EQ(form.options.Frame5.caption(), "Optionen");
    EXPECT_EQ(form.cleanup.Frame7.caption(), "Festplatte von nicht benötigten Dateien bereinigen");
    EXPECT_EQ(form.options.cmdÜbernehmen.caption(), "&Übernehmen");
    EXPECT_EQ(form.scan.chbMarkierteKeysEntfernen.caption(), "nur markierte Einträge entfernen");
    EXPECT_EQ(form.options.rdoINet2.caption(), "Verbindung über Proxyserver");
    EXPECT_EQ(form.options.chbAutoFileDelAfterReentry.caption(), "Sicherungsdatei nach Eintragen löschen");
    EXPECT_EQ(form.bugReport.cmdBugReportLöschen.caption(), "Bericht löschen");
    EXPECT_EQ(form.cleanup.cmdOrdnerWählen.caption(), "Ordner wählen");
    EXPECT_EQ(
        form.cleanup.lblTempFileDel.caption(),
        "Hier können Sie das Löschen der Dateien der in der oberen Liste eingetragenen Ordner beim Start von "
        "Windows ein- bzw. ausschalten. Die Dateien werden in den Windows Papierkorb verschoben.");
    EXPECT_EQ(form.scan.mnuPopUpRegKeyAlle.caption(), "&alle Einträge entfernen");
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
    EXPECT_EQ(text(form.scan.lvwRegKeys), "Registryschlüssel 4301; Variable 1380; Wert 2060; HKEY_ID 0; ");
    EXPECT_EQ(text(form.backup.lvwBackup), "Dateiname 4351; Größe 1500; Erstellt 1900; ");
    EXPECT_EQ(text(form.programs.lvwDeinstall),
              "Programmbezeichnung 7521; Deinstallationsaufruf 0; HKEY 0; Sub KEY 0; ");
    EXPECT_EQ(text(form.cleanup.lvwOrdnerList), "Ordnername 7500; ");
    for (const ListView* list : {&form.scan.lvwRegKeys, &form.backup.lvwBackup, &form.programs.lvwDeinstall,
                                 &form.cleanup.lvwOrdnerList}) {
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
             &form.scan.chbMarkierteKeysEntfernen, &form.scan.chbRegKeysShow, &form.options.cmdÜbernehmen,
             &form.options.cboAutoRegFileDel, &form.options.lblAutoRegFileDel1,
             &form.options.lblAutoRegFileDel2, &form.bugReport.txtAppVer, &form.options.cboAgentType,
             &form.options.chbLoadAgent, &form.options.lblAgentType, &form.tmrTimer, &form.bugReport.cboOS}) {
        EXPECT_FALSE(control->enabled()) << control->name();
    }
    for (const Control* control : std::vector<const Control*>{
             &form.scan.cmdStart, &form.scan.cmdAbbrechen, &form.Menu, &form.bugReport.cboServicePack,
             &form.cleanup.chbDelFilePermanent, &form.options.rdoINet1, &form.mnuPopUpShowForm}) {
        EXPECT_TRUE(control->enabled()) << control->name();
    }
    EXPECT_FALSE(form.scan.lvwRegKeys.visible());
    EXPECT_TRUE(form.backup.lvwBackup.visible());
    EXPECT_EQ(form.bugReport.txtAppVer.backColor(), BackColor::Greyed);
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
    EXPECT_EQ(frmMain().defaultButton(), &frmMain().scan.cmdStart);
    EXPECT_EQ(frmMain().cancelButton(), &frmMain().scan.cmdAbbrechen);
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
              "lblAppVer lblErrNr lblErrDesc lblErrHow lblErrTxt lblOS lblServicePack lblEMail "
              "lblProxyAdresse lblProxyport lblAgentType ");
    EXPECT_EQ(centred, "lblScanBericht lblScanProzent lblScanTxt ");
    EXPECT_EQ(form.scan.lblStartText.font(), "Tahoma");
    EXPECT_EQ(form.scan.lblScanTxt.font(), "MS Sans Serif");
}

TEST_F(Layout, TheRulesHaveTheirTwoPoints) {
    const Line& upright = frmMain().options.Line1;
    EXPECT_EQ(upright.place(), (Place{3840, 240, 0, 1680}));
    const Line& rule = frmMain().cleanup.Line2;
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
    EXPECT_EQ(form.scan.mnuPopUpRegKey.children(),
              (std::vector<MenuItem*>{&form.scan.mnuPopUpRegKeyEinzeln, &form.scan.mnuPopUpRegKeyAlle}));
    EXPECT_EQ(form.mnuPopUpStartScan.caption(), "&Scan starten");
}

}  // namespace
}  // namespace bromvale::testing

// The pop-up menus as data, and the entries of the tray's menu that show a page.
#include "tests/ui/main_form_fixture.h"
#include "ui/frm_popup.h"

namespace bromvale::testing {
namespace {

using Menus = MainFormTest;
using Texts = std::vector<std::string>;

Texts entries(const MenuItem& menu) {
    Texts result{menu.caption()};
    for (const MenuItem* item : menu.children()) result.push_back(item->name() + " " + item->caption());
    return result;
}

TEST_F(Menus, TheTraysMenuHasItsEntriesInOrder) {
    EXPECT_EQ(entries(frmMain().mnuPopUp),
              (Texts{"<popup menu>", "mnuPopUpShowForm &Zeige Programm", "mnuPopUpStartScan &Scan starten",
                     "mnuPopUpBackupZeigen B&ackup-Bereich", "mnuPopUpDeinstall Programme &deinstallieren",
                     "mnuPopUpBugReport Bug-&Report", "mnuPopUpLiveUpdate &Live-Update",
                     "mnuPopUpOptionen &Optionen", "mnuPopUpStep1 -", "mnuPopUpAbout &Über",
                     "mnuPopUpQuit &Beenden"}));
}

TEST_F(Menus, TheListsMenusHaveTheirEntriesInOrder) {
    EXPECT_EQ(entries(frmMain().scan.mnuPopUpRegKey),
              (Texts{"<popup regkey>", "mnuPopUpRegKeyEinzeln &markierte Eintrag entfernen",
                     "mnuPopUpRegKeyAlle &alle Einträge entfernen"}));
    EXPECT_EQ(entries(frmMain().programs.mnuPopUpDeinst),
              (Texts{"<popup deinst>", "mnuPopUpDeinstDeinstall markiertes Programm &deinstallieren",
                     "mnuPopUpDeinstRefresh &Ansicht aktualisieren"}));
    EXPECT_EQ(entries(frmMain().backup.mnuPopUpBackup),
              (Texts{"<popup backup>", "mnuPopUpBackupBearbeiten markierte(n) Eintrag &bearbeiten",
                     "mnuPopUpBackupEinfügen markierte(n) Eintrag ein&fügen",
                     "mnuPopUpBackupLöschen markierte(n) Eintrag lö&schen"}));
    EXPECT_EQ(entries(frmMain().cleanup.mnuPopUpOrdner),
              (Texts{"<popup ordner>", "mnuPopUpOrdnerHinzufügen neuen Ordner der Liste &hinzufügen",
                     "mnuPopUpOrdnerEntfernen markierten &Ordner aus Liste entfernen",
                     "mnuPopUpOrdnerEinzeln mark&ierte(n) Ordner leeren",
                     "mnuPopUpOrdnerAlle alle Ordner l&eeren"}));
}

TEST_F(Menus, ASecondLoadingAddsNoEntryTwice) {
    frmPopUp();
    frmMain().load();
    EXPECT_EQ(frmMain().mnuPopUp.children().size(), 10u);
}

TEST_F(Menus, TheEntriesOfTheTrayShowTheirPages) {
    frmMain().mnuPopUpBackupZeigen.userChoose();
    EXPECT_EQ(shownPages(), "Frame2 ");
    frmMain().mnuPopUpDeinstall.userChoose();
    EXPECT_EQ(shownPages(), "Frame4 ");
    frmMain().mnuPopUpBugReport.userChoose();
    EXPECT_EQ(shownPages(), "Frame3 ");
    frmMain().mnuPopUpOptionen.userChoose();
    EXPECT_EQ(shownPages(), "Frame5 ");
    frmMain().mnuPopUpStartScan.userChoose();
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_NE(frmMain().scan.lblScanBericht.caption(), "");
}

TEST_F(Menus, TheBugReportEntryAsksForNoComponent) {
    InternetMissing = true;
    frmMain().mnuPopUpBugReport.userChoose();
    EXPECT_EQ(shownPages(), "Frame3 ");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Menus, AboutTellsTitleAndVersion) {
    frmMain().mnuPopUpAbout.userChoose();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Bromvale 1.0.0");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
#ifndef _WIN32
    EXPECT_EQ(boxes()[0].style, 64u);
#endif
}

TEST_F(Menus, ShowingTheProgramDoesNothingAlsoWhenTheWindowIsMinimised) {
    frmMain().show();
    frmMain().setWindowState(WindowState::Minimised);
    frmMain().mnuPopUpShowForm.userChoose();
    EXPECT_EQ(frmMain().windowState(), WindowState::Minimised);
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Menus, TheProgressBarReaches100ForOneTickAndFallsBack) {
    ProgressBar& bar = frmMain().ProgressBar_;
    std::vector<int> values;
    for (int tick = 0; tick < 22; ++tick) {
        frmMain().tmrTimer_Timer();
        values.push_back(bar.value());
    }
    EXPECT_EQ(values, (std::vector<int>{5,  10, 15, 20, 25, 30, 35, 40, 45,  50, 55,
                                        60, 65, 70, 75, 80, 85, 90, 95, 100, 0,  5}));
}

}  // namespace
}  // namespace bromvale::testing

#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

class ResultListTest : public ScanTest {
  protected:
    ResultListTest() {
        form().show();
        for (const char* key :
             {"[HKEY_LOCAL_MACHINE\\K1]", "[HKEY_LOCAL_MACHINE\\K3]", "[HKEY_LOCAL_MACHINE\\K2]"})
            form().scan.lvwRegKeys.add({key, "@", "", "-2147483646"}, 1);
    }
    // As behind a scan with faults, with the list shown.
    void offer() {
        form().scan.cmdStart.setCaption("&Entfernen");
        form().scan.chbRegKeysShow.setEnabled(true);
        form().scan.chbRegKeysShow.setValue(1);
    }
};

TEST_F(ResultListTest, TheBoxShowsTheListAndEnablesTheSecondBox) {
    form().scan.chbRegKeysShow.setEnabled(true);
    EXPECT_FALSE(form().scan.lvwRegKeys.visible());
    form().scan.chbRegKeysShow.userClick();
    EXPECT_TRUE(form().scan.lvwRegKeys.visible());
    EXPECT_TRUE(form().scan.chbMarkierteKeysEntfernen.enabled());
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    form().scan.chbRegKeysShow.userClick();
    EXPECT_FALSE(form().scan.lvwRegKeys.visible());
    EXPECT_EQ(form().scan.chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_FALSE(form().scan.chbMarkierteKeysEntfernen.enabled());
}

TEST_F(ResultListTest, RowsStandInTheOrderOfInsertionUntilTheFirstClick) {
    EXPECT_EQ(rows()[1], "[HKEY_LOCAL_MACHINE\\K3] | @ |  | -2147483646");
    EXPECT_FALSE(form().scan.lvwRegKeys.sorted());
}

TEST_F(ResultListTest, EachColumnClickTurnsTheOrderAlsoOnAnotherColumn) {
    offer();
    form().scan.lvwRegKeys.userColumnClick(1);
    EXPECT_EQ(form().scan.lvwRegKeys.sortKey(), 0);
    EXPECT_EQ(form().scan.lvwRegKeys.sortOrder(), SortOrder::Descending);
    EXPECT_EQ(form().scan.lvwRegKeys.item(1).text(), "[HKEY_LOCAL_MACHINE\\K3]");
    form().scan.lvwRegKeys.userColumnClick(1);
    EXPECT_EQ(form().scan.lvwRegKeys.sortOrder(), SortOrder::Ascending);
    EXPECT_EQ(form().scan.lvwRegKeys.item(1).text(), "[HKEY_LOCAL_MACHINE\\K1]");
    form().scan.lvwRegKeys.userColumnClick(3);
    EXPECT_EQ(form().scan.lvwRegKeys.sortKey(), 2);
    EXPECT_EQ(form().scan.lvwRegKeys.sortOrder(), SortOrder::Descending);
}

TEST_F(ResultListTest, F4F6AndF7ActAsClicksOnTheFirstThreeColumnsAndF5DoesNothing) {
    offer();
    ListView& list = form().scan.lvwRegKeys;
    list.userKeyDown(117);
    EXPECT_EQ(list.sortKey(), 1);
    EXPECT_EQ(list.sortOrder(), SortOrder::Descending);
    list.userKeyDown(118);
    EXPECT_EQ(list.sortKey(), 2);
    EXPECT_EQ(list.sortOrder(), SortOrder::Ascending);
    for (const int key : {116, 114, 119, 13, 65}) list.userKeyDown(key);
    EXPECT_EQ(list.sortKey(), 2);
    EXPECT_EQ(list.sortOrder(), SortOrder::Ascending);
    list.userKeyDown(115);
    EXPECT_EQ(list.sortKey(), 0);
    EXPECT_EQ(list.sortOrder(), SortOrder::Descending);
}

TEST_F(ResultListTest, TheHiddenFourthColumnCannotBeClicked) {
    offer();
    form().scan.lvwRegKeys.userColumnClick(4);
    EXPECT_EQ(form().scan.lvwRegKeys.sortKey(), 0);
    EXPECT_EQ(form().scan.lvwRegKeys.sortOrder(), SortOrder::Ascending);
}

// Singular and plural have changed places.
TEST_F(ResultListTest, TheMenuEntryFollowsTheNumberOfMarkedRows) {
    offer();
    ListView& list = form().scan.lvwRegKeys;
    list.userSelect({2});
    form().scan.mouseUp(1);
    EXPECT_EQ(form().scan.mnuPopUpRegKeyEinzeln.caption(), "&markierten Eintrag entfernen");
    list.userSelect({1, 2});
    form().scan.mouseUp(1);
    EXPECT_EQ(form().scan.mnuPopUpRegKeyEinzeln.caption(), "&markierte Eintrag entfernen");
    list.userSelect({});
    form().scan.mouseUp(1);
    EXPECT_EQ(form().scan.mnuPopUpRegKeyEinzeln.caption(), "&markierten Eintrag entfernen");
}

TEST_F(ResultListTest, RemovingMarkedRowsFromTheMenuTicksTheBoxForTheTimeBeing) {
    offer();
    form().scan.lvwRegKeys.userSelect({1, 3});
    form().scan.mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\K3] | @ |  | -2147483646"}));
    EXPECT_EQ(form().scan.chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_TRUE(form().scan.lvwRegKeys.visible());
}

TEST_F(ResultListTest, TheMenuLeavesABoxThatWasTicked) {
    offer();
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    form().scan.mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(form().scan.chbMarkierteKeysEntfernen.value(), 1);
}

TEST_F(ResultListTest, WithNoRowMarkedNothingIsRemovedAndTheBoxIsRestored) {
    offer();
    form().scan.mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(rows().size(), 3u);
    EXPECT_EQ(form().scan.chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_EQ(report(), "Die markierten Fehler wurden erfolgreich entfernt und gesichert.");
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*.reg").size(), 1u);
}

TEST_F(ResultListTest, AllEntriesFromTheMenuRemovesThemAll) {
    offer();
    form().scan.mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(caption(), "&Start");
}

TEST_F(ResultListTest, AllEntriesFromTheMenuHonoursTheTickedBox) {
    offer();
    form().scan.chbMarkierteKeysEntfernen.setValue(1);
    form().scan.lvwRegKeys.userSelect({2});
    form().scan.mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(rows().size(), 2u);
}

TEST_F(ResultListTest, BehindAnAbortTheMenuStartsAScan) {
    form().scan.cmdAbbrechen_Click();
    form().scan.mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*.reg"), Texts{});
}

TEST_F(ResultListTest, TheTrayMenuShowsTheScanPageAndScans) {
    form().showPage(form().options);
    form().scan.mnuPopUpStartScan_Click();
    EXPECT_TRUE(form().scan.Frame1.visible());
    for (const Frame* page : {&form().backup.Frame2, &form().bugReport.Frame3, &form().programs.Frame4,
                              &form().options.Frame5, &form().cleanup.Frame7})
        EXPECT_FALSE(page->visible());
    EXPECT_TRUE(form().options.Frame6.visible());
    EXPECT_TRUE(form().options.Frame8Internet.visible());
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
}

TEST_F(ResultListTest, TheTrayMenuRemovesWhileTheButtonOffersIt) {
    offer();
    form().scan.mnuPopUpStartScan_Click();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(report(), "Die erkannten Fehler wurden erfolgreich entfernt und gesichert.");
}

TEST_F(ResultListTest, AScanKeepsTheVisibilityOfTheList) {
    offer();
    form().scan.cmdStart.setCaption("&Start");
    scan();
    EXPECT_TRUE(form().scan.lvwRegKeys.visible());
    EXPECT_EQ(form().scan.chbRegKeysShow.value(), 1);
    EXPECT_FALSE(form().scan.chbRegKeysShow.enabled());
}

}  // namespace
}  // namespace bromvale::testing

#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

class ResultListTest : public ScanTest {
  protected:
    ResultListTest() {
        form().show();
        for (const char* key :
             {"[HKEY_LOCAL_MACHINE\\K1]", "[HKEY_LOCAL_MACHINE\\K3]", "[HKEY_LOCAL_MACHINE\\K2]"})
            form().lvwRegKeys.add({key, "@", "", "-2147483646"}, 1);
    }
    // As behind a scan with faults, with the list shown.
    void offer() {
        form().cmdStart.setCaption("&Entfernen");
        form().chbRegKeysShow.setEnabled(true);
        form().chbRegKeysShow.setValue(1);
    }
};

TEST_F(ResultListTest, TheBoxShowsTheListAndEnablesTheSecondBox) {
    form().chbRegKeysShow.setEnabled(true);
    EXPECT_FALSE(form().lvwRegKeys.visible());
    form().chbRegKeysShow.userClick();
    EXPECT_TRUE(form().lvwRegKeys.visible());
    EXPECT_TRUE(form().chbMarkierteKeysEntfernen.enabled());
    form().chbMarkierteKeysEntfernen.setValue(1);
    form().chbRegKeysShow.userClick();
    EXPECT_FALSE(form().lvwRegKeys.visible());
    EXPECT_EQ(form().chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_FALSE(form().chbMarkierteKeysEntfernen.enabled());
}

TEST_F(ResultListTest, RowsStandInTheOrderOfInsertionUntilTheFirstClick) {
    EXPECT_EQ(rows()[1], "[HKEY_LOCAL_MACHINE\\K3] | @ |  | -2147483646");
    EXPECT_FALSE(form().lvwRegKeys.sorted());
}

TEST_F(ResultListTest, EachColumnClickTurnsTheOrderAlsoOnAnotherColumn) {
    offer();
    form().lvwRegKeys.userColumnClick(1);
    EXPECT_EQ(form().lvwRegKeys.sortKey(), 0);
    EXPECT_EQ(form().lvwRegKeys.sortOrder(), SortOrder::Descending);
    EXPECT_EQ(form().lvwRegKeys.item(1).text(), "[HKEY_LOCAL_MACHINE\\K3]");
    form().lvwRegKeys.userColumnClick(1);
    EXPECT_EQ(form().lvwRegKeys.sortOrder(), SortOrder::Ascending);
    EXPECT_EQ(form().lvwRegKeys.item(1).text(), "[HKEY_LOCAL_MACHINE\\K1]");
    form().lvwRegKeys.userColumnClick(3);
    EXPECT_EQ(form().lvwRegKeys.sortKey(), 2);
    EXPECT_EQ(form().lvwRegKeys.sortOrder(), SortOrder::Descending);
}

TEST_F(ResultListTest, F4F6AndF7ActAsClicksOnTheFirstThreeColumnsAndF5DoesNothing) {
    offer();
    ListView& list = form().lvwRegKeys;
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
    form().lvwRegKeys.userColumnClick(4);
    EXPECT_EQ(form().lvwRegKeys.sortKey(), 0);
    EXPECT_EQ(form().lvwRegKeys.sortOrder(), SortOrder::Ascending);
}

// Singular and plural have changed places.
TEST_F(ResultListTest, TheMenuEntryFollowsTheNumberOfMarkedRows) {
    offer();
    ListView& list = form().lvwRegKeys;
    list.userSelect({2});
    form().lvwRegKeys_MouseUp(1);
    EXPECT_EQ(form().mnuPopUpRegKeyEinzeln.caption(), "&markierten Eintrag entfernen");
    list.userSelect({1, 2});
    form().lvwRegKeys_MouseUp(1);
    EXPECT_EQ(form().mnuPopUpRegKeyEinzeln.caption(), "&markierte Eintrag entfernen");
    list.userSelect({});
    form().lvwRegKeys_MouseUp(1);
    EXPECT_EQ(form().mnuPopUpRegKeyEinzeln.caption(), "&markierten Eintrag entfernen");
}

TEST_F(ResultListTest, RemovingMarkedRowsFromTheMenuTicksTheBoxForTheTimeBeing) {
    offer();
    form().lvwRegKeys.userSelect({1, 3});
    form().mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(rows(), (Texts{"[HKEY_LOCAL_MACHINE\\K3] | @ |  | -2147483646"}));
    EXPECT_EQ(form().chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_TRUE(form().lvwRegKeys.visible());
}

TEST_F(ResultListTest, TheMenuLeavesABoxThatWasTicked) {
    offer();
    form().chbMarkierteKeysEntfernen.setValue(1);
    form().mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(form().chbMarkierteKeysEntfernen.value(), 1);
}

TEST_F(ResultListTest, WithNoRowMarkedNothingIsRemovedAndTheBoxIsRestored) {
    offer();
    form().mnuPopUpRegKeyEinzeln_Click();
    EXPECT_EQ(rows().size(), 3u);
    EXPECT_EQ(form().chbMarkierteKeysEntfernen.value(), 0);
    EXPECT_EQ(report(), "Die markierten Fehler wurden erfolgreich entfernt und gesichert.");
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*.reg").size(), 1u);
}

TEST_F(ResultListTest, AllEntriesFromTheMenuRemovesThemAll) {
    offer();
    form().mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(caption(), "&Start");
}

TEST_F(ResultListTest, AllEntriesFromTheMenuHonoursTheTickedBox) {
    offer();
    form().chbMarkierteKeysEntfernen.setValue(1);
    form().lvwRegKeys.userSelect({2});
    form().mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(rows().size(), 2u);
}

TEST_F(ResultListTest, BehindAnAbortTheMenuStartsAScan) {
    form().cmdAbbrechen_Click();
    form().mnuPopUpRegKeyAlle_Click();
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
    EXPECT_EQ(filesIn(folder() + "Backup\\", "*.reg"), Texts{});
}

TEST_F(ResultListTest, TheTrayMenuShowsTheScanPageAndScans) {
    form().showPage(form().Frame5);
    form().mnuPopUpStartScan_Click();
    EXPECT_TRUE(form().Frame1.visible());
    for (const Frame* page : {&form().Frame2, &form().Frame3, &form().Frame4, &form().Frame5, &form().Frame7})
        EXPECT_FALSE(page->visible());
    EXPECT_TRUE(form().Frame6.visible());
    EXPECT_TRUE(form().Frame8Internet.visible());
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (0 von 9 Einträgen = 0%)");
}

TEST_F(ResultListTest, TheTrayMenuRemovesWhileTheButtonOffersIt) {
    offer();
    form().mnuPopUpStartScan_Click();
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(report(), "Die erkannten Fehler wurden erfolgreich entfernt und gesichert.");
}

TEST_F(ResultListTest, AScanKeepsTheVisibilityOfTheList) {
    offer();
    form().cmdStart.setCaption("&Start");
    scan();
    EXPECT_TRUE(form().lvwRegKeys.visible());
    EXPECT_EQ(form().chbRegKeysShow.value(), 1);
    EXPECT_FALSE(form().chbRegKeysShow.enabled());
}

}  // namespace
}  // namespace bromvale::testing

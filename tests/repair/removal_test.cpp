#include "tests/repair/removal_fixture.h"

namespace bromvale::testing {
namespace {

TEST_F(RemovalTest, AllRowsAreSavedDeletedAndCleared) {
    addKey("A");
    addKey("B");
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_TRUE(isGone("B"));
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(RemovalTest, RecordsStandInTheOrderOfTheListSortedDownwardsByKey) {
    for (const char* name : {"B", "D", "A", "C"}) addKey(name);
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(undoRecords(),
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\D]\r\n@=\"Wert D\"\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\C]\r\n@=\"Wert C\"\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n\r\n");
    EXPECT_EQ(list().sortKey(), 0);
    EXPECT_EQ(list().sortOrder(), SortOrder::Descending);
}

TEST_F(RemovalTest, OfMarkedRowsTheOthersStay) {
    for (const char* name : {"A", "B", "C"}) addKey(name);
    select({"\\B]"});
    removeMarked();
    EXPECT_FALSE(isGone("A"));
    EXPECT_TRUE(isGone("B"));
    EXPECT_FALSE(isGone("C"));
    EXPECT_EQ(rowKeys(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Probe\\C]",
                                "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]"}));
    EXPECT_EQ(undoRecords(), "[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n\r\n");
    EXPECT_EQ(form().scan.lblScanBericht.caption(), markedMessage);
}

TEST_F(RemovalTest, TheRowThatMovesUpIntoPlaceThreeIsLookedAtNext) {
    for (const char* name : {"A", "B", "C", "D", "E"}) addKey(name);
    select({"\\C]", "\\B]"});  // rows 3 and 4 of the list that is sorted downwards
    removeMarked();
    EXPECT_TRUE(isGone("C"));
    EXPECT_TRUE(isGone("B"));
    EXPECT_EQ(rowKeys(),
              (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Probe\\E]", "[HKEY_LOCAL_MACHINE\\Software\\Probe\\D]",
                     "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]"}));
}

TEST_F(RemovalTest, RowThreeOfFiveAloneLeavesTheOtherFour) {
    for (const char* name : {"A", "B", "C", "D", "E"}) addKey(name);
    select({"\\C]"});
    removeMarked();
    EXPECT_EQ(rowKeys().size(), 4u);
    EXPECT_TRUE(isGone("C"));
}

TEST_F(RemovalTest, WithoutAMarkedRowTheFileHoldsItsHeaderAlone) {
    addKey("A");
    removeMarked();
    EXPECT_EQ(undoRecords(), "");
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(form().scan.lblScanBericht.caption(), markedMessage);
}

TEST_F(RemovalTest, AnEmptyListGivesAFileWithItsHeaderAlone) {
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(undoRecords(), "");
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
}

TEST_F(RemovalTest, AMissingBackupFolderIsMadeAndTheRunGoesOn) {
    BackupPath = folder() + "Neu\\";
    addKey("A");
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
    EXPECT_EQ(undoRecords(), "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n\r\n");
    EXPECT_EQ(logLines(), (Texts{"frmMain; ProblemeEntfernen; Ordner " + BackupPath +
                                 " angelegt; 76; Pfad nicht gefunden"}));
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
}

TEST_F(RemovalTest, AFolderThatCannotBeMadeIsTheCallersFailure) {
    BackupPath = folder() + "Fehlt\\Auch\\";
    addKey("A");
    try {
        form().scan.ProblemeEntfernen();
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 76);
    }
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(list().count(), 1);
}

TEST_F(RemovalTest, ThroughTheButtonThatFailureIsReportedAndThePageIsReset) {
    BackupPath = folder() + "Fehlt\\Auch\\";
    addKey("A");
    form().scan.cmdStart.setCaption("&Entfernen");
    form().scan.cmdStart_Click();
    EXPECT_EQ(logLines(), (Texts{"frmMain; cmdStart_Click; ; 76; Pfad nicht gefunden"}));
    EXPECT_EQ(form().scan.cmdStart.caption(), "&Start");
    EXPECT_FALSE(isGone("A"));
}

TEST_F(RemovalTest, RowsWhoseKeyIsGoneAreStillSavedAndCounted) {
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\Fort]", "\"Name\"", "x");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(undoRecords(), "[HKEY_LOCAL_MACHINE\\Software\\Probe\\Fort]\r\n\"Name\"=\"x\"\r\n\r\n");
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
}

TEST_F(RemovalTest, TwoRowsOfOneKeyGiveTwoRecords) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "eins", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "zwei", "2");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "\"zwei\"", "2");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "\"eins\"", "1");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(undoRecords(),
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n\"zwei\"=\"2\"\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n\"eins\"=\"1\"\r\n\r\n");
    EXPECT_TRUE(isGone("A"));
}

// What stands behind the first backslash is taken, so the first element of the path is lost with the hive's
// name.
TEST_F(RemovalTest, ADeadLinkRowWithoutBackslashBehindTheHiveDeletesNothing) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\Interface", "", "{L}");
    add("[HKEY_LOCAL_MACHINESoftware\\Classes\\CLSID\\{A}\\Interface]", "@", "{L}");
    switchTracingOn();
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{A}\\Interface"));
    EXPECT_EQ(undoRecords(),
              "[HKEY_LOCAL_MACHINESoftware\\Classes\\CLSID\\{A}\\Interface]\r\n@=\"{L}\"\r\n\r\n");
    EXPECT_EQ(list().count(), 0);
    const Texts log = logLines();
    EXPECT_EQ(std::count(log.begin(), log.end(),
                         "modKeyFunc; DelKey; -2147483646; Classes\\CLSID\\{A}\\Interface; 0; 0; "),
              1);
}

TEST_F(RemovalTest, ARowWithoutAnyBackslashEndsTheRemovalWithTheDialog) {
    add("[K]", "@", "");
    addKey("A");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(logLines(),
              (Texts{"frmMain; ProblemeEntfernen; ; 5; Ungültiger Prozeduraufruf oder ungültiges Argument"}));
    EXPECT_EQ(undoRecords(), "[K]\r\n@=\"\"\r\n\r\n");
    EXPECT_EQ(list().count(), 2);
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(form().scan.lblScanBericht.caption(), "");
    EXPECT_EQ(openFileCount(), 1);  // the file stays open
}

TEST_F(RemovalTest, OnTheNtFamilyAKeyWithSubKeysStaysAndCountsAsRemoved) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A\\Unten", "", "u");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "@", "");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(list().count(), 0);
    EXPECT_EQ(form().scan.lblScanBericht.caption(), allMessage);
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(RemovalTest, UmlautsQuotesAndEmptyDataReachTheFileAsTheRowHoldsThem) {
    setString(HKEY_CURRENT_USER,
              "Software\\Gr\xF6\xDF"
              "e",
              "", "x");
    add("[HKEY_CURRENT_USER\\Software\\Gr\xF6\xDF"
        "e]",
        "\"Na\"me\"", "\xC4\"\\\"", "-2147483647");
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER,
                           "Software\\Gr\xF6\xDF"
                           "e"));
    EXPECT_EQ(undoRecords(),
              "[HKEY_CURRENT_USER\\Software\\Gr\xF6\xDF"
              "e]\r\n\"Na\"me\"=\"\xC4\"\\\"\"\r\n\r\n");
}

}  // namespace
}  // namespace bromvale::testing

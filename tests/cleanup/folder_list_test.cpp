// The list of folders to be emptied: what is read from liste.txt, and how it is rewritten.
#include "tests/cleanup/cleanup_fixture.h"

namespace bromvale::testing {
namespace {

using FolderList = CleanupTest;

TEST_F(FolderList, AFirstRunMakesAnEmptyFileAndSwitchesTheBoxOff) {
    form().cleanup.Ordnerliste_laden();
    EXPECT_EQ(listFile(), "");
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(form().cleanup.chbTempFilesDel.value(), 0);
    EXPECT_FALSE(form().cleanup.chbTempFilesDel.enabled());
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(FolderList, EveryLineButAnEmptyOneIsARowWithTheFoldersPicture) {
    openPage("C:\\Temp\r\n\r\nD:\\Müll\\\r\n\r\n\r\nE:\\x y\r\n");
    EXPECT_EQ(rows(), (Texts{"C:\\Temp", "D:\\Müll\\", "E:\\x y"}));
    for (int row = 1; row <= 3; ++row) EXPECT_EQ(list().item(row).smallIcon(), 6);
    EXPECT_TRUE(form().cleanup.chbTempFilesDel.enabled());
}

TEST_F(FolderList, ALastLineWithoutItsEndIsRead) {
    openPage("C:\\eins\r\nC:\\zwei");
    EXPECT_EQ(rows(), (Texts{"C:\\eins", "C:\\zwei"}));
}

TEST_F(FolderList, IsReadFromTheCurrentDirectory) {
    openPage("C:\\eins\r\n");
    const std::string elsewhere = makeBin("anderswo");
    writeWholeFile(elsewhere + "liste.txt", "C:\\zwei\r\n");
    SetCurrentDirectoryA(elsewhere.c_str());
    list().userKeyDown(116);
    EXPECT_EQ(rows(), Texts{"C:\\zwei"});
    SetCurrentDirectoryA(folder().c_str());
    list().userKeyDown(116);
    EXPECT_EQ(rows(), Texts{"C:\\eins"});
}

TEST_F(FolderList, ThatIsAFolderIsReportedAndLeavesTheListEmpty) {
    makeFolderOnDisk(listPath());
    form();
    EXPECT_EQ(logLines(), Texts{"modFiles; Ordnerliste_laden; ; 75; Fehler beim Zugriff auf Pfad/Datei"});
}

// --- taking a folder out ---

TEST_F(FolderList, TheSelectedFolderIsTakenOutAndTheOthersStay) {
    openPage("C:\\a\r\nC:\\b\r\nC:\\c\r\n");
    list().userSelect({2});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "C:\\a\r\nC:\\c\r\n");
    EXPECT_EQ(rows(), (Texts{"C:\\a", "C:\\c"}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FolderList, TheLastFolderLeavesOneEmptyLine) {
    openPage("C:\\a\r\n");
    list().userSelect({1});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "\r\n");
    EXPECT_EQ(rows(), Texts{});
    EXPECT_FALSE(form().cleanup.chbTempFilesDel.enabled());
}

TEST_F(FolderList, TakingTheLastFolderOutEndsTheEmptyingAtTheStartOfWindows) {
    openPage("C:\\a\r\n");
    form().cleanup.chbTempFilesDel.userClick();
    EXPECT_NE(stringValue(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale"), "<missing>");
    list().userSelect({1});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(form().cleanup.chbTempFilesDel.value(), 0);
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale"), "<missing>");
}

TEST_F(FolderList, ARunValueWhoseBoxWasNeverCheckedStaysBehindTheLastFolder) {
    setString(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale", "C:\\x.exe -d");
    openPage("C:\\a\r\n");
    list().userSelect({1});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale"), "C:\\x.exe -d");
}

TEST_F(FolderList, LinesThatAreTheSameGoTogether) {
    openPage("C:\\a\r\nC:\\b\r\nC:\\a\r\n");
    list().userSelect({3});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "C:\\b\r\n");
}

TEST_F(FolderList, TheComparisonIsToTheLetter) {
    openPage("C:\\Temp\r\nc:\\temp\r\nC:\\Temp\\\r\n");
    list().userSelect({1});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "c:\\temp\r\nC:\\Temp\\\r\n");
}

TEST_F(FolderList, EmptyLinesGoWhenAFolderIsTakenOut) {
    openPage("\r\n\r\nC:\\a\r\n\r\nC:\\b\r\n\r\nC:\\c\r\n\r\n");
    list().userSelect({2});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "C:\\a\r\nC:\\c\r\n");
}

TEST_F(FolderList, OfSeveralMarkedFoldersOnlyTheOneWithTheFocusIsTakenOut) {
    openPage("C:\\a\r\nC:\\b\r\nC:\\c\r\n");
    list().userSelect({1, 3, 2});
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "C:\\a\r\nC:\\c\r\n");
}

TEST_F(FolderList, WithoutASelectedRowAllFoldersStay) {
    openPage("C:\\a\r\nC:\\b\r\n");
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "C:\\a\r\nC:\\b\r\n");
    EXPECT_EQ(logLines(),
              Texts{"frmMain; cmdOrdnerLöschen_Click; ; 35600; Index liegt außerhalb der Grenzen"});
}

TEST_F(FolderList, TakingAFolderOutTracesTheLinesThatStay) {
    openPage("C:\\a\r\n\r\nC:\\b\r\nC:\\c\r\n");
    list().userSelect({2});
    switchTracingOn();
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(logOf("cmdOrdnerLöschen_Click"),
              (Texts{"started; 0; ", "C:\\a aus zulöschenden Liste gelöscht; 0; ",
                     " aus zulöschenden Liste gelöscht; 0; ", "C:\\c aus zulöschenden Liste gelöscht; 0; ",
                     "endet; 0; "}));
}

TEST_F(FolderList, AMissingFileIsMadeWhenAFolderIsTakenOut) {
    openPage("C:\\a\r\n");
    list().userSelect({1});
    DeleteFileA(listPath().c_str());
    form().cleanup.cmdOrdnerLöschen.userClick();
    EXPECT_EQ(listFile(), "\r\n");
    EXPECT_EQ(rows(), Texts{});
    EXPECT_EQ(logLines(), Texts{"frmMain; cmdOrdnerLöschen_Click; ; 53; Datei nicht gefunden"});
}

// --- mouse and keyboard ---

TEST_F(FolderList, AClickOnTheHeaderTurnsTheOrderRound) {
    openPage("C:\\b\r\nC:\\a\r\nC:\\c\r\n");
    EXPECT_EQ(rows(), (Texts{"C:\\b", "C:\\a", "C:\\c"}));
    list().userColumnClick(1);
    EXPECT_EQ(rows(), (Texts{"C:\\c", "C:\\b", "C:\\a"}));
    list().userKeyDown(115);
    EXPECT_EQ(rows(), (Texts{"C:\\a", "C:\\b", "C:\\c"}));
}

TEST_F(FolderList, DeleteAndClearTakeTheSelectedFolderOut) {
    openPage("C:\\a\r\nC:\\b\r\nC:\\c\r\n");
    list().userSelect({1});
    list().userKeyDown(46);
    EXPECT_EQ(listFile(), "C:\\b\r\nC:\\c\r\n");
    list().userSelect({2});
    list().userKeyDown(12);
    EXPECT_EQ(listFile(), "C:\\b\r\n");
}

TEST_F(FolderList, EveryReleaseOfAButtonSetsTheMenusWordsByTheNumberOfMarkedRows) {
    openPage("C:\\a\r\nC:\\b\r\n");
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEinzeln.caption(), "mark&ierte(n) Ordner leeren");
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEntfernen.caption(), "markierten &Ordner aus Liste entfernen");
    list().userMouseUp(kLeft);
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEinzeln.caption(), "mark&ierten Ordner leeren");
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEntfernen.caption(), "markierten &Ordner aus Liste entfernen");
    list().userSelect({1, 2});
    list().userMouseUp(4);
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEinzeln.caption(), "mark&ierte Ordner leeren");
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEntfernen.caption(), "markierte &Ordner aus Liste entfernen");
    list().userSelect({2});
    list().userMouseUp(kLeft);
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEinzeln.caption(), "mark&ierten Ordner leeren");
    EXPECT_EQ(form().cleanup.mnuPopUpOrdnerEntfernen.caption(), "markierten &Ordner aus Liste entfernen");
}

// --- the switches ---

TEST_F(FolderList, TheBoxForTheStartOfWindowsWritesAndTakesTheRunValue) {
    openPage("C:\\a\r\n");
    form().cleanup.chbTempFilesDel.userClick();
    const StoredValue value = storedValue(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale");
    EXPECT_EQ(value.type, static_cast<std::uint32_t>(REG_SZ));
#ifdef _WIN32
    EXPECT_EQ(value.bytes, AppPath + "test_cleanup.exe -d" + '\0');
#else
    EXPECT_EQ(value.bytes, std::string("C:\\Programme\\Bromvale\\Bromvale.exe -d") + '\0');
#endif
    form().cleanup.chbTempFilesDel.userClick();
    EXPECT_EQ(storedValue(HKEY_LOCAL_MACHINE, kRunKey, "Bromvale").type, 0xFFFFFFFFu);
}

TEST_F(FolderList, TheBoxForDeletionForGoodTakesEffectAtOnceAndLeavesTheApplyButton) {
    openPage("");
    form().cleanup.chbDelFilePermanent.userClick();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "DelFilePermanent"), "1");
    EXPECT_EQ(DelFilePermanent, 1);
    form().cleanup.chbDelFilePermanent.userClick();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "DelFilePermanent"), "0");
    EXPECT_EQ(DelFilePermanent, 0);
    EXPECT_FALSE(form().options.cmdÜbernehmen.enabled());
}

TEST_F(FolderList, TheBoxForDeletionForGoodBringsTheOtherSettingsAlong) {
    openPage("");
    setString(HKEY_CURRENT_USER, kSettingsKey, "AutoScan", "1");
    EXPECT_EQ(AutoScan, 0);
    form().cleanup.chbDelFilePermanent.userClick();
    EXPECT_EQ(AutoScan, 1);
}

}  // namespace
}  // namespace bromvale::testing

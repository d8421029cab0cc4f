// What the list of undo files shows, and how mouse and keyboard work on it.
#include <ostream>

#include "cleanup/file_del.h"
#include "tests/repair/backup_fixture.h"

namespace bromvale::testing {
namespace {

using BackupListTest = BackupTest;

TEST_F(BackupListTest, EachFileIsARowWithNameSizeDateAndItsPicture) {
    undoFile("Rückgängig_15112026_071209.reg", 2048, {2026, 11, 0, 15, 7, 12, 9, 0});
    form().backup.ReadBackupFiles();
    ASSERT_EQ(list().count(), 1);
    EXPECT_EQ(row(1), "Rückgängig_15112026_071209.reg | 2 KB | 15.11.2026 07:12:09 | 3");
}

TEST_F(BackupListTest, FilesOfOtherKindsAreNoRows) {
    writeWholeFile(BackupPath + "lies.txt", "x");
    openPage({"a.reg", "b.REG"});
    EXPECT_EQ(names(), (Texts{"a.reg", "b.REG"}));
}

TEST_F(BackupListTest, AFolderOfSuchANameIsNoFileAndIsNeverDeletedAsOne) {
    makeFolderOnDisk(BackupPath + "Ordner.reg");
    writeWholeFile(BackupPath + "Ordner.reg\\innen.txt", "x");
    openPage({"a.reg"});
    EXPECT_EQ(names(), Texts{"a.reg"});
    FileDel(BackupPath, "Ordner.reg");
    EXPECT_EQ(readWholeFile(BackupPath + "Ordner.reg\\innen.txt"), "x");
}

TEST_F(BackupListTest, AnEmptyFolderLeavesTheListEmptyAndItsSortingOn) {
    list().setSorted(false);
    form().backup.ReadBackupFiles();
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(list().sorted());
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(BackupListTest, AMissingFolderLeavesTheListEmptyAndItsSortingOn) {
    openPage({"a.reg"});
    BackupPath = AppPath + "Weg\\";
    form().backup.ReadBackupFiles();
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(list().sorted());
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(BackupListTest, ReadingTracesItsStartAndItsEnd) {
    undoFile("a.reg");
    form().load();
    switchTracingOn();
    form().backup.ReadBackupFiles();
    EXPECT_EQ(logLines(), (Texts{
                              "frmMain; ReadBackupFiles; started; 0; ",
                              "modFiles; FindFileAPI; started; 0; ",
                              "modFiles; FindFileAPI; durchsuchter Ordner " + BackupPath + "; 0; ",
                              "modFiles; FindFileAPI; Darin wurden 1 Dateien gefunden.; 0; ",
                              "modFiles; FindFileAPI; endet; 0; ",
                              "frmMain; ReadBackupFiles; endet; 0; ",
                          }));
}

TEST_F(BackupListTest, RowsAreInTheOrderOfTheChosenColumnAfterReading) {
    openPage({"c.reg", "a.reg", "b.reg"});
    EXPECT_EQ(names(), (Texts{"a.reg", "b.reg", "c.reg"}));
    form().backup.sortBy(1);
    form().backup.ReadBackupFiles();
    EXPECT_EQ(names(), (Texts{"c.reg", "b.reg", "a.reg"}));
}

struct SizeRow {
    double bytes;
    const char* text;
};
void PrintTo(const SizeRow& row, std::ostream* out) {
    *out << static_cast<long long>(row.bytes) << "Bytes";
}

class SizeTextTest : public BackupTest, public ::testing::WithParamInterface<SizeRow> {};

TEST_P(SizeTextTest, IsCutToFiveCharactersAndNotRounded) {
    EXPECT_EQ(sizeText(GetParam().bytes), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Sizes, SizeTextTest,
                         ::testing::Values(SizeRow{0, "0 KB"}, SizeRow{512, "0,5 KB"},
                                           SizeRow{1000, "0,976 KB"}, SizeRow{1024, "1 KB"},
                                           SizeRow{1536, "1,5 KB"}, SizeRow{2048, "2 KB"},
                                           SizeRow{12288, "12 KB"}, SizeRow{20479, "19,99 KB"},
                                           SizeRow{102399, "99,99 KB"}, SizeRow{204799, "199,9 KB"},
                                           SizeRow{999999, "976,5 KB"}, SizeRow{1000000, "976,5 KB"},
                                           SizeRow{1500000, "1464, KB"}, SizeRow{102400000, "10000 KB"},
                                           // Past five digits the number itself is cut.
                                           SizeRow{1024000000, "10000 KB"}));

TEST_F(BackupListTest, ASizeNeverShowsMoreThanFiveCharactersBeforeItsUnit) {
    for (double bytes = 1; bytes < 4e9; bytes = bytes * 3 + 1) {
        const std::string text = sizeText(bytes);
        ASSERT_GE(text.size(), 4u);
        EXPECT_LE(text.size(), 8u) << text;
        EXPECT_EQ(text.substr(text.size() - 3), " KB");
    }
}

TEST_F(BackupListTest, AClickOnAColumnSortsByItAndTurnsTheOrderRound) {
    undoFile("a.reg", 3000);
    undoFile("b.reg", 1000);
    undoFile("c.reg", 2048);
    openPage();
    form().backup.sortBy(2);
    EXPECT_EQ(list().sortKey(), 1);
    EXPECT_EQ(list().sortOrder(), SortOrder::Descending);
    EXPECT_EQ(names(), (Texts{"a.reg", "c.reg", "b.reg"}));
    form().backup.sortBy(2);
    EXPECT_EQ(names(), (Texts{"b.reg", "c.reg", "a.reg"}));
    // Another column: the order turns as well.
    form().backup.sortBy(1);
    EXPECT_EQ(names(), (Texts{"c.reg", "b.reg", "a.reg"}));
}

TEST_F(BackupListTest, F4F6AndF7ClickTheColumnsNameSizeAndDate) {
    openPage({"a.reg"});
    list().userKeyDown(115);
    EXPECT_EQ(list().sortKey(), 0);
    EXPECT_EQ(list().sortOrder(), SortOrder::Descending);
    list().userKeyDown(117);
    EXPECT_EQ(list().sortKey(), 1);
    EXPECT_EQ(list().sortOrder(), SortOrder::Ascending);
    list().userKeyDown(118);
    EXPECT_EQ(list().sortKey(), 2);
    EXPECT_EQ(list().sortOrder(), SortOrder::Descending);
}

TEST_F(BackupListTest, F5ReadsTheFolderAgain) {
    openPage({"a.reg"});
    undoFile("b.reg");
    EXPECT_EQ(names(), (Texts{"a.reg"}));
    list().userKeyDown(116);
    EXPECT_EQ(names(), (Texts{"a.reg", "b.reg"}));
}

TEST_F(BackupListTest, OtherKeysAreLeftToTheList) {
    openPage({"a.reg"});
    list().userSelect({1});
    for (const int key : {8, 9, 27, 32, 40, 65, 112, 113, 114, 120}) list().userKeyDown(key);
    EXPECT_EQ(asked(), Texts{});
    EXPECT_EQ(selected(), Texts{"a.reg"});
}

TEST_F(BackupListTest, TheCaptionsOfTheMenuFollowTheSelectionAtEveryRelease) {
    openPage({"a.reg", "b.reg"});
    const auto captions = [&] {
        return Texts{form().backup.mnuPopUpBackupBearbeiten.caption(),
                     form().backup.mnuPopUpBackupEinfügen.caption(),
                     form().backup.mnuPopUpBackupLöschen.caption()};
    };
    const Texts one{"markierten Eintrag bearbeiten", "markierten Eintrag einfügen",
                    "markierten Eintrag löschen"};
    const Texts several{"markierte Einträge bearbeiten", "markierte Einträge einfügen",
                        "markierte Einträge löschen"};
    EXPECT_EQ(captions(), (Texts{"markierte(n) Eintrag &bearbeiten", "markierte(n) Eintrag ein&fügen",
                                 "markierte(n) Eintrag lö&schen"}));
    list().userMouseUp(kLeft);
    EXPECT_EQ(captions(), one);
    list().userSelect({1, 2});
    list().userMouseUp(kLeft);
    EXPECT_EQ(captions(), several);
    list().userSelect({2});
    list().userMouseUp(4);
    EXPECT_EQ(captions(), one);
}

TEST_F(BackupListTest, OpeningThePageShowsItFillsItAndClearsTheHourglass) {
    undoFile("a.reg");
    form().setMousePointer(MousePointer::Hourglass);
    form().backup.mnuPopUpBackupZeigen_Click();
    EXPECT_TRUE(form().backup.Frame2.visible());
    for (const Frame* other : {&form().scan.Frame1, &form().bugReport.Frame3, &form().programs.Frame4,
                               &form().options.Frame5, &form().cleanup.Frame7})
        EXPECT_FALSE(other->visible()) << other->name();
    EXPECT_EQ(names(), Texts{"a.reg"});
    EXPECT_EQ(form().mousePointer(), MousePointer::Default);
}

TEST_F(BackupListTest, TheNavigationOpensThePageToo) {
    undoFile("a.reg");
    ASSERT_TRUE(form().Menu.userItemClick("Backup"));
    EXPECT_TRUE(form().backup.Frame2.visible());
    EXPECT_EQ(names(), Texts{"a.reg"});
}

}  // namespace
}  // namespace bromvale::testing

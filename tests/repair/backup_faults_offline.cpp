// Every call that the backup page makes of the platform fails in turn: nothing that should stay is lost, the
// rest of the work goes on, and the log says what happened.
#include "base/failure.h"
#include "core/log.h"
#include "platform/offline/machine.h"
#include "tests/repair/backup_fixture.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;

constexpr long kNotFound = ERROR_FILE_NOT_FOUND;
constexpr long kDenied = ERROR_ACCESS_DENIED;
constexpr long kInUse = ERROR_SHARING_VIOLATION;

class BackupFaultsTest : public BackupTest, public ::testing::WithParamInterface<long> {
  protected:
    static offline::Machine& machine() { return offline::machine(); }
    static void fail(std::string_view operation, unsigned nth) {
        machine().faults.fail(operation, nth, GetParam());
    }
};

TEST_P(BackupFaultsTest, AFileThatCannotBeLookedAtKeepsItsRowAndTheNextOnesAreWhole) {
    undoFile("a.reg", 1024);
    undoFile("b.reg", 2048);
    undoFile("c.reg", 3072);
    // The first call lists the folder, the second looks at the first file.
    fail("FindFirstFileA", 3);
    form().backup.mnuPopUpBackupZeigen_Click();
    ASSERT_EQ(list().count(), 3);
    EXPECT_EQ(row(1), "a.reg | 1 KB | 15.11.2026 07:12:09 | 3");
    EXPECT_EQ(row(2), "b.reg |  |  | 3");
    EXPECT_EQ(row(3), "c.reg | 3 KB | 15.11.2026 07:12:09 | 3");
    EXPECT_EQ(logLines(), Texts{"frmMain; ReadBackupFiles; ; 53; Datei nicht gefunden"});
}

using BackupServing = BackupTest;

TEST_F(BackupServing, TheWindowsAreServedForEachFileThatIsListed) {
    for (const char* name : {"a.reg", "b.reg", "c.reg"}) undoFile(name);
    const auto before = offline::machine().pump.windowServings();
    form().backup.ReadBackupFiles();
    // Once when the folder is listed and once when the row is there.
    EXPECT_GE(offline::machine().pump.windowServings() - before, 6u);
}

TEST_P(BackupFaultsTest, AFolderThatCannotBeReadGivesAnEmptyList) {
    undoFile("a.reg");
    fail("FindFirstFileA", 1);
    form().backup.mnuPopUpBackupZeigen_Click();
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(list().sorted());
}

TEST_P(BackupFaultsTest, AFileWhoseDateCannotBeReadStaysAndTheNextOneIsJudgedByItself) {
    DelAfterDays = 10;
    undoFile("a.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    undoFile("b.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    undoFile("c.reg", 3, {2026, 11, 0, 14, 0, 0, 0, 0});
    undoFile("d.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    for (const char* operation : {"OpenFile", "GetFileTime"}) {
        machine().faults.clear();
        for (const char* name : {"a.reg", "b.reg", "d.reg"}) undoFile(name, 3, {2026, 1, 0, 1, 0, 0, 0, 0});
        fail(operation, 2);
        AutoFileDel();
        EXPECT_EQ(filesLeft(), (Texts{"b.reg", "c.reg"})) << operation;
    }
    EXPECT_EQ(logLines(), (Texts{"modMain; AutoFileDel; ; 13; Typen unverträglich",
                                 "modMain; AutoFileDel; ; 13; Typen unverträglich"}));
    EXPECT_EQ(offline::machine().openFiles(), 0u);
}

// Under a calendar that counts other years that text would make every file old or none.
TEST_F(BackupServing, TheAgeIsCountedByTheClockAndNotByATextMadeForTheUser) {
    DelAfterDays = 10;
    undoFile("alt.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    undoFile("neu.reg", 3, {2026, 11, 0, 14, 0, 0, 0, 0});
    offline::machine().faults.failFrom("GetDateFormatA", 1, ERROR_INVALID_PARAMETER);
    AutoFileDel();
    EXPECT_EQ(filesLeft(), Texts{"neu.reg"});
}

TEST_P(BackupFaultsTest, AFileWhoseDateCannotBeReadStaysBelowALimitThatEvenFilesOfTodayExceed) {
    DelAfterDays = -1;
    undoFile("a.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    undoFile("b.reg", 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    fail("OpenFile", 1);
    AutoFileDel();
    EXPECT_EQ(filesLeft(), Texts{"a.reg"});
    EXPECT_EQ(logLines(), Texts{"modMain; AutoFileDel; ; 13; Typen unverträglich"});
}

TEST_P(BackupFaultsTest, AnOldFileThatCannotBeDeletedIsPassedOver) {
    DelAfterDays = 10;
    for (const char* name : {"a.reg", "b.reg", "c.reg"}) undoFile(name, 3, {2026, 1, 0, 1, 0, 0, 0, 0});
    fail("SHFileOperationA", 2);
    AutoFileDel();
    EXPECT_EQ(filesLeft(), Texts{"b.reg"});
}

TEST_P(BackupFaultsTest, AFileThatCannotBeDeletedIsStillThereAtTheNextReading) {
    openPage({"a.reg", "b.reg", "c.reg"});
    list().userSelect({1, 2, 3});
    fail("SHFileOperationA", 2);
    for (int i = 0; i < 3; ++i) answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(names(), Texts{});
    EXPECT_EQ(filesLeft(), Texts{"b.reg"});
    form().backup.ReadBackupFiles();
    EXPECT_EQ(names(), Texts{"b.reg"});
}

TEST_P(BackupFaultsTest, AFileThatCannotBeOpenedStaysAndTheNextOneIsEntered) {
    writeWholeFile(BackupPath + "a.reg",
                   "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\A]\r\n\"w\"=\"1\"\r\n");
    writeWholeFile(BackupPath + "b.reg",
                   "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\B]\r\n\"w\"=\"2\"\r\n");
    openPage();
    list().userSelect({1, 2});
    fail("ShellExecuteA", 1);
    answer(IDYES);
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A"));
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, "Software\\B", "w"), "2");
    EXPECT_EQ(filesLeft(), (Texts{"a.reg", "b.reg"}));
}

TEST_P(BackupFaultsTest, AFileThatCannotBeEditedLosesItsSelectionLikeTheOthers) {
    openPage({"a.reg", "b.reg"});
    list().userSelect({1, 2});
    fail("ShellExecuteA", 1);
    form().backup.cmdBearbeiten.userClick();
    EXPECT_EQ(machine().events.count(EventKind::ShellExecute), 2u);
    EXPECT_EQ(selected(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(Results, BackupFaultsTest, ::testing::Values(kNotFound, kDenied, kInUse));

class BackupVanishedTest : public BackupTest {};

TEST_F(BackupVanishedTest, AFileThatVanishesWhileTheFolderIsReadKeepsARowWithoutSizeAndDate) {
    for (const char* name : {"a.reg", "b.reg", "c.reg"}) undoFile(name);
    unsigned looked = 0;
    offline::machine().faults.observe([&](std::string_view operation) {
        if (operation == "FindFirstFileA" && ++looked == 3)
            offline::machine().drives.erase(BackupPath + "b.reg");
    });
    form().backup.mnuPopUpBackupZeigen_Click();
    EXPECT_EQ(names(), (Texts{"a.reg", "b.reg", "c.reg"}));
    EXPECT_EQ(row(2), "b.reg |  |  | 3");
    EXPECT_EQ(list().item(3).subItem(2), "15.11.2026 07:12:09");
}

TEST_F(BackupVanishedTest, FilesThatAreGoneByTheClickHarmNothing) {
    openPage({"a.reg", "b.reg"});
    ASSERT_TRUE(offline::machine().drives.erase(BackupPath + "a.reg"));
    AutoFileDelAfterReentry = 1;
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(names(), Texts{"b.reg"});
    ASSERT_TRUE(offline::machine().drives.erase(BackupPath + "b.reg"));
    list().userSelect({1});
    answer(IDYES);
    form().backup.cmdLöschen.userClick();
    EXPECT_EQ(names(), Texts{});
}

// Failures that no call here raises by itself, but that a handler below the pumped events may hand up.
TEST_F(BackupVanishedTest, FailuresAreSortedByTheirNumber) {
    AutoFileDelAfterReentry = 1;
    openPage({"a.reg", "b.reg"});
    LogAlways = true;
    for (const int number : {75, 7}) {
        list().userSelect({list().count()});
        answer(IDYES);
        atPump(1, [number] { bromvale::raise(number); });
        form().backup.cmdEintragen.userClick();
    }
    EXPECT_EQ(
        logLines(),
        (Texts{
            "frmMain; cmdEintragen_Click; Das Löschen der Sicherungsdatei b.reg ist fehlgeschlagen.; 75; "
            "Fehler beim Zugriff auf Pfad/Datei",
            "frmMain; cmdEintragen_Click; ; 7; Nicht genügend Speicher",
        }));
    ASSERT_EQ(boxes().size(), 3u);
    EXPECT_EQ(boxes()[1].text, "Das Löschen der Sicherungsdatei b.reg ist fehlgeschlagen.");
    EXPECT_EQ(boxes()[1].style & 0xFFu, 64u);
    // The statement behind the failing wait is the deletion.
    EXPECT_EQ(filesLeft(), Texts{});
}

// What goes wrong on this page is for the log, whichever routine it happens in.
TEST_F(BackupVanishedTest, NoFailureShowsTheErrorDialog) {
    int dialogs = 0;
    setErrorDialog([&](auto, auto, auto, auto, auto) { ++dialogs; });
    AutoFileDelAfterReentry = 1;
    offline::machine().faults.failFrom("FindFirstFileA", 2, ERROR_ACCESS_DENIED);
    openPage({"a.reg", "b.reg"});
    offline::machine().faults.clear();
    list().userSelect({1});
    answer(IDYES);
    atPump(1, [] { bromvale::raise(7); });
    form().backup.cmdEintragen.userClick();
    offline::machine().faults.fail("OpenFile", 1, ERROR_ACCESS_DENIED);
    AutoFileDel();
    for (auto* const button : {&form().backup.cmdBearbeiten, &form().backup.cmdLöschen}) {
        for (const char* operation : {"ShellExecuteA", "MessageBoxA"}) {
            offline::machine().faults.clear();
            offline::machine().faults.observe([operation](std::string_view called) {
                if (called == operation) bromvale::raise(7);
            });
            form().backup.ReadBackupFiles();
            list().userSelect({1});
            button->userClick();
        }
    }
    offline::machine().faults.clear();
    setErrorDialog(nullptr);
    EXPECT_EQ(dialogs, 0);
    Texts routines;
    for (const std::string& line : logLines()) {
        const std::string routine = line.substr(0, line.find(';', line.find(';') + 1));
        if (routines.empty() || routines.back() != routine) routines.push_back(routine);
    }
    EXPECT_EQ(routines,
              (Texts{"frmMain; ReadBackupFiles", "frmMain; cmdEintragen_Click", "modMain; AutoFileDel",
                     "frmMain; cmdBearbeiten_Click", "frmMain; cmdLöschen_Click"}));
}

TEST_F(BackupVanishedTest, TheRestartIsTriedThoughTheWaitFailed) {
    RebootAfterEntry = 1;
    openPage();
    atPump(1, [] { bromvale::raise(75); });
    form().backup.cmdEintragen.userClick();
    EXPECT_EQ(offline::machine().events.count(EventKind::Restart), 1u);
}

}  // namespace
}  // namespace bromvale::testing

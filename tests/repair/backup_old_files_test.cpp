// The removal of old undo files at the start, by the machine's own date.
#include "base/calendar.h"
#include "base/failure.h"
#include "platform/machine.h"
#include "tests/repair/backup_fixture.h"

namespace bromvale::testing {
namespace {

class OldFilesTest : public BackupTest {
  protected:
    // Noon of the day so many days ago.
    static SYSTEMTIME daysAgo(int days) {
        SYSTEMTIME now{};
        GetLocalTime(&now);
        now.wHour = 12;
        FILETIME time{};
        SystemTimeToFileTime(&now, &time);
        std::uint64_t ticks = std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
        ticks -= std::uint64_t{864000000000u} * static_cast<std::uint64_t>(days);
        time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
        SYSTEMTIME then{};
        FileTimeToSystemTime(&time, &then);
        return then;
    }
};

TEST_F(OldFilesTest, AFileOfExactlyTheLimitStaysAndOneADayOlderGoes) {
    DelAfterDays = 10;
    undoFile("heute.reg", 3, daysAgo(0));
    undoFile("zehn.reg", 3, daysAgo(10));
    undoFile("elf.reg", 3, daysAgo(11));
    AutoFileDel();
    EXPECT_EQ(filesLeft(), (Texts{"heute.reg", "zehn.reg"}));
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(OldFilesTest, ACompleteCopyAgesLikeTheUndoFile) {
    DelAfterDays = 10;
    for (const char* name : {"R\xFC"
                             "ckg\xE4ngig_",
                             "Vollst\xE4ndig_"}) {
        undoFile(std::string(name) + "jung.reg", 3, daysAgo(10));
        undoFile(std::string(name) + "alt.reg", 3, daysAgo(11));
    }
    AutoFileDel();
    EXPECT_EQ(filesLeft(), (Texts{"R\xFC"
                                  "ckg\xE4ngig_jung.reg",
                                  "Vollst\xE4ndig_jung.reg"}));
}

TEST_F(OldFilesTest, ALimitOfNoDaysKeepsTheFilesOfToday) {
    DelAfterDays = 0;
    undoFile("heute.reg", 3, daysAgo(0));
    undoFile("gestern.reg", 3, daysAgo(1));
    AutoFileDel();
    EXPECT_EQ(filesLeft(), Texts{"heute.reg"});
}

TEST_F(OldFilesTest, OtherFilesStayHoweverOldTheyAre) {
    DelAfterDays = 1;
    writeWholeFile(BackupPath + "lies.txt", "x");
    setWritten(BackupPath + "lies.txt", daysAgo(500));
    AutoFileDel();
    EXPECT_EQ(filesIn(BackupPath, "*.*"), Texts{"lies.txt"});
}

TEST_F(OldFilesTest, AMissingFolderIsNoFailure) {
    BackupPath = AppPath + "Weg\\";
    AutoFileDel();
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(OldFilesTest, EveryStepIsTraced) {
    DelAfterDays = 10;
    undoFile("alt.reg", 3, daysAgo(20));
    undoFile("neu.reg", 3, daysAgo(1));
    switchTracingOn();
    AutoFileDel();
    Texts own;
    for (const std::string& line : logLines()) {
        if (line.starts_with("modMain")) own.push_back(line);
    }
    EXPECT_EQ(own, (Texts{
                       "modMain; AutoFileDel; startet; 0; ",
                       "modMain; AutoFileDel; 2 Dateien im Backup-Ordner gefunden; 0; ",
                       "modMain; AutoFileDel; " + BackupPath + "alt.reg gelöscht; 0; ",
                       "modMain; AutoFileDel; endet; 0; ",
                   }));
}

TEST_F(OldFilesTest, AFilesDateHasNoLeadingZerosAndNoTime) {
    undoFile("a.reg", 3, {2026, 3, 0, 5, 23, 59, 59, 0});
    EXPECT_EQ(GetFileDate(BackupPath + "a.reg"), "5.3.2026");
    undoFile("b.reg", 3, {2026, 12, 0, 24, 0, 0, 0, 0});
    EXPECT_EQ(GetFileDate(BackupPath + "b.reg"), "24.12.2026");
}

TEST_F(OldFilesTest, AMissingFileHasADateThatCannotBeCompared) {
    EXPECT_EQ(GetFileDate(BackupPath + "weg.reg"), "0.0.0");
    EXPECT_THROW(static_cast<void>(dayNumber("0.0.0")), Failure);
}

}  // namespace
}  // namespace bromvale::testing

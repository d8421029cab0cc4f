#include "core/machine_facts.h"

#include "base/failure.h"
#include "core/state.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using MachineFacts = testing::TestMachine;
using offline::machine;

struct SystemRow {
    offline::OsVersion os;
    const char* name;
    const char* build;
    const char* header;
};

const char* const kFour = "REGEDIT4\r\n\r\n";
const char* const kFive = "Windows Registry Editor Version 5.00\r\n\r\n";

// The buffer holds a hundred bytes with the NUL; what is longer is not told at all.
TEST_F(MachineFacts, AUsersNameMayHaveNinetyNineCharacters) {
    machine().user = std::string(99, 'x');
    EXPECT_EQ(ReadUserName(), std::string(99, 'x'));
    machine().user = std::string(100, 'x');
    EXPECT_EQ(ReadUserName(), "");
}

TEST_F(MachineFacts, NamesOfTheSystems) {
    const SystemRow rows[] = {
        {{2, 4, 0, 1381}, "Windows NT4", "1381", kFour},
        {{2, 4, 99, 1381}, "Windows NT4", "1381", kFour},
        {{2, 5, 0, 2195}, "Windows 2000", "2195", kFive},
        {{2, 5, 1, 2600}, "Windows XP", "2600", kFive},
        {{2, 5, 2, 3790}, "Unbekanntes Betriebssystem", "3790", kFour},
        {{2, 3, 51, 1057}, "Unbekanntes Betriebssystem", "1057", kFour},
        {{2, 6, 1, 7601}, "Unbekanntes Betriebssystem", "7601", kFour},
        {{2, 10, 0, 19045}, "Unbekanntes Betriebssystem", "19045", kFour},
        {{1, 4, 0, 0x040003B6}, "Windows 95", "950", kFour},
        {{1, 4, 10, 0x040A07CE}, "Windows 98", "1998", kFour},
        {{1, 4, 10, 1998}, "Windows 98", "1998", kFour},
        {{1, 4, 10, 0x040A08AE}, "Windows 98 SE", "2222", kFour},
        {{1, 4, 90, 0x045A0BB8}, "Windows ME", "3000", kFour},
        {{1, 4, 91, 3001}, "Unbekanntes Betriebssystem", "3001", kFour},
        {{1, 3, 95, 100}, "Unbekanntes Betriebssystem", "100", kFour},
        {{1, 5, 0, 1998}, "Windows 98", "1998", kFour},
        {{1, 5, 0, 1999}, "Windows 98 SE", "1999", kFour},
        {{1, 9, 90, 4000}, "Windows 98 SE", "4000", kFour},
        {{0, 3, 10, 0}, "Windows 32s", "0", kFour},
        {{0, 5, 1, 2600}, "Windows 32s", "2600", kFour},
        {{3, 5, 1, 2600}, "Unbekanntes Betriebssystem", "2600", kFour},
    };
    for (const SystemRow& row : rows) {
        machine().setOs(row.os);
        OSName = RegFileHeader = OSBuild = "alt";
        OS();
        SCOPED_TRACE(std::to_string(row.os.platform) + "." + std::to_string(row.os.major) + "." +
                     std::to_string(row.os.minor) + "." + std::to_string(row.os.build));
        EXPECT_EQ(OSName, row.name);
        EXPECT_EQ(OSBuild, row.build);
        EXPECT_EQ(RegFileHeader, row.header);
    }
}

TEST_F(MachineFacts, TheBuildIsTheLow16BitsWithTheirSign) {
    machine().setOs({2, 5, 1, 0x12347FFF});
    OS();
    EXPECT_EQ(OSBuild, "32767");
    machine().setOs({2, 5, 1, 32768});
    OS();
    EXPECT_EQ(OSBuild, "-32768");
    machine().setOs({2, 5, 1, 65535});
    OS();
    EXPECT_EQ(OSBuild, "-1");
}

TEST_F(MachineFacts, NamesAndFolders) {
    machine().computer = "BÜRO-PC";
    machine().user = "Jörg";
    EXPECT_EQ(ReadComputerName(), "BÜRO-PC");
    EXPECT_EQ(ReadUserName(), "Jörg");
    EXPECT_EQ(ReadWinDir(), "C:\\WINDOWS");
    EXPECT_EQ(ReadSysDir(), "C:\\WINDOWS\\SYSTEM32");
    EXPECT_EQ(ReadTmpDir(), "C:\\WINDOWS\\TEMP\\");
    machine().setOs({1, 4, 10, 1998});
    EXPECT_EQ(ReadSysDir(), "C:\\WINDOWS\\SYSTEM");
}

// The length that it would need comes back, and so all that the buffer was filled with.
TEST_F(MachineFacts, ASystemFolderThatDoesNotFitIsAsManyBlanksAsThereIsRoom) {
    machine().otherHalf.windows = "C:\\" + std::string(260, 'w');
    EXPECT_EQ(ReadSysDir(), std::string(255, ' '));
    machine().otherHalf.windows = "C:\\" + std::string(254 - 3 - 9, 'w');
    EXPECT_EQ(ReadSysDir(), machine().otherHalf.windows + "\\SYSTEM32");
}

TEST_F(MachineFacts, ACallThatFailsLeavesTheTextEmpty) {
    machine().faults.fail("GetUserNameA", 1, 5);
    machine().faults.fail("GetWindowsDirectoryA", 1, 5);
    machine().faults.fail("GetSystemDirectoryA", 1, 5);
    machine().faults.fail("GetTempPathA", 1, 5);
    EXPECT_EQ(ReadUserName(), "");
    EXPECT_EQ(ReadWinDir(), "");
    EXPECT_EQ(ReadSysDir(), "");
    EXPECT_EQ(ReadTmpDir(), "");
}

TEST_F(MachineFacts, AFailureOnTheWayIsReportedUnderTheNameOfWhatWasAsked) {
    fillState();
    machine().faults.observe([](std::string_view operation) {
        for (const std::string_view asked :
             {"GetUserNameA", "GetWindowsDirectoryA", "GetSystemDirectoryA", "GetTempPathA"}) {
            if (operation == asked) raise(13);
        }
    });
    for (const auto& ask : {ReadUserName, ReadWinDir, ReadSysDir, ReadTmpDir}) EXPECT_EQ(ask(), "");
    machine().faults.clear();
    std::vector<std::string> expected;
    for (const char* name : {"ReadUserName", "ReadWinDir", "ReadWinDir", "ReadSysDir", "ReadTmpDir"})
        expected.push_back(std::string("modMain; ") + name + "; ; 13; Typen unverträglich");
    EXPECT_EQ(logLines(), expected);
}

// The length that was handed in comes back, and with it what the buffer was filled with.
TEST_F(MachineFacts, AComputerWithoutANameIsCalledByTheBuffersFilling) {
    machine().faults.fail("GetComputerNameA", 1, 5);
    EXPECT_EQ(ReadComputerName(), "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX");
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

}  // namespace
}  // namespace bromvale

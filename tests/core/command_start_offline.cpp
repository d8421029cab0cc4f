#include "core/command_start.h"

#include <array>

#include "base/failure.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class CommandStartOfflineTest : public TestMachine {
  protected:
    static std::vector<std::string> started() {
        std::vector<std::string> lines;
        for (const auto& event : offline::machine().events.of(offline::EventKind::Run))
            lines.push_back(event.text);
        return lines;
    }
};

TEST_F(CommandStartOfflineTest, TheFileOnTheDriveDecidesAndTheWholeLineIsStarted) {
    makeFolderOnDisk(folder() + "Ein Ordner");
    writeWholeFile(folder() + "Ein Ordner\\weg.exe", "MZ");
    const std::string line = folder() + "Ein Ordner\\weg.exe /still";
    startCommand(line, 1);
    startCommand("\"" + folder() + "Ein Ordner\\weg\" /still", 1);
    EXPECT_EQ(started(), (std::vector<std::string>{line, "\"" + folder() + "Ein Ordner\\weg\" /still"}));
}

// This program has switched the system's boxes for missing discs off for itself alone.
TEST_F(CommandStartOfflineTest, AStartedProgramGetsTheSystemsOwnErrorMode) {
    offline::machine().drives.writeFile("C:\\Programme\\A\\weg.exe", "MZ");
    startCommand("C:\\Programme\\A\\weg.exe", 1);
    EXPECT_EQ(offline::machine().lastRequests.startFlags, CREATE_DEFAULT_ERROR_MODE);
}

TEST_F(CommandStartOfflineTest, VariablesAreReplacedBeforeTheStart) {
    offline::machine().drives.writeFile("C:\\Programme\\A\\weg.exe", "MZ");
    startCommand("%ProgramFiles%\\A\\weg.exe /x", 1);
    EXPECT_EQ(started(), std::vector<std::string>{"C:\\Programme\\A\\weg.exe /x"});
}

TEST_F(CommandStartOfflineTest, ALineStaysAsItIsWhereVariablesCannotBeReplaced) {
    offline::machine().drives.writeFile("C:\\Programme\\A\\weg.exe", "MZ");
    offline::machine().faults.fail("ExpandEnvironmentStringsA", 1, ERROR_NOT_ENOUGH_MEMORY);
    startCommand("C:\\Programme\\A\\weg.exe /x", 1);
    EXPECT_EQ(started(), std::vector<std::string>{"C:\\Programme\\A\\weg.exe /x"});
}

TEST_F(CommandStartOfflineTest, BlanksBeforeTheLineAreNotHandedOn) {
    offline::machine().drives.writeFile("C:\\a.exe", "MZ");
    startCommand(" \t \"C:\\a.exe\" /x", 1);
    EXPECT_EQ(started(), std::vector<std::string>{"\"C:\\a.exe\" /x"});
}

// A user's own folder has the name of the user.
TEST_F(CommandStartOfflineTest, AVariableMayHoldWhatTheCodePageLacks) {
    auto& machine = offline::machine();
    machine.environment["USERPROFILE"] = u"C:\\\u0141ukasz";
    machine.drives.writeFile(u"C:\\\u0141ukasz\\weg.exe", "MZ");
    machine.drives.writeFile(u"C:\\Lukasz\\weg.exe", "MZ");
    EXPECT_FALSE(isExactCommand("%UserProfile%\\weg.exe"));
    EXPECT_THROW(startCommand("%UserProfile%\\weg.exe", 1), Failure);
    machine.environment["USERPROFILE"] = u"C:\\J\u00F6rg";
    machine.drives.writeFile(u"C:\\J\u00F6rg\\weg.exe", "MZ");
    EXPECT_TRUE(isExactCommand("%UserProfile%\\weg.exe"));
    startCommand("%UserProfile%\\weg.exe", 1);
    EXPECT_EQ(started(), std::vector<std::string>{"C:\\Jörg\\weg.exe"});
}

TEST_F(CommandStartOfflineTest, WhatNoPathNamesIsNotMissing) {
    struct Row {
        const char* line;
        int number;
    };
    for (const Row row :
         {Row{"\"\"C:\\WINDOWS\\notepad.exe\" /u\"", 5}, Row{"file:///C:/WINDOWS/notepad.exe", 5},
          Row{"//server/freigabe/weg.exe", 76}, Row{"C:/Weg/weg.exe", 53},
          Row{"C:\\WINDOWS\\SYSTEM*\\weg.exe", 52}, Row{"\"C:\\WINDOWS\\SYSTEM32\" /u", 5}}) {
        try {
            startCommand(row.line, 1);
            ADD_FAILURE() << row.line;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, row.number) << row.line;
        }
    }
}

TEST_F(CommandStartOfflineTest, ADriveThatRefusesToTellIsNoMissingFile) {
    offline::machine().faults.fail("CreateProcessA", 1, ERROR_PATH_NOT_FOUND);
    offline::machine().faults.fail("GetFileAttributesA", 2, ERROR_ACCESS_DENIED);
    try {
        startCommand("C:\\Weg\\weg.exe", 1);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 71);
    }
}

// --- a program that wants more rights ---

constexpr long kElevationRequired = 740;

TEST_F(CommandStartOfflineTest, AProgramThatWantsMoreRightsIsHandedToTheShell) {
    makeFolderOnDisk(folder() + "Ein Ordner");
    for (const char* name : {"Ein Ordner\\weg.exe", "kurz.exe"}) writeWholeFile(folder() + name, "MZ");
    SetCurrentDirectoryA("C:\\");
    auto& machine = offline::machine();
    const std::string ein = folder() + "Ein Ordner\\weg";
    const std::string kurz = folder() + "kurz.exe";
    const std::array<std::array<std::string, 3>, 8> rows{{
        {ein + ".exe /still  \"a b\"", ein + ".exe", "/still  \"a b\""},
        {ein + " /still", ein + ".exe", "/still"},
        {"\"" + ein + "\" /still", ein + ".exe", "/still"},
        {" \"" + ein + ".exe\"", ein + ".exe", ""},
        {"\"" + ein + ".exe\"/still", ein + ".exe", "/still"},
        {"  " + kurz, kurz, ""},
        {kurz + "\t/x", kurz, "/x"},
        {"cmd.exe /c a.b", "cmd.exe", "/c a.b"},
    }};
    for (const auto& [line, program, switches] : rows) {
        machine.faults.fail("CreateProcessA", 1, kElevationRequired);
        machine.faults.fail("ShellExecuteA", 1, 42);
        startCommand(line, 1);
        const auto event = machine.events.of(offline::EventKind::ShellExecute).back();
        EXPECT_EQ(event.text, program) << line;
        EXPECT_EQ(event.caption, "") << line;
        EXPECT_EQ(event.number, 1u) << line;
        EXPECT_EQ(machine.lastRequests.switches, switches) << line;
    }
    EXPECT_EQ(started(), std::vector<std::string>{});
    EXPECT_EQ(machine.events.count(offline::EventKind::ShellExecute), 8u);
}

TEST_F(CommandStartOfflineTest, AUserWhoRefusesTheRightsGivesTheFailureOfTheStart) {
    offline::machine().faults.fail("CreateProcessA", 1, kElevationRequired);
    offline::machine().faults.fail("ShellExecuteA", 1, SE_ERR_ACCESSDENIED);
    try {
        startCommand("C:\\x.exe /still", 1);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 5);
    }
    EXPECT_EQ(offline::machine().events.count(offline::EventKind::ShellExecute), 1u);
}

TEST_F(CommandStartOfflineTest, TheShellHasStartedWhatItAnswersAbove32) {
    for (const long answer : {32L, 33L}) {
        offline::machine().faults.fail("CreateProcessA", 1, kElevationRequired);
        offline::machine().faults.fail("ShellExecuteA", 1, answer);
        bool failed = false;
        try {
            startCommand("C:\\x.exe", 1);
        } catch (const Failure&) {
            failed = true;
        }
        EXPECT_EQ(failed, answer == 32) << answer;
    }
}

TEST_F(CommandStartOfflineTest, AnyOtherErrorIsNoMatterForTheShell) {
    offline::machine().faults.fail("CreateProcessA", 1, ERROR_ACCESS_DENIED);
    EXPECT_THROW(startCommand("C:\\x.exe", 1), Failure);
    EXPECT_EQ(offline::machine().events.count(offline::EventKind::ShellExecute), 0u);
}

TEST_F(CommandStartOfflineTest, TheProgramIsAskedToOpenInTheGivenState) {
    writeWholeFile(folder() + "weg.exe", "MZ");
    for (const int state : {1, 0, 7}) {
        startCommand(folder() + "weg.exe", state);
        EXPECT_EQ(offline::machine().lastRequests.startState, state);
    }
}

struct ErrorRow {
    long error;
    int number;
};
class CommandStartErrorTest : public TestMachine, public ::testing::WithParamInterface<ErrorRow> {};

TEST_P(CommandStartErrorTest, EachErrorOfTheSystemHasItsFailure) {
    offline::machine().faults.fail("CreateProcessA", 1, GetParam().error);
    try {
        startCommand("C:\\x.exe", 1);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, GetParam().number);
        EXPECT_EQ(failure.description, failureText(GetParam().number));
        EXPECT_NE(failure.description, failureText(-1));
    }
    EXPECT_EQ(offline::machine().events.count(offline::EventKind::Run), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Errors, CommandStartErrorTest,
    ::testing::Values(ErrorRow{ERROR_FILE_NOT_FOUND, 53}, ErrorRow{ERROR_PATH_NOT_FOUND, 53},
                      ErrorRow{ERROR_ACCESS_DENIED, 70}, ErrorRow{ERROR_SHARING_VIOLATION, 70},
                      ErrorRow{ERROR_NOT_ENOUGH_MEMORY, 7}, ErrorRow{ERROR_INVALID_NAME, 52},
                      ErrorRow{ERROR_FILENAME_EXCED_RANGE, 52}, ErrorRow{ERROR_NOT_READY, 71},
                      ErrorRow{ERROR_BAD_NETPATH, 76}, ErrorRow{ERROR_BAD_EXE_FORMAT, 5}, ErrorRow{740, 5}),
    [](const auto& info) { return "Error" + std::to_string(info.param.error); });

}  // namespace
}  // namespace bromvale::testing

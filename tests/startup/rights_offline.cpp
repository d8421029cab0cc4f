// The question for an administrator's rights, which comes before everything else.
#include <algorithm>

#include "platform/machine.h"
#include "platform/offline/files/api.h"
#include "tests/startup/startup_fixture.h"

namespace bromvale {
namespace {

using offline::Rights;
constexpr const char* kAsking = "Bromvale asks for rights";

class AskedStart : public StartUpTest {
  protected:
    AskedStart() {
        machine().setOs({2, 6, 1, 7601});
        machine().rights.token = Rights::Token::Limited;
        set("AutoScan", "0");
        machine().events.clear();
    }
    static std::vector<Rights::Question>& asked() { return machine().rights.asked; }
    // Nothing is on the disk, in the registry or on the screen that was not there before.
    void expectUntouched() {
        EXPECT_EQ(filesIn(folder(), "*"), Lines{});
        EXPECT_EQ(AppTitle, "");
        EXPECT_EQ(formNames(), Lines{});
        EXPECT_TRUE(machine().events.all().empty());
    }
};

TEST_F(AskedStart, AgreedTheOtherProcessHasFileArgumentsAndFolderAndThisOneEndsUntouched) {
    machine().rights.answer = Rights::Answer::Agrees;
    machine().commandLine = "-d \"mit  Blank\" ";
    machine().drives.currentDirectory = "C:\\WINDOWS\\TEMP";
    machine().faults.startCounting();
    runProgram();
    EXPECT_EQ(asked(), (std::vector<Rights::Question>{{"C:\\Programme\\Bromvale\\Bromvale.exe",
                                                       "-d \"mit  Blank\" ", "C:\\WINDOWS\\TEMP"}}));
    EXPECT_EQ(machine().faults.calls("CreateMutexA"), 1u) << "only the one that is held while asking";
    EXPECT_EQ(machine().faults.calls("RegOpenKeyA") + machine().faults.calls("RegOpenKeyExA"), 0u);
    expectUntouched();
}

TEST_F(AskedStart, DeclinedItGoesOnWithoutTheRightsAndAsksNoSecondTime) {
    Main();
    EXPECT_EQ(asked().size(), 1u);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(AskedStart, AQuestionThatFailsIsOneThatWasDeclined) {
    machine().rights.answer = Rights::Answer::Fails;
    Main();
    EXPECT_EQ(asked().size(), 1u);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(AskedStart, TheQuestionIsForgottenWithItsAnswer) {
    const std::size_t before = machine().kernelObjects.count();
    Main();
    EXPECT_EQ(machine().kernelObjects.count(), before + 1) << "the mutex of the running program alone";
}

TEST_F(AskedStart, TheEmptyingRoadNeverAsks) {
    machine().rights.answer = Rights::Answer::Agrees;
    machine().commandLine = "-d";
    writeWholeFile(folder() + "liste.txt", "");
    Main();
    EXPECT_TRUE(asked().empty());
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(logLines(), Lines{kStarted});
}

TEST_F(AskedStart, WhereTheProgramRunsNothingIsAsked) {
    machine().rights.answer = Rights::Answer::Agrees;
    machine().otherMutexes.insert("Bromvale is running");
    Main();
    EXPECT_TRUE(asked().empty());
    expectUntouched();
}

TEST_F(AskedStart, WhereItRunsUnderOtherRightsNothingIsAsked) {
    machine().faults.failFrom("OpenMutexA", 1, ERROR_ACCESS_DENIED);
    machine().faults.fail("CreateMutexA", 1, ERROR_ACCESS_DENIED);
    Main();
    EXPECT_TRUE(asked().empty());
    expectUntouched();
}

// As where the process that was started with the rights finds itself without them: what has started it waits
// for it.
TEST_F(AskedStart, AStartWithinTheQuestionOfAnotherOneDoesNotAskAndGoesOnAfterAWhile) {
    machine().rights.answer = Rights::Answer::Agrees;
    machine().otherMutexes.insert(kAsking);
    const auto start = machine().clock.elapsed();
    Main();
    EXPECT_TRUE(asked().empty());
    EXPECT_EQ(formNames(), Lines{"frmMain"});
    EXPECT_GE(machine().clock.elapsed() - start, 130'000) << "longer than the system waits for an answer";
    EXPECT_LE(machine().clock.elapsed() - start, 160'000);
}

TEST_F(AskedStart, AStartWithinTheQuestionOfAnotherOneEndsWhereThatLedToARunningProgram) {
    machine().otherMutexes.insert(kAsking);
    int looks = 0;
    machine().faults.observe([&](std::string_view operation) {
        if (operation != "OpenMutexA" || ++looks != 5) return;
        machine().otherMutexes = {"Bromvale is running"};
    });
    Main();
    EXPECT_GE(looks, 5);
    EXPECT_TRUE(asked().empty());
    expectUntouched();
}

// A program that does not come up keeps its starter for ten seconds and no longer.
TEST_F(AskedStart, TheWaitForTheOtherProcessHasAnEnd) {
    machine().rights.answer = Rights::Answer::Agrees;
    machine().rights.startsAtOnce = false;
    const auto start = machine().clock.elapsed();
    runProgram();
    EXPECT_EQ(machine().clock.elapsed() - start, 10'000);
    EXPECT_EQ(formNames(), Lines{});
}

TEST_F(AskedStart, WhoHasTheRightsOrCannotHaveThemIsNotAsked) {
    machine().rights.token = Rights::Token::Standard;
    Main();
    EXPECT_TRUE(asked().empty());
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

class OldSystem : public AskedStart, public ::testing::WithParamInterface<const char*> {};

TEST_P(OldSystem, SeesNothingOfIt) {
    machine().setOs(*offline::osByName(GetParam()));
    machine().faults.startCounting();
    Main();
    EXPECT_TRUE(asked().empty());
    EXPECT_EQ(machine().faults.calls("OpenMutexA"), 0u);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

INSTANTIATE_TEST_SUITE_P(Systems, OldSystem,
                         ::testing::Values("Windows 98", "Windows NT4", "Windows 2000", "Windows XP"));

// --- a program folder that takes no files ---

class ClosedFolder : public StartUpTest {
  protected:
    ClosedFolder() {
        set("AutoScan", "0");
        machine().drives.protect("C:\\Programme");
    }
};

TEST_F(ClosedFolder, IsToldOnceAtTheStart) {
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        boxes()[0].text,
        "In den Ordner des Programms kann nicht geschrieben werden:\r\nC:\\Programme\\Bromvale\\\r\n\r\nDas "
        "Protokoll, die Sicherungsdateien und die Ordnerliste können dort nicht angelegt werden. Sie können "
        "die Registry durchsuchen, aber nichts daraus entfernen. Starten Sie das Programm mit den nötigen "
        "Rechten oder aus einem Ordner, in den Sie schreiben dürfen.");
    EXPECT_EQ(boxes()[0].style, 64u);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
    EXPECT_EQ(filesIn(folder(), "*"), Lines{});
}

TEST_F(ClosedFolder, ShowsNothingOnTheEmptyingRoad) {
    machine().drives.writeFile("C:\\Programme\\Bromvale\\liste.txt", "C:\\Müll\r\n");
    machine().drives.writeFile("C:\\Müll\\a.txt", "x");
    machine().commandLine = "-d";
    runProgram();
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(filesIn("C:\\Müll\\", "*"), Lines{});
    EXPECT_EQ(formNames(), Lines{});
}

TEST_F(ClosedFolder, WithoutAListShowsNothingOnTheEmptyingRoad) {
    machine().commandLine = "-d";
    runProgram();
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(formNames(), Lines{});
}

}  // namespace
}  // namespace bromvale

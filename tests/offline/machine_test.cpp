// The offline machine: clock, locale, message boxes, processes, shell, timers.
#include "platform/offline/machine.h"

#include "platform/controls.h"
#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/screen.h"
#include "platform/shell.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class OfflineMachine : public TestMachine {
  protected:
    static int recycle(const std::string& path, FILEOP_FLAGS flags) {
        SHFILEOPSTRUCTA operation{};
        operation.wFunc = FO_DELETE;
        const std::string list = path + '\0';
        operation.pFrom = list.c_str();
        operation.fFlags = flags;
        return SHFileOperationA(&operation);
    }
};

TEST_F(OfflineMachine, TheClockMovesOnlyWhenTheProgramWaits) {
    machine().clock.set(2026, 12, 31, 23, 59, 58);
    SYSTEMTIME time{};
    GetLocalTime(&time);
    EXPECT_EQ(time.wDayOfWeek, 4);  // a Thursday
    Sleep(1500);
    WaitForEvents(600);
    GetLocalTime(&time);
    EXPECT_EQ(time.wYear, 2027);
    EXPECT_EQ(time.wMonth, 1);
    EXPECT_EQ(time.wDay, 1);
    EXPECT_EQ(time.wSecond, 0);
    EXPECT_EQ(time.wMilliseconds, 100);
    EXPECT_EQ(machine().clock.elapsed(), 2100);
}

TEST_F(OfflineMachine, BothLocalesWriteDatesAndTimesTheirWay) {
    machine().clock.set(2026, 3, 5, 19, 2, 9);
    char buffer[128];
    const auto date = [&](DWORD flags) {
        EXPECT_GT(GetDateFormatA(LOCALE_USER_DEFAULT, flags, nullptr, nullptr, buffer, sizeof buffer), 0);
        return std::string(buffer);
    };
    const auto time = [&] {
        EXPECT_GT(GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, buffer, sizeof buffer), 0);
        return std::string(buffer);
    };
    EXPECT_EQ(date(0), "05.03.2026");
    EXPECT_EQ(date(DATE_LONGDATE), "Donnerstag, 5. März 2026");
    EXPECT_EQ(time(), "19:02:09");
    machine().locale = offline::englishLocale();
    EXPECT_EQ(date(0), "3/5/2026");
    EXPECT_EQ(date(DATE_LONGDATE), "Thursday, March 05, 2026");
    EXPECT_EQ(time(), "7:02:09 PM");
}

TEST_F(OfflineMachine, EachSystemTellsItsNumbers) {
    struct Row {
        const char* name;
        DWORD platform, major, minor, build;
    };
    // The 9x family repeats its version in the build number's high word.
    for (const Row row : {Row{"Windows 95", 1, 4, 0, 0x040003B6}, Row{"Windows 98", 1, 4, 10, 0x040A07CE},
                          Row{"Windows 98 SE", 1, 4, 10, 0x040A08AE}, Row{"Windows ME", 1, 4, 90, 0x045A0BB8},
                          Row{"Windows NT4", 2, 4, 0, 1381}, Row{"Windows 2000", 2, 5, 0, 2195},
                          Row{"Windows XP", 2, 5, 1, 2600}, Row{"1.4.10.1998", 1, 4, 10, 0x040A07CE},
                          Row{"2.10.0.19045", 2, 10, 0, 19045}, Row{"0.3.1.0", 0, 3, 1, 0}}) {
        const auto os = offline::osByName(row.name);
        ASSERT_TRUE(os) << row.name;
        machine().setOs(*os);
        OSVERSIONINFOA info{};
        info.dwOSVersionInfoSize = 148;
        ASSERT_NE(GetVersionExA(&info), 0);
        EXPECT_EQ(info.dwPlatformId, row.platform) << row.name;
        EXPECT_EQ(info.dwMajorVersion, row.major) << row.name;
        EXPECT_EQ(info.dwMinorVersion, row.minor) << row.name;
        EXPECT_EQ(info.dwBuildNumber, row.build) << row.name;
    }
    for (const char* name : {"Windows 3.1", "", "2.5.1", "2.5.1.x", "2.5.1.2600.1", "-1.2.3.4"}) {
        EXPECT_FALSE(offline::osByName(name)) << name;
    }
}

TEST_F(OfflineMachine, TheSystemFolderIsNamedByTheFamily) {
    char buffer[64];
    GetSystemDirectoryA(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "C:\\WINDOWS\\SYSTEM32");
    machine().setOs(*offline::osByName("Windows 98"));
    GetSystemDirectoryA(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "C:\\WINDOWS\\SYSTEM");
    EXPECT_NE(GetFileAttributesA(buffer), 0xFFFFFFFFu);
    EXPECT_NE(GetFileAttributesA("C:\\WINDOWS\\TEMP\\"), 0xFFFFFFFFu);
    EXPECT_NE(GetFileAttributesA("C:\\Programme"), 0xFFFFFFFFu);
}

TEST_F(OfflineMachine, MessageBoxesAreAnsweredInOrderAndThenByTheirKind) {
    machine().answers = {IDYES, IDCANCEL};
    EXPECT_EQ(MessageBoxA(nullptr, "eins", "Titel", MB_YESNO | MB_ICONQUESTION), IDYES);
    EXPECT_EQ(MessageBoxA(nullptr, "zwei", "Titel", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(MessageBoxA(nullptr, "drei", "Titel", MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, "vier", "Titel", MB_YESNO), IDNO);
    EXPECT_EQ(MessageBoxA(nullptr, "fünf", "Titel", MB_YESNOCANCEL), IDCANCEL);
    const auto boxes = machine().events.of(EventKind::MessageBox);
    ASSERT_EQ(boxes.size(), 5u);
    EXPECT_EQ(boxes[0].text, "eins");
    EXPECT_EQ(boxes[0].caption, "Titel");
    EXPECT_EQ(boxes[0].number, 36u);
    EXPECT_EQ(boxes[0].answer, IDYES);
}

TEST_F(OfflineMachine, TheProcessEndsByAnExceptionThatIsNoFailure) {
    bool caught = false;
    try {
        TerminateProcess(GetCurrentProcess(), 3);
    } catch (const Failure&) {
        FAIL();
    } catch (const offline::ProcessEnded& ended) {
        caught = ended.exitCode == 3;
    }
    EXPECT_TRUE(caught);
    machine().terminateReturns = true;
    EXPECT_NE(TerminateProcess(GetCurrentProcess(), 0), 0);
    EXPECT_EQ(machine().events.count(EventKind::End), 2u);
}

TEST_F(OfflineMachine, APreviousInstanceShowsInTheLastError) {
    CreateMutexA(nullptr, FALSE, "einer");
    EXPECT_EQ(GetLastError(), 0u);
    machine().previousInstance = true;
    CreateMutexA(nullptr, FALSE, "einer");
    EXPECT_EQ(GetLastError(), 183u);
}

TEST_F(OfflineMachine, ARestartOnNtWantsThePrivilege) {
    EXPECT_NE(ExitWindowsEx(6, 0), 0);
    EXPECT_EQ(machine().events.of(EventKind::Restart)[0].number, 6u);
    machine().shutdownPrivilege = false;
    EXPECT_EQ(ExitWindowsEx(6, 0), 0);
    EXPECT_EQ(GetLastError(), 1314u);
    machine().setOs(*offline::osByName("Windows 98"));
    EXPECT_NE(ExitWindowsEx(6, 0), 0);
    HANDLE token = nullptr;
    EXPECT_EQ(OpenProcessToken(GetCurrentProcess(), 40, &token), 0);
    EXPECT_EQ(GetLastError(), 120u);
}

TEST_F(OfflineMachine, TheTrayRecordIsToldByItsToolTip) {
    NOTIFYICONDATAA record{};
    record.uCallbackMessage = 512;
    std::string("Bromvale").copy(record.szTip, sizeof record.szTip);
    EXPECT_NE(Shell_NotifyIconA(NIM_ADD, &record), 0);
    EXPECT_NE(Shell_NotifyIconA(NIM_DELETE, &record), 0);
    const auto added = machine().events.of(EventKind::TrayAdd);
    ASSERT_EQ(added.size(), 1u);
    EXPECT_EQ(added[0].text, "Bromvale");
    EXPECT_EQ(added[0].number, 512u);
    EXPECT_EQ(machine().events.count(EventKind::TrayDelete), 1u);
}

TEST_F(OfflineMachine, OpeningAFileThatIsMissingGivesTwo) {
    writeWholeFile(folder() + "a.reg", "x");
    const auto open = [](const std::string& path) {
        return reinterpret_cast<std::intptr_t>(
            ShellExecuteA(nullptr, "Open", path.c_str(), nullptr, nullptr, 1));
    };
    EXPECT_GT(open(folder() + "a.reg"), 32);
    EXPECT_EQ(open(folder() + "b.reg"), 2);
    EXPECT_GT(open("http://www.bromvale.example/"), 32);
    const auto events = machine().events.of(EventKind::ShellExecute);
    EXPECT_EQ(events[0].caption, "Open");
    EXPECT_EQ(events[1].text, folder() + "b.reg");
}

TEST_F(OfflineMachine, WhatIsDeletedWithUndoLiesInTheRecycleBin) {
    writeWholeFile(folder() + "a.txt", "x");
    makeFolderOnDisk(folder() + "Ordner");
    writeWholeFile(folder() + "Ordner\\b.txt", "y");
    EXPECT_EQ(recycle(folder() + "A.TXT", FOF_ALLOWUNDO | FOF_NOCONFIRMATION), 0);
    EXPECT_EQ(recycle(folder() + "Ordner", FOF_ALLOWUNDO | FOF_NOCONFIRMATION), 0);
    EXPECT_NE(recycle(folder() + "nichts", FOF_ALLOWUNDO), 0);
    writeWholeFile(folder() + "a.txt", "z");
    EXPECT_EQ(recycle(folder() + "a.txt", FOF_ALLOWUNDO), 0);
    EXPECT_EQ(filesIn(folder(), "*"), std::vector<std::string>{});
    const auto& bin = machine().drives.recycled;
    ASSERT_EQ(bin.size(), 3u);
    EXPECT_EQ(bin[0].stored, "a.txt");
    EXPECT_EQ(bin[1].path, folder() + "Ordner");
    EXPECT_EQ(bin[2].stored, "a.txt (2)");
}

TEST_F(OfflineMachine, DeletingForGoodTakesAWholeFolderAndMasks) {
    makeFolderOnDisk(folder() + "Ordner");
    makeFolderOnDisk(folder() + "Ordner\\Tief");
    writeWholeFile(folder() + "Ordner\\Tief\\b.txt", "y");
    for (const char* name : {"a.tmp", "b.tmp", "c.txt"}) writeWholeFile(folder() + name, "x");
    EXPECT_EQ(recycle(folder() + "Ordner", 0), 0);
    EXPECT_EQ(recycle(folder() + "*.tmp", 0), 0);
    EXPECT_EQ(filesIn(folder(), "*"), std::vector<std::string>{"c.txt"});
    EXPECT_TRUE(machine().drives.recycled.empty());
}

TEST_F(OfflineMachine, DeletingWhatIsNotThereAnswersThatTheFileIsNotFound) {
    EXPECT_EQ(recycle(folder() + "fehlt.txt", 0), 2);
    EXPECT_EQ(recycle(folder() + "*.fehlt", 0), 2);
    EXPECT_EQ(recycle(folder() + "*.fehlt", FOF_ALLOWUNDO), 2);
}

TEST_F(OfflineMachine, EveryFileFunctionHasAFaultPoint) {
    writeWholeFile(folder() + "a", "x");
    machine().faults.fail("FindFirstFileA", 2, 5);
    WIN32_FIND_DATAA data{};
    EXPECT_NE(FindFirstFileA((folder() + "a").c_str(), &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(FindFirstFileA((folder() + "a").c_str(), &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 5u);
    EXPECT_NE(FindFirstFileA((folder() + "a").c_str(), &data), INVALID_HANDLE_VALUE);
    machine().faults.failFrom("WriteFile", 1, ERROR_HANDLE_DISK_FULL);
    const HANDLE file =
        CreateFileA((folder() + "b").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    DWORD written = 9;
    EXPECT_EQ(WriteFile(file, "x", 1, &written, nullptr), 0);
    EXPECT_EQ(GetLastError(), 39u);
    EXPECT_EQ(written, 0u);
    CloseHandle(file);
    EXPECT_EQ(readWholeFile(folder() + "b"), "");
}

TEST_F(OfflineMachine, ActionsRunAtTheirPumpAndOnlyThere) {
    std::vector<std::string> done;
    machine().pump.at(3, [&] { done.emplace_back("drei"); });
    machine().pump.at(1, [&] { done.emplace_back("eins"); });
    DoEvents();
    EXPECT_EQ(done, std::vector<std::string>{"eins"});
    DoEvents();
    DoEvents();
    DoEvents();
    EXPECT_EQ(done, (std::vector<std::string>{"eins", "drei"}));
}

class TimedForm : public Form {
  public:
    TimedForm() : Form("frmTimed") {}
    Timer timer{this, "tmrTimer"};

  protected:
    void design() override {}
};

TEST_F(OfflineMachine, ATimerTicksWhenItsTimeHasComeAndNotBefore) {
    TimedForm form;
    form.load();
    int ticks = 0;
    form.timer.onTimer = [&] { ++ticks; };
    form.timer.setInterval(50);
    form.timer.setEnabled(true);
    DoEvents();
    machine().clock.advance(49);
    DoEvents();
    EXPECT_EQ(ticks, 0);
    machine().clock.advance(1);
    DoEvents();
    EXPECT_EQ(ticks, 1);
    form.unload();
}

TEST_F(OfflineMachine, TheScreenIsMeasuredInTwips) {
    EXPECT_EQ(twipsPerPixel(), 15);
    EXPECT_EQ(screenWidth(), 15360);
    EXPECT_EQ(screenHeight(), 11520);
    machine().screen.dpi = 144;
    EXPECT_EQ(twipsPerPixel(), 10);
    EXPECT_EQ(screenWidth(), 10240);
}

TEST_F(OfflineMachine, HelpIsRecorded) {
    EXPECT_EQ(HtmlHelpA(nullptr, "Bromvale.chm", 0, 0), nullptr);
    const auto help = machine().events.of(EventKind::Help);
    ASSERT_EQ(help.size(), 1u);
    EXPECT_EQ(help[0].text, "Bromvale.chm");
}

}  // namespace
}  // namespace bromvale::testing

// Programs, mutexes, privileges and libraries of the offline machine, and what it tells of itself.
#include "platform/offline/desktop/process_api.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "platform/files.h"
#include "platform/machine.h"
#include "platform/offline/machine.h"
#include "platform/screen.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;
using Texts = std::vector<std::string>;

class ProcessTest : public TestMachine {
  protected:
    // 0 or the last error.
    static DWORD start(const char* application, std::string line, STARTUPINFOA* info = nullptr,
                       PROCESS_INFORMATION* made = nullptr) {
        SetLastError(0);
        const BOOL started = CreateProcessA(application, line.empty() ? nullptr : line.data(), nullptr,
                                            nullptr, FALSE, 7, nullptr, nullptr, info, made);
        return started != 0 ? 0 : GetLastError();
    }
    static Texts started() {
        Texts lines;
        for (const auto& event : machine().events.of(EventKind::Run)) lines.push_back(event.text);
        return lines;
    }
    // A locale's or a folder's text; `size` with room for the NUL.
    template <class Get>
    static std::string told(DWORD size, const Get& get) {
        std::string buffer(size, '.');
        const DWORD answer = get(buffer.data(), size);
        buffer.resize(std::min(buffer.find('\0'), buffer.size()));
        return buffer + " " + std::to_string(answer);
    }
};

TEST_F(ProcessTest, AProgramIsStartedWhereItIs) {
    writeWholeFile(folder() + "ein programm.exe", "MZ");
    const std::string path = folder() + "ein programm.exe";
    EXPECT_EQ(start(path.c_str(), ""), 0u);
    EXPECT_EQ(start(path.c_str(), "irgendwas /x"), 0u);
    EXPECT_EQ(start((folder() + "ein").c_str(), ""), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(start(nullptr, folder() + "fehlt.exe"), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(started(), (Texts{path, "irgendwas /x"}));
}

TEST_F(ProcessTest, HowItsWindowOpensIsOnlyToldWhereTheCallerSaysSo) {
    writeWholeFile(folder() + "a.exe", "MZ");
    STARTUPINFOA info{};
    info.wShowWindow = 3;
    start((folder() + "a.exe").c_str(), "", &info);
    EXPECT_EQ(machine().lastRequests.startState, -1);
    EXPECT_EQ(machine().lastRequests.startFlags, 7u);
    info.dwFlags = STARTF_USESHOWWINDOW;
    start((folder() + "a.exe").c_str(), "", &info);
    EXPECT_EQ(machine().lastRequests.startState, 3);
    start((folder() + "a.exe").c_str(), "");
    EXPECT_EQ(machine().lastRequests.startState, -1);
}

TEST_F(ProcessTest, TwoHandlesComeWithItThatCanBeClosedOnce) {
    writeWholeFile(folder() + "a.exe", "MZ");
    PROCESS_INFORMATION made{};
    ASSERT_EQ(start((folder() + "a.exe").c_str(), "", nullptr, &made), 0u);
    EXPECT_NE(made.hProcess, made.hThread);
    for (const HANDLE handle : {made.hProcess, made.hThread}) {
        EXPECT_NE(CloseHandle(handle), 0);
        EXPECT_EQ(CloseHandle(handle), 0);
    }
}

TEST_F(ProcessTest, OnlyAMutexOfOthersIsOpened) {
    machine().otherMutexes.insert("einer");
    EXPECT_NE(OpenMutexA(0, FALSE, "einer"), nullptr);
    EXPECT_EQ(OpenMutexA(0, FALSE, "keiner"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    CreateMutexA(nullptr, FALSE, "einer");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    CreateMutexA(nullptr, FALSE, nullptr);
    EXPECT_EQ(GetLastError(), 0u);
    machine().previousInstance = true;
    EXPECT_NE(OpenMutexA(0, FALSE, "keiner"), nullptr);
}

TEST_F(ProcessTest, OnePrivilegeIsKnownAndSwitchedOn) {
    LUID id{};
    EXPECT_NE(LookupPrivilegeValueA(nullptr, "seSHUTDOWNprivilege", &id), 0);
    EXPECT_EQ(id.LowPart, 19u);
    EXPECT_EQ(LookupPrivilegeValueA(nullptr, "SeDebugPrivilege", &id), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_SUCH_PRIVILEGE));
    HANDLE token = nullptr;
    ASSERT_NE(OpenProcessToken(GetCurrentProcess(), 40, &token), 0);
    EXPECT_NE(CloseHandle(token), 0);

    TOKEN_PRIVILEGES wanted{};
    wanted.PrivilegeCount = 1;
    wanted.Privileges[0] = {{19, 0}, 2};
    const auto adjust = [&](TOKEN_PRIVILEGES* privileges) {
        SetLastError(77);
        EXPECT_NE(AdjustTokenPrivileges(token, FALSE, privileges, 0, nullptr, nullptr), 0);
        return GetLastError();
    };
    EXPECT_EQ(adjust(&wanted), 0u);
    EXPECT_EQ(adjust(nullptr), static_cast<DWORD>(ERROR_NOT_ALL_ASSIGNED));
    wanted.Privileges[0].Luid.LowPart = 20;
    EXPECT_EQ(adjust(&wanted), static_cast<DWORD>(ERROR_NOT_ALL_ASSIGNED));
    wanted.Privileges[0].Luid.LowPart = 19;
    wanted.PrivilegeCount = 2;
    EXPECT_EQ(adjust(&wanted), static_cast<DWORD>(ERROR_NOT_ALL_ASSIGNED));
    wanted.PrivilegeCount = 1;
    machine().shutdownPrivilege = false;
    EXPECT_EQ(adjust(&wanted), static_cast<DWORD>(ERROR_NOT_ALL_ASSIGNED));
    const auto told = machine().events.of(EventKind::Privilege);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].text, "SeShutdownPrivilege");
    EXPECT_EQ(told[0].number, 2u);

    machine().setOs(*offline::osByName("Windows 98"));
    EXPECT_EQ(LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &id), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CALL_NOT_IMPLEMENTED));
}

TEST_F(ProcessTest, ALibraryIsFoundByItsPathOrInTheSystemsFolder) {
    writeWholeFile(folder() + "eine.dll", "MZ");
    writeWholeFile(machine().systemFolder() + "\\andere.dll", "MZ");
    const HMODULE own = LoadLibraryA((folder() + "eine.dll").c_str());
    const HMODULE systems = LoadLibraryA("andere.dll");
    ASSERT_NE(own, nullptr);
    ASSERT_NE(systems, nullptr);
    EXPECT_NE(own, systems);
    EXPECT_EQ(LoadLibraryA("fehlt.dll"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    EXPECT_NE(FreeLibrary(own), 0);
}

TEST_F(ProcessTest, AnEntryIsCalledInTheLibraryThatHasIt) {
    for (const char* name : {"a.dll", "b.dll"}) writeWholeFile(machine().systemFolder() + "\\" + name, "MZ");
    machine().libraryEntries["a.dll"] = {true, 5};
    machine().libraryEntries["b.dll"] = {false, 0};
    const HMODULE a = LoadLibraryA("a.dll");
    const HMODULE b = LoadLibraryA("b.dll");
    const FARPROC entry = GetProcAddress(a, "DllRegisterServer");
    ASSERT_NE(entry, nullptr);
    const auto call = [](FARPROC function) {
        const auto procedure = reinterpret_cast<WNDPROC>(reinterpret_cast<void (*)()>(function));
        return CallWindowProcA(procedure, nullptr, 0, 0, 0);
    };
    EXPECT_EQ(call(entry), 5);
    const auto calls = machine().events.of(EventKind::Library);
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].text, "a.dll");
    EXPECT_EQ(calls[0].caption, "DllRegisterServer");
    EXPECT_EQ(CallWindowProcA(nullptr, nullptr, 0, 0, 0), 0);
    for (const HMODULE wrong : {b, HMODULE{nullptr}, reinterpret_cast<HMODULE>(std::uintptr_t{3})}) {
        SetLastError(0);
        EXPECT_EQ(GetProcAddress(wrong, "DllRegisterServer"), nullptr);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
    }
}

TEST_F(ProcessTest, TheMachineTellsItsNames) {
    DWORD size = 8;
    std::array<char, 16> buffer{};
    EXPECT_NE(GetComputerNameA(buffer.data(), &size), 0);
    EXPECT_STREQ(buffer.data(), "RECHNER");
    EXPECT_EQ(size, 7u) << "without its NUL";
    EXPECT_EQ(GetComputerNameA(buffer.data(), &size), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(size, 8u);
    size = 9;
    EXPECT_NE(GetUserNameA(buffer.data(), &size), 0);
    EXPECT_STREQ(buffer.data(), "Benutzer");
    EXPECT_EQ(size, 9u) << "with its NUL";
    size = 8;
    SetLastError(0);
    EXPECT_EQ(GetUserNameA(buffer.data(), &size), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(size, 9u);
}

TEST_F(ProcessTest, TheMachineTellsItsFolders) {
    EXPECT_EQ(told(11, [](char* to, DWORD size) { return GetWindowsDirectoryA(to, size); }),
              "C:\\WINDOWS 10");
    EXPECT_EQ(GetWindowsDirectoryA(nullptr, 0), 11u);
    machine().userWindowsFolder = u"D:\\Benutzer\\Windows";
    EXPECT_EQ(told(40, [](char* to, DWORD size) { return GetWindowsDirectoryA(to, size); }),
              "D:\\Benutzer\\Windows 19");
    EXPECT_EQ(told(40, [](char* to, DWORD size) { return GetSystemDirectoryA(to, size); }),
              "C:\\WINDOWS\\SYSTEM32 19");
    EXPECT_EQ(told(40, [](char* to, DWORD size) { return GetTempPathA(size, to); }),
              "C:\\WINDOWS\\TEMP\\ 16");
}

TEST_F(ProcessTest, ThePathOfTheProgramIsCutWhereItDoesNotFit) {
    const auto path = [](DWORD size) {
        SetLastError(0);
        const std::string text =
            told(size, [](char* to, DWORD room) { return GetModuleFileNameA(nullptr, to, room); });
        return text + " " + std::to_string(GetLastError());
    };
    EXPECT_EQ(path(100), "C:\\Programme\\Bromvale\\Bromvale.exe 34 0");
    EXPECT_EQ(path(35), "C:\\Programme\\Bromvale\\Bromvale.exe 34 0");
    EXPECT_EQ(path(34), "C:\\Programme\\Bromvale\\Bromvale.ex 34 122");
    EXPECT_EQ(GetModuleFileNameA(nullptr, nullptr, 0), 0u);
}

TEST_F(ProcessTest, TheCommandLineBeginsWithTheProgram) {
    EXPECT_STREQ(GetCommandLineA(), "\"C:\\Programme\\Bromvale\\Bromvale.exe\"");
    machine().commandLine = "/x \"a b\"";
    EXPECT_STREQ(GetCommandLineA(), "\"C:\\Programme\\Bromvale\\Bromvale.exe\" /x \"a b\"");
}

TEST_F(ProcessTest, EachVariableOfTheEnvironmentIsReplaced) {
    machine().environment["EIGENE"] = u"Wert";
    char buffer[300] = "";
    ExpandEnvironmentStringsA("%windir%|%SystemDrive%|%TEMP%|%tmp%|%USERNAME%|%COMPUTERNAME%|%eigene%|%%|%x",
                              buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "C:\\WINDOWS|C:|C:\\WINDOWS\\TEMP|C:\\WINDOWS\\TEMP|Benutzer|RECHNER|Wert|%%|%x");
    EXPECT_EQ(ExpandEnvironmentStringsA("abc", buffer, 4), 4u);
    EXPECT_EQ(ExpandEnvironmentStringsA("abc", buffer, 3), 4u);
}

TEST_F(ProcessTest, VersionsAreToldInARecordOfTheFullSizeOnly) {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = sizeof info - 1;
    EXPECT_EQ(GetVersionExA(&info), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    info.dwOSVersionInfoSize = sizeof info;
    info.szCSDVersion[0] = 'x';
    EXPECT_NE(GetVersionExA(&info), 0);
    EXPECT_STREQ(info.szCSDVersion, "");
}

TEST_F(ProcessTest, ADateWithoutATimeOfDayIsTakenAndAWrongTimeIsNot) {
    char buffer[32] = "";
    SYSTEMTIME time{2026, 3, 0, 1, 99, 99, 99, 9999};
    EXPECT_GT(GetDateFormatA(0, 0, &time, nullptr, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "01.03.2026");
    for (const SYSTEMTIME& wrong :
         {SYSTEMTIME{2026, 3, 0, 1, 24, 0, 0, 0}, SYSTEMTIME{2026, 3, 0, 1, 0, 60, 0, 0},
          SYSTEMTIME{2026, 3, 0, 1, 0, 0, 60, 0}}) {
        EXPECT_EQ(GetTimeFormatA(0, 0, &wrong, nullptr, buffer, sizeof buffer), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    }
    time = {2026, 3, 0, 1, 23, 59, 59, 0};
    EXPECT_GT(GetTimeFormatA(0, 0, &time, nullptr, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "23:59:59");
}

TEST_F(ProcessTest, ALocaleTextThatItDoesNotKnowIsAnInvalidQuestion) {
    char buffer[8] = "";
    EXPECT_EQ(GetLocaleInfoA(0, 0x7777, buffer, sizeof buffer), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(GetLocaleInfoA(0, LOCALE_SDECIMAL | LOCALE_NOUSEROVERRIDE, buffer, sizeof buffer), 2);
    EXPECT_EQ(GetLocaleInfoA(0, LOCALE_SDECIMAL, nullptr, 0), 2);
    EXPECT_EQ(GetLocaleInfoA(0, LOCALE_SDECIMAL, buffer, 1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
}

TEST_F(ProcessTest, ThePlaceOfTheProgramLosesItsSlashesAndBringsItsDrive) {
    machine().setAppPath(offline::WideText("E:\\Werkzeug\\Bromvale\\\\"));
    EXPECT_EQ(machine().appPath(), "E:\\Werkzeug\\Bromvale");
    EXPECT_TRUE(machine().drives.exists(offline::WideText("E:\\Werkzeug\\Bromvale")));
    EXPECT_EQ(machine().drives.currentDirectory, "E:\\Werkzeug\\Bromvale");
    machine().setAppPath(offline::WideText("F:\\"));
    EXPECT_EQ(machine().appPath(), "F:\\");
    EXPECT_TRUE(machine().drives.has('F'));
}

TEST_F(ProcessTest, RightsOfTheMachineAreLackedFromVistaOnWithoutAFullToken) {
    machine().rights.token = offline::Rights::Token::Limited;
    for (const auto& [name, lacks] : std::initializer_list<std::pair<const char*, bool>>{
             {"2.6.0.6000", true}, {"2.10.0.19045", true}, {"2.5.2.3790", false}, {"1.6.0.1", false}}) {
        machine().setOs(*offline::osByName(name));
        EXPECT_EQ(machine().lacksMachineRights(), lacks) << name;
    }
    machine().setOs(*offline::osByName("2.6.0.6000"));
    machine().rights.token = offline::Rights::Token::Full;
    EXPECT_FALSE(machine().lacksMachineRights());
}

}  // namespace
}  // namespace bromvale::testing

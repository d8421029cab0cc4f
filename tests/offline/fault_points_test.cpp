// No function of the platform forgets its fault point. Which functions there are, the headers say that the
// program includes; each one is called with nothing but zeros and must fail as its rule wants before it looks
// at them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folder_dialog.h"
#include "platform/internet.h"
#include "platform/machine.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/machine.h"
#include "platform/registry.h"
#include "platform/shell.h"

namespace bromvale::offline::testing {
namespace {

constexpr long kResult = ERROR_SHARING_VIOLATION;
alignas(16) char zeros[65536];

// Pointers to things lead to zeros, which are an empty text, too.
template <class Argument>
Argument nothing() {
    if constexpr (std::is_pointer_v<Argument> && !std::is_function_v<std::remove_pointer_t<Argument>>) {
        return reinterpret_cast<Argument>(zeros);
    } else {
        return Argument{};
    }
}

template <class Result, class... Arguments>
std::function<std::intptr_t()> calling(Result (*function)(Arguments...)) {
    return [function] {
        const Result result = function(nothing<Arguments>()...);
        if constexpr (std::is_pointer_v<Result>) {
            return reinterpret_cast<std::intptr_t>(result);
        } else {
            return static_cast<std::intptr_t>(result);
        }
    };
}

struct Function {
    std::string name;
    std::string faultPoint;
    std::function<std::intptr_t()> call;
};

#define FUNCTION(name) \
    { #name, #name, calling(&name) }
// What two functions have in common is one operation.
#define FUNCTION_OF(name, operation) \
    { #name, #operation, calling(&name) }

const std::vector<Function>& functions() {
    static const std::vector<Function> all{
        FUNCTION(AdjustTokenPrivileges),
        FUNCTION(CallWindowProcA),
        FUNCTION(CloseHandle),
        FUNCTION(CreateDirectoryA),
        FUNCTION(CreateFileA),
        FUNCTION_OF(CreateFileW, CreateFileA),
        FUNCTION(CreateMutexA),
        FUNCTION(CreateProcessA),
        FUNCTION(DeleteFileA),
        FUNCTION(ExitWindowsEx),
        FUNCTION(ExpandEnvironmentStringsA),
        FUNCTION_OF(ExpandEnvironmentStringsW, ExpandEnvironmentStringsA),
        FUNCTION(FileTimeToLocalFileTime),
        FUNCTION(FileTimeToSystemTime),
        FUNCTION(FindClose),
        FUNCTION(FindFirstFileA),
        FUNCTION_OF(FindFirstFileW, FindFirstFileA),
        FUNCTION(FindNextFileA),
        FUNCTION_OF(FindNextFileW, FindNextFileA),
        FUNCTION(FreeLibrary),
        FUNCTION(GetComputerNameA),
        FUNCTION(GetCurrentDirectoryA),
        FUNCTION(GetDateFormatA),
        FUNCTION(GetFileAttributesA),
        FUNCTION(GetFileSize),
        FUNCTION(GetFileTime),
        FUNCTION(GetFinalPathNameByHandleW),
        FUNCTION(GetLocaleInfoA),
        FUNCTION(GetModuleFileNameA),
        FUNCTION_OF(GetModuleFileNameW, GetModuleFileNameA),
        FUNCTION(GetProcAddress),
        FUNCTION_OF(GetShortPathNameW, GetShortPathNameA),
        FUNCTION(GetSystemDirectoryA),
        FUNCTION(GetSystemWow64DirectoryA),
        FUNCTION(GetTempPathA),
        FUNCTION(GetTimeFormatA),
        FUNCTION(GetUserNameA),
        FUNCTION(GetVersionExA),
        FUNCTION(GetWindowsDirectoryA),
        FUNCTION_OF(GetWindowsDirectoryW, GetWindowsDirectoryA),
        FUNCTION(HtmlHelpA),
        FUNCTION(IsWow64Process),
        FUNCTION(LoadLibraryA),
        FUNCTION(LocalFileTimeToFileTime),
        FUNCTION(LookupPrivilegeValueA),
        FUNCTION(MessageBoxA),
        FUNCTION(MoveFileA),
        FUNCTION(OpenFile),
        FUNCTION(OpenMutexA),
        FUNCTION(OpenProcessToken),
        FUNCTION(ReadFile),
        FUNCTION(RegCloseKey),
        FUNCTION(RegCreateKeyExA),
        FUNCTION(RegDeleteKeyA),
        FUNCTION(RegDeleteValueA),
        FUNCTION(RegEnumKeyA),
        FUNCTION_OF(RegEnumKeyExW, RegEnumKeyA),
        FUNCTION(RegEnumValueA),
        FUNCTION_OF(RegEnumValueW, RegEnumValueA),
        FUNCTION(RegOpenKeyA),
        FUNCTION(RegOpenKeyExA),
        FUNCTION_OF(RegOpenKeyExW, RegOpenKeyExA),
        FUNCTION(RegQueryInfoKeyA),
        FUNCTION_OF(RegQueryInfoKeyW, RegQueryInfoKeyA),
        FUNCTION(RegQueryValueExA),
        FUNCTION_OF(RegQueryValueExW, RegQueryValueExA),
        FUNCTION(RegSetValueExA),
        FUNCTION(RemoveDirectoryA),
        FUNCTION(SHBrowseForFolderA),
        FUNCTION(SHFileOperationA),
        FUNCTION(SHGetPathFromIDListA),
        FUNCTION_OF(SHGetPathFromIDListW, SHGetPathFromIDListA),
        FUNCTION(SetCurrentDirectoryA),
        FUNCTION(SetEndOfFile),
        FUNCTION(SetFileAttributesA),
        FUNCTION(SetFilePointer),
        FUNCTION(SetFileTime),
        FUNCTION(SetForegroundWindow),
        FUNCTION(ShellExecuteA),
        FUNCTION(Shell_NotifyIconA),
        FUNCTION(SystemTimeToFileTime),
        FUNCTION(TerminateProcess),
        FUNCTION(WriteFile),
        FUNCTION(Wow64DisableWow64FsRedirection),
        FUNCTION(Wow64RevertWow64FsRedirection),
    };
    return all;
}

// Those that can't fail, or in a way that no rule could choose; SHFileOperationServing is SHFileOperationA.
// What a WebAnswer calls fails in the tests of the services.
const std::set<std::string> kWithout{
    "CharLowerBuffA",
    "CharUpperBuffA",
    "CoTaskMemFree",
    "DoEvents",
    "DoEventsOften",
    "GetACP",
    "GetCPInfo",
    "GetCommandLineA",
    "GetCurrentProcess",
    "GetLocalTime",
    "MultiByteToWideChar",
    "RunEventLoop",
    "SHFileOperationServing",
    "ServeWindows",
    "Sleep",
    "WaitForEvents",
    "WebAnswer",
    "WideCharToMultiByte",
};

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The names in front of parentheses that begin with a capital, but for types of pointers to functions.
void addFunctions(const std::string& header, std::set<std::string>& names) {
    const std::string code = std::regex_replace(header, std::regex("//[^\n]*|#define[^\n]*"), "");
    const std::regex name("\\b([A-Z]\\w*)\\s*\\((?!WINAPI)");
    for (std::sregex_iterator each(code.begin(), code.end(), name), end; each != end; ++each)
        names.insert((*each)[1]);
}

std::set<std::string> declaredFunctions() {
    const std::filesystem::path top = BROMVALE_SOURCE_DIR;
    std::set<std::string> names;
    addFunctions(textOf(top / "platform/offline/files/other_half.h"), names);
    const std::regex provider("#include \"(platform/offline/[^\"]*)\"");
    for (const auto& entry : std::filesystem::directory_iterator(top / "platform")) {
        if (entry.path().extension() != ".h") continue;
        const std::string header = textOf(entry.path());
        addFunctions(header, names);
        for (std::sregex_iterator each(header.begin(), header.end(), provider), end; each != end; ++each)
            addFunctions(textOf(top / (*each)[1].str()), names);
    }
    return names;
}

TEST(FaultPoints, EachFunctionThatTheProgramMayCallIsInTheTable) {
    std::set<std::string> known = kWithout;
    for (const Function& function : functions())
        EXPECT_TRUE(known.insert(function.name).second) << function.name;
    EXPECT_EQ(declaredFunctions(), known);
}

TEST(FaultPoints, EachFunctionFailsWhenItsRuleIsDueAndBeforeItDoesAnything) {
    for (const Function& function : functions()) {
        SCOPED_TRACE(function.name);
        machine().faults.clear();
        machine().events.clear();
        machine().faults.fail(function.faultPoint, 1, kResult);
        SetLastError(ERROR_SUCCESS);
        const std::intptr_t result = function.call();
        EXPECT_EQ(machine().faults.calls(function.faultPoint), 1u);
        EXPECT_EQ(machine().faults.allCalls(), 1u);
        EXPECT_TRUE(result == kResult || GetLastError() == kResult) << result;
        for (const Event& event : machine().events.all()) EXPECT_EQ(event.kind, EventKind::ShellExecute);
    }
}

TEST(FaultPoints, WithoutARuleNothingIsCounted) {
    machine().faults.clear();
    SYSTEMTIME time{2026, 11, 0, 15, 0, 0, 0, 0};
    FILETIME stamp{};
    EXPECT_NE(SystemTimeToFileTime(&time, &stamp), 0);
    EXPECT_EQ(machine().faults.allCalls(), 0u);
}

}  // namespace
}  // namespace bromvale::offline::testing

#include <cstdio>

#include "platform/win32/system/entries.h"
#include "starter/texts.h"
#include "starter/win32/wide.h"
#include "starter/win32/windows_machine.h"

namespace bromvale::starter {
namespace {

constexpr const char* kProgramMutex = "Bromvale is running";
constexpr const char* kStarterMutex = "Bromvale portable";

std::u16string folderOf(const std::u16string& root, View width) {
    return root + (width == View::Bits64 ? u"64" : u"32");
}

bool isThere(const std::u16string& path) {
    const DWORD attributes = wide() != nullptr ? wide()->fileAttributes(units(path))
                                               : GetFileAttributesA(toCodePage(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// What stands behind the starter's own name, as it was typed.
std::u16string ownArguments() {
    std::u16string line;
    if (const WideCalls* const calls = wide()) {
        line = reinterpret_cast<const char16_t*>(calls->commandLine());
    } else {
        line = fromCodePage(GetCommandLineA());
    }
    const bool isQuoted = line.starts_with(u'"');
    const std::size_t end = isQuoted ? line.find(u'"', 1) : line.find_first_of(u" \t");
    line.erase(0, end == std::u16string::npos ? end : end + (isQuoted ? 1 : 0));
    line.erase(0, line.find_first_not_of(u" \t"));
    return line;
}

// The program gets the window state that the starter was given, and the system's own mode for drives without
// a disc.
HANDLE startProcess(const std::u16string& file, std::u16string line, const std::u16string& folder) {
    constexpr DWORD kFlags = CREATE_DEFAULT_ERROR_MODE;
    PROCESS_INFORMATION process{};
    BOOL done;
    if (const WideCalls* const calls = wide()) {
        STARTUPINFOW info{};
        info.cb = sizeof info;
        info.dwFlags = STARTF_USESHOWWINDOW;
        STARTUPINFOA own{};
        GetStartupInfoA(&own);
        info.wShowWindow = (own.dwFlags & STARTF_USESHOWWINDOW) != 0 ? own.wShowWindow : WORD{SW_SHOWNORMAL};
        done = calls->createProcess(units(file), units(line), nullptr, nullptr, FALSE, kFlags, nullptr,
                                    units(folder), &info, &process);
    } else {
        STARTUPINFOA info{};
        GetStartupInfoA(&info);
        std::string bytes = toCodePage(line);
        done = CreateProcessA(toCodePage(file).c_str(), bytes.data(), nullptr, nullptr, FALSE, kFlags,
                              nullptr, toCodePage(folder).c_str(), &info, &process);
    }
    if (!done) return nullptr;
    CloseHandle(process.hThread);
    return process.hProcess;
}

}  // namespace

std::u16string WindowsMachine::newId() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    char text[64];
    const int length = std::snprintf(text, sizeof text, "%08lX%08lX-%lX-%lX", now.dwHighDateTime,
                                     now.dwLowDateTime, GetCurrentProcessId(), GetTickCount());
    return widened({text, static_cast<std::size_t>(length)});
}

// Its handle lives as long as the process. One that may not be opened is another starter's as well.
bool WindowsMachine::isOnlyStarter() {
    SetLastError(ERROR_SUCCESS);
    const HANDLE mutex = CreateMutexA(nullptr, FALSE, kStarterMutex);
    return mutex != nullptr && GetLastError() != ERROR_ALREADY_EXISTS;
}

// One with more rights than the starter may keep its mutex to itself.
bool WindowsMachine::programRuns() {
    const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, kProgramMutex);
    if (mutex == nullptr) return GetLastError() == ERROR_ACCESS_DENIED;
    CloseHandle(mutex);
    return true;
}

View WindowsMachine::programWidth() {
    BOOL(WINAPI * isWow64)(HANDLE, BOOL*);
    BOOL is = FALSE;
    if (loadEntry(GetModuleHandleA("kernel32.dll"), "IsWow64Process", isWow64))
        isWow64(GetCurrentProcess(), &is);
    return is ? View::Bits64 : View::Bits32;
}

bool WindowsMachine::hasProgram(View width) {
    return isThere(folderOf(folder_, width) + u"\\Bromvale.exe");
}

bool WindowsMachine::startProgram(View width) {
    const std::u16string folder = folderOf(folder_, width);
    const std::u16string file = folder + u"\\Bromvale.exe";
    std::u16string line = u"\"" + file + u"\"";
    const std::u16string arguments = ownArguments();
    if (!arguments.empty()) line += u" " + arguments;
    program_ = startProcess(file, line, folder);
    return program_ != nullptr;
}

}  // namespace bromvale::starter

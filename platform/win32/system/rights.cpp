#include "platform/rights.h"

#include <string>
#include <vector>

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"

#include <objbase.h>

namespace bromvale {
namespace {

constexpr DWORD kVista = 6;
constexpr int kMostWaits = 100;
constexpr DWORD kWait = 100;  // milliseconds
constexpr ULONG kShowNoBox = SEE_MASK_FLAG_NO_UI;
constexpr ULONG kBeforeReturning = 0x100;  // SEE_MASK_NOASYNC, which older headers know by another name

// The top bit of GetVersion tells the 9x family, the lowest byte the major version.
bool rightsAreAsked() {
    const DWORD version = GetVersion();
    return (version & 0x80000000u) == 0 && (version & 0xFFu) >= kVista;
}

// How a token stands to the rights of its user; the headers of older systems don't know it.
constexpr int kElevationTypeInformation = 18;
constexpr DWORD kLimited = 3;

// The wide functions, in which no letter of a path or an argument is lost. Each is there where rights are
// asked for.
struct Functions {
    BOOL(WINAPI* tokenInformation)(HANDLE, int, void*, DWORD, DWORD*);
    decltype(&::ShellExecuteExW) execute;
    decltype(&::GetModuleFileNameW) moduleFileName;
    decltype(&::GetCurrentDirectoryW) currentDirectory;
    decltype(&::GetCommandLineW) commandLine;
    HRESULT(WINAPI* initialize)(void*, DWORD);
    void(WINAPI* uninitialize)();
};

bool load(Functions& functions) {
    const HMODULE kernel = GetModuleHandleA("kernel32.dll");
    const HMODULE ole = loadSystemLibrary("ole32.dll");
    return loadEntry(loadSystemLibrary("advapi32.dll"), "GetTokenInformation", functions.tokenInformation) &&
           loadEntry(loadSystemLibrary("shell32.dll"), "ShellExecuteExW", functions.execute) &&
           loadEntry(ole, "CoInitializeEx", functions.initialize) &&
           loadEntry(ole, "CoUninitialize", functions.uninitialize) &&
           loadEntry(kernel, "GetModuleFileNameW", functions.moduleFileName) &&
           loadEntry(kernel, "GetCurrentDirectoryW", functions.currentDirectory) &&
           loadEntry(kernel, "GetCommandLineW", functions.commandLine);
}

const Functions* functions() {
    static Functions loaded{};
    static const bool all = rightsAreAsked() && load(loaded);
    return all ? &loaded : nullptr;
}

// No path is longer.
constexpr DWORD kLongestPath = 0x8000;

bool isBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

// What stands behind the program's name, as it was typed.
const wchar_t* argumentsOf(const wchar_t* line) {
    const bool quoted = *line == L'"';
    if (quoted) ++line;
    while (*line != L'\0' && (quoted ? *line != L'"' : !isBlank(*line))) ++line;
    if (quoted && *line == L'"') ++line;
    while (isBlank(*line)) ++line;
    return line;
}

// How whoever started this process wants its window.
int wantedShow() {
    STARTUPINFOA start{};
    start.cb = sizeof start;
    GetStartupInfoA(&start);
    return (start.dwFlags & STARTF_USESHOWWINDOW) != 0 ? start.wShowWindow : SW_SHOWNORMAL;
}

void waitFor(HANDLE process, FunctionRef<bool()> runs) {
    for (int i = 0; i < kMostWaits && !runs(); ++i) {
        if (process == nullptr) {
            Sleep(kWait);
        } else if (WaitForSingleObject(process, kWait) != WAIT_TIMEOUT) {
            return;
        }
    }
}

}  // namespace

bool couldHaveMoreRights() {
    if (functions() == nullptr) return false;
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return false;
    DWORD type = 0;
    DWORD size = 0;
    const BOOL told =
        functions()->tokenInformation(token, kElevationTypeInformation, &type, sizeof type, &size);
    CloseHandle(token);
    return told != 0 && type == kLimited;
}

bool startWithMoreRights(FunctionRef<bool()> runs) {
    if (functions() == nullptr) return false;
    std::vector<wchar_t> file(kLongestPath);
    std::vector<wchar_t> folder(kLongestPath);
    const DWORD length = functions()->moduleFileName(nullptr, file.data(), kLongestPath);
    if (length == 0 || length >= kLongestPath) return false;
    const bool inFolder = functions()->currentDirectory(kLongestPath, folder.data()) != 0;
    // The shell asks by way of an object of its own.
    const HRESULT initialized =
        functions()->initialize(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    SHELLEXECUTEINFOW order{};
    order.cbSize = sizeof order;
    order.fMask = SEE_MASK_NOCLOSEPROCESS | kShowNoBox | kBeforeReturning;
    order.lpVerb = L"runas";
    order.lpFile = file.data();
    order.lpParameters = argumentsOf(functions()->commandLine());
    order.lpDirectory = inFolder ? folder.data() : nullptr;
    order.nShow = wantedShow();
    const BOOL started = functions()->execute(&order);
    if (SUCCEEDED(initialized)) functions()->uninitialize();
    if (started == 0) return false;
    waitFor(order.hProcess, runs);
    if (order.hProcess != nullptr) CloseHandle(order.hProcess);
    return true;
}

bool lacksMachineRights() {
    if (!rightsAreAsked()) return false;
    HKEY key = nullptr;
    const LONG status = RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software", 0, KEY_CREATE_SUB_KEY | DELETE, &key);
    if (status == ERROR_SUCCESS) RegCloseKey(key);
    return status == ERROR_ACCESS_DENIED;
}

bool takesFiles(const std::string& folder) {
    const std::string path = folder + "bromvale-" + std::to_string(GetCurrentProcessId()) + ".tmp";
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_TEMPORARY, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    CloseHandle(file);
    return DeleteFileA(path.c_str()) != 0;
}

}  // namespace bromvale

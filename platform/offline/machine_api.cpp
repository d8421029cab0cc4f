#include "platform/offline/machine_api.h"

#include <cstring>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

// As the locale functions: sizes with the NUL, 0 for a failure; a size of 0 asks for the size.
int answerWithNul(const std::string& text, LPSTR buffer, int size) {
    const int needed = static_cast<int>(text.size()) + 1;
    if (size == 0) return needed;
    if (size < needed) return failed(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return needed;
}

// Where a file name does not fit, its beginning stands in the buffer.
template <class Char>
DWORD answerCut(std::basic_string_view<Char> text, Char* buffer, DWORD size) {
    const DWORD length = answerLength(text, buffer, size);
    if (length < size || size == 0) return size == 0 ? 0 : length;
    buffer[text.copy(buffer, size - 1)] = Char{};
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
}

std::string toldWindowsFolder() {
    const std::u16string& own = machine().userWindowsFolder;
    return own.empty() ? machine().windowsFolder() : storedFromWide(own);
}

}  // namespace

DWORD GetLastError() {
    return machine().lastError;
}
void SetLastError(DWORD error) {
    machine().lastError = error;
}

BOOL GetComputerNameA(LPSTR buffer, LPDWORD size) {
    if (failsHere("GetComputerNameA")) return FALSE;
    const std::string& name = machine().computer;
    if (*size <= name.size()) {
        *size = static_cast<DWORD>(name.size() + 1);
        return failed(ERROR_INSUFFICIENT_BUFFER);
    }
    *size = answerLength(name, buffer, *size);
    return TRUE;
}

BOOL GetUserNameA(LPSTR buffer, LPDWORD size) {
    if (failsHere("GetUserNameA")) return FALSE;
    const std::string& name = machine().user;
    const bool fits = *size > name.size();
    if (fits) {
        answerLength(name, buffer, *size);
    } else {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
    }
    *size = static_cast<DWORD>(name.size() + 1);  // counts the NUL, other than GetComputerNameA
    return fits;
}

UINT GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    if (failsHere("GetWindowsDirectoryA")) return 0;
    return answerLength(AnsiText(toldWindowsFolder()).view(), buffer, size);
}

UINT GetWindowsDirectoryW(LPWSTR buffer, UINT size) {
    if (refusesWide() || failsHere("GetWindowsDirectoryA")) return 0;
    return answerLength(wideFromStored(toldWindowsFolder()), buffer, size);
}

UINT GetSystemDirectoryA(LPSTR buffer, UINT size) {
    return failsHere("GetSystemDirectoryA") ? 0 : answerLength(machine().systemFolder(), buffer, size);
}

DWORD GetTempPathA(DWORD size, LPSTR buffer) {
    return failsHere("GetTempPathA") ? 0 : answerLength(machine().tempFolder() + "\\", buffer, size);
}

BOOL GetVersionExA(LPOSVERSIONINFOA info) {
    if (failsHere("GetVersionExA")) return FALSE;
    if (info->dwOSVersionInfoSize < sizeof(OSVERSIONINFOA)) return failed(ERROR_INSUFFICIENT_BUFFER);
    const auto& os = machine().os();
    info->dwMajorVersion = os.major;
    info->dwMinorVersion = os.minor;
    info->dwBuildNumber = os.build;
    info->dwPlatformId = os.platform;
    info->szCSDVersion[0] = '\0';
    return TRUE;
}

DWORD GetModuleFileNameA(HMODULE, LPSTR buffer, DWORD size) {
    if (failsHere("GetModuleFileNameA")) return 0;
    const std::string path = machine().programPath();
    return answerCut(AnsiText(path).view(), buffer, size);
}

DWORD GetModuleFileNameW(HMODULE, LPWSTR buffer, DWORD size) {
    if (refusesWide() || failsHere("GetModuleFileNameA")) return 0;
    const std::u16string path = wideFromStored(machine().programPath());
    return answerCut<WCHAR>(path, buffer, size);
}

LPSTR GetCommandLineA() {
    std::string& line = machine().toldCommandLine;
    const std::string program = machine().programPath();
    line.assign(1, '"').append(AnsiText(program).view()).append(1, '"');
    if (!machine().commandLine.empty()) line += " " + machine().commandLine;
    return line.data();
}

void GetLocalTime(LPSYSTEMTIME time) {
    *time = toSystemTime(machine().clock.now());
}

void Sleep(DWORD milliseconds) {
    machine().clock.advance(milliseconds);
}

int GetDateFormatA(LCID, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer, int size) {
    if (failsHere("GetDateFormatA")) return 0;
    SYSTEMTIME time = date != nullptr ? *date : toSystemTime(machine().clock.now());
    time.wHour = time.wMinute = time.wSecond = time.wMilliseconds = 0;
    if (!isValid(time)) return failed(ERROR_INVALID_PARAMETER);
    const auto& locale = machine().locale;
    const std::string& own = locale.at((flags & DATE_LONGDATE) != 0 ? LOCALE_SLONGDATE : LOCALE_SSHORTDATE);
    return answerWithNul(formatDate(locale, time, picture != nullptr ? picture : own), buffer, size);
}

int GetTimeFormatA(LCID, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer, int size) {
    if (failsHere("GetTimeFormatA")) return 0;
    const SYSTEMTIME used = time != nullptr ? *time : toSystemTime(machine().clock.now());
    if (used.wHour > 23 || used.wMinute > 59 || used.wSecond > 59) return failed(ERROR_INVALID_PARAMETER);
    const auto& locale = machine().locale;
    const std::string& own = locale.at(LOCALE_STIMEFORMAT);
    return answerWithNul(formatTime(locale, used, picture != nullptr ? picture : own, flags), buffer, size);
}

int GetLocaleInfoA(LCID, LCTYPE type, LPSTR buffer, int size) {
    if (failsHere("GetLocaleInfoA")) return 0;
    const auto text = machine().locale.find(type & ~LOCALE_NOUSEROVERRIDE);
    if (text == machine().locale.end()) return failed(ERROR_INVALID_PARAMETER);
    return answerWithNul(text->second, buffer, size);
}

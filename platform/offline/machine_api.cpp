#include "platform/offline/machine_api.h"

#include <algorithm>
#include <cstring>

#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using bromvale::offline::failsHere;
using bromvale::offline::machine;

namespace {

DWORD lastError = 0;

// As most functions that fill a buffer: the length without NUL, or the size that is needed with it.
DWORD answer(const std::string& text, LPSTR buffer, DWORD size) {
    if (size <= text.size()) return static_cast<DWORD>(text.size() + 1);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

// As the locale functions: sizes with the NUL, 0 for a failure; a size of 0 asks for the size.
int answerWithNul(const std::string& text, LPSTR buffer, int size) {
    const int needed = static_cast<int>(text.size()) + 1;
    if (size == 0) return needed;
    if (size < needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return needed;
}

// Where a file name does not fit, its beginning stands in the buffer.
template <class Char>
DWORD answerCut(std::basic_string_view<Char> text, Char* buffer, DWORD size) {
    const DWORD length = bromvale::offline::answerLength(text, buffer, size);
    if (length < size || size == 0) return size == 0 ? 0 : length;
    buffer[text.copy(buffer, size - 1)] = Char{};
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
}

std::string toldWindowsFolder() {
    const std::u16string& own = machine().userWindowsFolder;
    return own.empty() ? machine().windowsFolder() : bromvale::offline::storedFromWide(own);
}

std::string localeText(const bromvale::offline::Locale& locale, LCTYPE type) {
    switch (type) {
        case LOCALE_SLIST: return locale.list;
        case LOCALE_SDECIMAL: return locale.decimal;
        case LOCALE_STHOUSAND: return locale.thousand;
        case LOCALE_SCURRENCY: return locale.currency;
        case LOCALE_SDATE: return locale.dateSign;
        case LOCALE_STIME: return locale.timeSign;
        case LOCALE_SSHORTDATE: return locale.shortDate;
        case LOCALE_SLONGDATE: return locale.longDate;
        case LOCALE_STIMEFORMAT: return locale.timeFormat;
        case LOCALE_S1159: return locale.morning;
        case LOCALE_S2359: return locale.afternoon;
        default: break;
    }
    const auto within = [type](LCTYPE first, std::size_t count) {
        return type >= first && type < first + count;
    };
    if (within(LOCALE_SDAYNAME1, 7)) return locale.dayNames[type - LOCALE_SDAYNAME1];
    if (within(LOCALE_SABBREVDAYNAME1, 7)) return locale.shortDayNames[type - LOCALE_SABBREVDAYNAME1];
    if (within(LOCALE_SMONTHNAME1, 12)) return locale.monthNames[type - LOCALE_SMONTHNAME1];
    if (within(LOCALE_SABBREVMONTHNAME1, 12)) return locale.shortMonthNames[type - LOCALE_SABBREVMONTHNAME1];
    return "\x01";
}

}  // namespace

DWORD GetLastError() {
    return lastError;
}
void SetLastError(DWORD error) {
    lastError = error;
}

BOOL GetComputerNameA(LPSTR buffer, LPDWORD size) {
    if (failsHere("GetComputerNameA")) return FALSE;
    const std::string& name = machine().computer;
    if (*size <= name.size()) {
        *size = static_cast<DWORD>(name.size() + 1);
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    *size = answer(name, buffer, *size);
    return TRUE;
}

BOOL GetUserNameA(LPSTR buffer, LPDWORD size) {
    if (failsHere("GetUserNameA")) return FALSE;
    const std::string& name = machine().user;
    const bool fits = *size > name.size();
    if (fits) {
        answer(name, buffer, *size);
    } else {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
    }
    *size = static_cast<DWORD>(name.size() + 1);  // counts the NUL, other than GetComputerNameA
    return fits;
}

UINT GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    if (failsHere("GetWindowsDirectoryA")) return 0;
    return bromvale::offline::answerLength(bromvale::offline::AnsiText(toldWindowsFolder()).view(), buffer,
                                           size);
}

UINT GetWindowsDirectoryW(LPWSTR buffer, UINT size) {
    if (bromvale::offline::refusesWide() || failsHere("GetWindowsDirectoryA")) return 0;
    return bromvale::offline::answerLength(bromvale::offline::wideFromStored(toldWindowsFolder()), buffer,
                                           size);
}

UINT GetSystemDirectoryA(LPSTR buffer, UINT size) {
    return failsHere("GetSystemDirectoryA") ? 0 : answer(machine().systemFolder(), buffer, size);
}

DWORD GetTempPathA(DWORD size, LPSTR buffer) {
    return failsHere("GetTempPathA") ? 0 : answer(machine().tempFolder() + "\\", buffer, size);
}

BOOL GetVersionExA(LPOSVERSIONINFOA info) {
    if (failsHere("GetVersionExA")) return FALSE;
    if (info->dwOSVersionInfoSize < sizeof(OSVERSIONINFOA)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
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
    return answerCut(bromvale::offline::AnsiText(path).view(), buffer, size);
}

DWORD GetModuleFileNameW(HMODULE, LPWSTR buffer, DWORD size) {
    if (bromvale::offline::refusesWide() || failsHere("GetModuleFileNameA")) return 0;
    const std::u16string path = bromvale::offline::wideFromStored(machine().programPath());
    return answerCut<WCHAR>(path, buffer, size);
}

LPSTR GetCommandLineA() {
    static std::string line;
    const std::string program = machine().programPath();
    line.assign(1, '"').append(bromvale::offline::AnsiText(program).view()).append(1, '"');
    if (!machine().commandLine.empty()) line += " " + machine().commandLine;
    return line.data();
}

void GetLocalTime(LPSYSTEMTIME time) {
    *time = bromvale::offline::toSystemTime(machine().clock.now());
}

DWORD GetTickCount() {
    return static_cast<DWORD>(machine().clock.elapsed());
}

void Sleep(DWORD milliseconds) {
    machine().clock.advance(milliseconds);
}

int GetDateFormatA(LCID, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer, int size) {
    if (failsHere("GetDateFormatA")) return 0;
    SYSTEMTIME time = date != nullptr ? *date : bromvale::offline::toSystemTime(machine().clock.now());
    time.wHour = time.wMinute = time.wSecond = time.wMilliseconds = 0;
    if (!bromvale::offline::isValid(time)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto& locale = machine().locale;
    const std::string& own = (flags & DATE_LONGDATE) != 0 ? locale.longDate : locale.shortDate;
    return answerWithNul(formatDate(locale, time, picture != nullptr ? picture : own), buffer, size);
}

int GetTimeFormatA(LCID, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer, int size) {
    if (failsHere("GetTimeFormatA")) return 0;
    const SYSTEMTIME used = time != nullptr ? *time : bromvale::offline::toSystemTime(machine().clock.now());
    if (used.wHour > 23 || used.wMinute > 59 || used.wSecond > 59) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto& locale = machine().locale;
    const std::string_view shape = picture != nullptr ? std::string_view(picture) : locale.timeFormat;
    return answerWithNul(formatTime(locale, used, shape, flags), buffer, size);
}

int GetLocaleInfoA(LCID, LCTYPE type, LPSTR buffer, int size) {
    if (failsHere("GetLocaleInfoA")) return 0;
    const std::string text = localeText(machine().locale, type & ~LOCALE_NOUSEROVERRIDE);
    if (text == "\x01") {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return answerWithNul(text, buffer, size);
}

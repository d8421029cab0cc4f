#include "core/machine_facts.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/numbers.h"
#include "base/text.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "core/state.h"
#include "platform/exact/machine.h"
#include "platform/exact/text.h"
#include "platform/machine.h"

namespace bromvale {
namespace {

constexpr Routine<> routine(std::string_view funktion) {
    return Routine{{"modMain", funktion}};
}

// What `read` gives; empty after a failure, which is reported.
std::string reported(std::string_view funktion, FunctionRef<std::string()> read) {
    std::string text;
    routine(funktion).step([&] { text = read(); });
    return text;
}

struct Range {
    DWORD first;
    DWORD last;
    [[nodiscard]] constexpr bool holds(DWORD value) const { return value >= first && value <= last; }
};
constexpr Range only(DWORD value) {
    return {value, value};
}
constexpr Range kAny{0, std::numeric_limits<DWORD>::max()};
constexpr Range kOverFour{5, std::numeric_limits<DWORD>::max()};

enum class Build { Any, Is1998, IsNot1998 };

// The first match wins.
struct SystemRow {
    DWORD platform;
    Range major;
    Range minor;
    Build build;
    std::string_view name;
    std::string_view header;
};

constexpr std::string_view kHeader4 = "REGEDIT4\r\n\r\n";
constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00\r\n\r\n";

constexpr std::array kSystems{
    SystemRow{VER_PLATFORM_WIN32_NT, only(4), kAny, Build::Any, "Windows NT4", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_NT, only(5), only(0), Build::Any, "Windows 2000", kHeader5},
    SystemRow{VER_PLATFORM_WIN32_NT, only(5), only(1), Build::Any, "Windows XP", kHeader5},
    // Any later member of this family counts as Windows 98.
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, kOverFour, kAny, Build::Is1998, "Windows 98", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, kOverFour, kAny, Build::IsNot1998, "Windows 98 SE", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, only(4), only(10), Build::Is1998, "Windows 98", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, only(4), only(10), Build::IsNot1998, "Windows 98 SE", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, only(4), only(0), Build::Any, "Windows 95", kHeader4},
    SystemRow{VER_PLATFORM_WIN32_WINDOWS, only(4), only(90), Build::Any, "Windows ME", kHeader4},
    SystemRow{VER_PLATFORM_WIN32s, kAny, kAny, Build::Any, "Windows 32s", kHeader4},
};

bool matches(const SystemRow& row, const OSVERSIONINFOA& info, bool build1998) {
    return row.platform == info.dwPlatformId && row.major.holds(info.dwMajorVersion) &&
           row.minor.holds(info.dwMinorVersion) &&
           (row.build == Build::Any || (row.build == Build::Is1998) == build1998);
}

}  // namespace

std::string ReadComputerName() {
    std::string name;
    quietly([&] {
        std::string buffer(32, 'X');
        DWORD size = 32;
        GetComputerNameA(buffer.data(), &size);
        name = Left(buffer, size);
    });
    return name;
}

std::string ReadUserName() {
    return reported("ReadUserName", [] {
        std::string buffer(100, '\0');
        DWORD size = 100;
        GetUserNameA(buffer.data(), &size);
        return TrimNull(buffer);
    });
}

std::string ReadWinDir() {
    const std::string folder = reported("ReadWinDir", [] {
        std::string buffer(200, '\0');
        const UINT length = GetWindowsDirectoryA(buffer.data(), 200);
        return Left(buffer, length);
    });
    // With its marks a folder makes every file below it one of which nobody can tell whether it exists.
    const std::string exact = reported("ReadWinDir", exactWindowsFolder);
    return isExact(exact) ? folder : exact;
}

std::string ReadSysDir() {
    return reported("ReadSysDir", [] {
        std::string buffer(255, ' ');
        const UINT length = GetSystemDirectoryA(buffer.data(), 255);
        return Left(buffer, length);
    });
}

std::string ReadTmpDir() {
    return reported("ReadTmpDir", [] {
        std::string buffer(100, '\0');
        GetTempPathA(100, buffer.data());
        return TrimNull(buffer);
    });
}

void OS() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = 148;
    GetVersionExA(&info);
    OSName = "Unbekanntes Betriebssystem";
    RegFileHeader = kHeader4;
    // On the 9x family the high 16 bits hold the version once more.
    OSBuild = std::to_string(static_cast<std::int16_t>(info.dwBuildNumber & 0xFFFFu));
    routine("OS").step([&] {
        const bool build1998 = toInt32(OSBuild) == 1998;
        const auto row = std::find_if(kSystems.begin(), kSystems.end(),
                                      [&](const SystemRow& r) { return matches(r, info, build1998); });
        if (row == kSystems.end()) return;
        OSName = row->name;
        RegFileHeader = row->header;
    });
}

}  // namespace bromvale

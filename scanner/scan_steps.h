#pragma once
#include <array>
#include <cstdint>
#include <string_view>

#include "core/registry_layer.h"

namespace bromvale {

// What phase 1 of a scan reads, in its order. The hives change places between the first six steps and the
// last two, and step 7 has one hive only; both stay so, since they decide which objects are judged together.
struct ScanStep {
    std::string_view searchKey;
    std::int32_t searchHive;
    std::string_view caption;
};

inline constexpr std::array<ScanStep, 9> kScanSteps{{
    {"Software\\Classes\\CLSID", kHiveCurrentUser, "ActiveX / DCOM-Controls werden eingelesen..."},
    {"Software\\Classes\\CLSID", kHiveLocalMachine, "ActiveX / DCOM-Controls werden eingelesen..."},
    {"Software\\Classes\\Interface", kHiveCurrentUser, "ActiveX Interfaces werden eingelesen..."},
    {"Software\\Classes\\Interface", kHiveLocalMachine, "ActiveX Interfaces werden eingelesen..."},
    {"Software\\Classes\\TypeLib", kHiveCurrentUser, "Typen-Bibliotheken werden eingelesen..."},
    {"Software\\Classes\\TypeLib", kHiveLocalMachine, "Typen-Bibliotheken werden eingelesen..."},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths", kHiveLocalMachine,
     "Installierte Programme werden eingelesen..."},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall", kHiveLocalMachine,
     "Installierte Programme werden eingelesen..."},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall", kHiveCurrentUser,
     "Installierte Programme werden eingelesen..."},
}};

}  // namespace bromvale

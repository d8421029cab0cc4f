// What differs between the disks of NT to 11.
#pragma once

#include <array>
#include <cstdint>

#include "tests/hives/disk/made_disk.h"

namespace bromvale::offline {

// Of a generation with hives of NT. Paths of the host with slashes.
struct NtRow {
    Generation generation;
    const char* product;
    const char* version;
    int major;  // -1: the text alone
    const char* build;
    bool x64;
    std::uint32_t minorVersion;
    const char16_t* systemRoot;  // without the drive
    const char* windows;
    const char* config;
    std::array<const char*, 3> hives;  // SOFTWARE, SYSTEM, DEFAULT
    const char16_t* programs;
    const char* profiles;          // on the host
    const char16_t* profilesPath;  // as the registry has it
    const char16_t* local;         // of a profile; empty: no classes of users
};

inline constexpr NtRow kNt[] = {{Generation::Nt4,
                                 "",
                                 "4.0",
                                 -1,
                                 "1381",
                                 false,
                                 3,
                                 u"\\WINNT",
                                 "WINNT",
                                 "system32/config",
                                 {"software", "system", "default"},
                                 u"\\Programme",
                                 "WINNT/Profiles",
                                 u"%SystemRoot%\\Profiles",
                                 u""},
                                {Generation::W2000,
                                 "Microsoft Windows 2000",
                                 "5.0",
                                 -1,
                                 "2195",
                                 false,
                                 3,
                                 u"\\WINNT",
                                 "WINNT",
                                 "system32/config",
                                 {"software", "system", "default"},
                                 u"\\Program Files",
                                 "Documents and Settings",
                                 u"%SystemDrive%\\Documents and Settings",
                                 u"Local Settings\\Application Data"},
                                {Generation::Xp,
                                 "Microsoft Windows XP",
                                 "5.1",
                                 -1,
                                 "2600",
                                 false,
                                 5,
                                 u"\\WINDOWS",
                                 "WINDOWS",
                                 "system32/config",
                                 {"software", "system", "default"},
                                 u"\\Programme",
                                 "Dokumente und Einstellungen",
                                 u"%SystemDrive%\\Dokumente und Einstellungen",
                                 u"Lokale Einstellungen\\Anwendungsdaten"},
                                {Generation::Vista,
                                 "Windows Vista (TM) Business",
                                 "6.0",
                                 -1,
                                 "6002",
                                 false,
                                 5,
                                 u"\\Windows",
                                 "Windows",
                                 "System32/config",
                                 {"SOFTWARE", "SYSTEM", "DEFAULT"},
                                 u"\\Program Files",
                                 "Users",
                                 u"%SystemDrive%\\Users",
                                 u"AppData\\Local"},
                                {Generation::Seven,
                                 "Windows 7 Professional",
                                 "6.1",
                                 -1,
                                 "7601",
                                 false,
                                 5,
                                 u"\\Windows",
                                 "Windows",
                                 "System32/config",
                                 {"SOFTWARE", "SYSTEM", "DEFAULT"},
                                 u"\\Program Files",
                                 "Users",
                                 u"%SystemDrive%\\Users",
                                 u"AppData\\Local"},
                                {Generation::SevenX64,
                                 "Windows 7 Ultimate",
                                 "6.1",
                                 -1,
                                 "7601",
                                 true,
                                 5,
                                 u"\\Windows",
                                 "Windows",
                                 "System32/CONFIG",
                                 {"software", "System", "Default"},
                                 u"\\Program Files",
                                 "users",
                                 u"%SystemDrive%\\Users",
                                 u"AppData\\Local"},
                                {Generation::Ten,
                                 "Windows 10 Pro",
                                 "6.3",
                                 10,
                                 "19045",
                                 true,
                                 5,
                                 u"\\WINDOWS",
                                 "Windows",
                                 "System32/config",
                                 {"SOFTWARE", "SYSTEM", "DEFAULT"},
                                 u"\\Program Files",
                                 "Users",
                                 u"%SystemDrive%\\Users",
                                 u"AppData\\Local"},
                                {Generation::Eleven,
                                 "Windows 10 Home",
                                 "6.3",
                                 10,
                                 "22631",
                                 true,
                                 6,
                                 u"\\Windows",
                                 "windows",
                                 "system32/config",
                                 {"SOFTWARE", "SYSTEM", "DEFAULT"},
                                 u"\\Program Files",
                                 "Users",
                                 u"%SystemDrive%\\Users",
                                 u"AppData\\Local"}};

}  // namespace bromvale::offline

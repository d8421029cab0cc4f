// A Windows on a mounted disk, NT4 to 11 and 95 to ME: what its folders and registry say of it. Nothing is
// written, and no time of a file changes where the host allows that.
//
// Paths and names of Windows are UTF-16, paths of the host UTF-8 and without links.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/offline/files/inside.h"
#include "platform/offline/hives/replay.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {

enum class HiveRole {
    Software,        // HKEY_LOCAL_MACHINE\Software
    System,          // HKEY_LOCAL_MACHINE\System
    DefaultUser,     // HKEY_USERS\.DEFAULT
    User,            // HKEY_USERS\SID
    UserClasses,     // HKEY_USERS\SID_Classes, and Software\Classes of that user
    Machine,         // 9x: HKEY_LOCAL_MACHINE (SYSTEM.DAT)
    MachineClasses,  // ME: HKEY_LOCAL_MACHINE\Software\Classes (CLASSES.DAT)
    Users            // 9x: HKEY_USERS (USER.DAT)
};

struct FoundLog {
    LogName name = LogName::Log;
    std::string path;
};

struct FoundHive {
    HiveRole role = HiveRole::Software;
    std::string path;
    std::vector<FoundLog> logs;
    bool isLink = false;  // the hive's own name is a link, which must not be written through
    // Why it can't be used (English), for people; then it is told because it lies where Windows has it.
    std::string problem;

    [[nodiscard]] bool usable() const { return problem.empty(); }
};

struct DriveLetter {
    enum class Kind { Partition, GptPartition, Cd, Floppy, UsbStick, OtherRemovable, Unknown };
    char letter = 'C';
    Kind kind = Kind::Unknown;
    std::uint32_t diskSignature = 0;   // of a partition: where the disk's first sector has it, at 440
    std::uint64_t partitionStart = 0;  // byte
    std::string partitionGuid;         // of a GPT partition: "XXXXXXXX-XXXX-..." in upper case
    std::u16string device;             // of the others, as Windows calls it

    // What points there is not there now, which is not the same as missing.
    [[nodiscard]] bool removable() const {
        return kind == Kind::Cd || kind == Kind::Floppy || kind == Kind::UsbStick ||
               kind == Kind::OtherRemovable;
    }
};

struct DiskUser {
    std::u16string name;     // of the profile's folder
    std::u16string account;  // what the user logs on with, where the hive tells; else empty
    std::string sid;         // empty where neither the machine's list nor the classes tell
    std::u16string profile;  // "C:\Users\Anna"
    std::string folder;      // empty where it isn't there
    std::optional<FoundHive> hive;
    std::optional<FoundHive> classes;
    bool mandatory = false;  // NTUSER.MAN: nothing that is written there stays
    std::string problem;     // why the user can't be looked at, or not whole
};

enum class Hibernation {
    None,
    Hibernated,  // or shut down for a fast start: Windows goes on where it was, with its own registry
    Doubtful     // hiberfil.sys holds something else, or can't be read
};

struct WindowsDisk {
    bool nt = true;
    std::string root;              // the folder of the host that is the system's drive
    char letter = 'C';             // of that drive
    std::string folder;            // of Windows
    std::u16string windowsFolder;  // "C:\WINDOWS"
    OsVersion version;             // all 0 where nothing tells
    std::u16string product;        // "Windows 7 Professional"
    std::u16string servicePack;    // "Service Pack 1"
    bool is64Bit = false;
    unsigned controlSet = 0;         // ControlSet00n; 0 on 9x, or where SYSTEM doesn't tell
    std::u16string programFiles;     // those of 64 bits on such a Windows
    std::u16string programFilesX86;  // empty where there is none of its own
    std::u16string commonFiles;
    std::u16string commonFilesX86;
    std::u16string profiles;     // the folder of the users' folders
    std::u16string programData;  // "C:\ProgramData"; before Vista the folder of all users
    std::u16string publicUser;   // "C:\Users\Public", empty before Vista
    std::vector<DriveLetter> letters;
    std::vector<FoundHive> hives;  // but those of the users
    std::vector<DiskUser> users;   // without the services' and the templates; of 9x those with a profile
    Hibernation hibernation = Hibernation::None;
    std::string hibernationFile;        // empty where there is none
    bool fastStart = false;             // switched on: a shut-down is a hibernation. The file decides.
    std::vector<std::string> warnings;  // English sentences

    [[nodiscard]] const FoundHive* hive(HiveRole role) const;
};

// Each a sentence or more, in English: what is wrong, why it matters, what helps.
struct DiskProblem {
    std::string what;
    std::string why;
    std::string help;
    std::vector<std::string> choices;  // folders of several Windows, one of which is to be given

    [[nodiscard]] std::string text() const;
};

// `path`: the root of a disk or a Windows folder on it. `otherDrives`: folders of the host by their letters,
// where users may have their profiles, too.
[[nodiscard]] std::variant<WindowsDisk, DiskProblem> findWindows(
    const std::string& path, const std::map<char, std::string>& otherDrives = {});

}  // namespace bromvale::offline

// Which folders are a Windows, and what a folder is that holds none.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kNtHive = "regf";
constexpr std::string_view k9xHive = "CREG";
// Of a volume that BitLocker has, behind the jump at its start.
constexpr std::string_view kBitLocker = "-FVE-FS-";

bool beginsWith(const InsidePath& path, std::string_view start) {
    return path.isFile() && startOf(path.path, start.size()) == start;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

DiskProblem problemOf(std::string what, std::string why, std::string help) {
    return {std::move(what), std::move(why), std::move(help), {}};
}

DiskProblem noFolder(const std::string& path) {
    const std::optional<std::string> start = startOf(path, 11);
    if (start && start->size() == 11 && start->substr(3) == kBitLocker)
        return problemOf(
            path + " is a volume that BitLocker has encrypted.", "Without its key nothing on it can be read.",
            "Unlock it with the recovery key (cryptsetup bitlkOpen, or dislocker), mount what comes "
            "of it, and give that folder.");
    return problemOf(path + " is no folder.", "What is looked at is a disk that is mounted.",
                     "Mount it read-only (mount -o ro /dev/sdXN FOLDER), and give the folder.");
}

DiskProblem cantRead(const std::string& path, int number) {
    return problemOf(path + " can't be read: " + std::strerror(number) + ".",
                     "The folders and the registry of Windows lie there.",
                     number == EACCES || number == EPERM
                         ? "Start the program as a user who may read the disk (root, with sudo)."
                         : "Give the folder where the disk is mounted.");
}

struct Trace {
    std::string_view path;  // below the folder that was given
    std::string_view what;
    std::string_view help;
};

// What people give in place of the Windows disk. The first that is there counts.
constexpr Trace kTraces[] = {
    {"dislocker-file", "holds a disk of BitLocker that is unlocked, but not mounted",
     "Mount the file dislocker-file in it (mount -o loop,ro), and give that folder."},
    {"EFI\\Microsoft\\Boot", "is the small partition from which the computer starts",
     "Mount the partition on which Windows itself is, mostly the largest one."},
    {"Boot\\BCD", "is the small partition from which Windows starts",
     "Mount the partition on which Windows itself is, mostly the largest one."},
    {"config", "is a folder inside of Windows", "Give the Windows folder, or the root of the disk."},
    {"Windows\\System32", "has a Windows folder without a registry",
     "Look whether System32/config is there and holds the files SOFTWARE and SYSTEM; a backup may have "
     "them."},
    {"Windows.old\\Windows\\System32\\config", "has an earlier Windows only, in Windows.old",
     "Give the folder Windows.old/Windows if that one is meant."},
    {"System Volume Information", "is a disk of Windows, but no Windows is on it",
     "Mount the partition on which the folder Windows is."},
};

}  // namespace

bool isNtFolder(const InsideFolder& drive, const std::string& folder) {
    const InsidePath config = drive.find(folder, "System32\\config");
    if (!config.isFolder()) return false;
    for (const char* const name : {"SOFTWARE", "SYSTEM"})
        if (!namesLike(config.path, name).empty()) return true;
    return std::ranges::any_of(InsideFolder::entries(config.path), [&](const std::string& entry) {
        return entry.find('.') == std::string::npos && beginsWith(drive.follow(config.path, entry), kNtHive);
    });
}

bool is9xFolder(const InsideFolder& drive, const std::string& folder) {
    return std::ranges::any_of(namesLike(folder, "SYSTEM.DAT"), [&](const std::string& entry) {
        return beginsWith(drive.follow(folder, entry), k9xHive);
    });
}

std::vector<std::string> windowsFolders(const std::string& folder) {
    const InsideFolder inside(folder);
    if (isNtFolder(inside, folder) || is9xFolder(inside, folder)) return {folder};
    std::vector<std::string> found;
    for (const std::string& entry : InsideFolder::entries(folder)) {
        const std::string path = folder + "/" + entry;
        if (isFolder(path) && (isNtFolder(inside, path) || is9xFolder(inside, path))) found.push_back(path);
    }
    return found;
}

DiskProblem whyNoWindows(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) return cantRead(path, errno);
    if (!S_ISDIR(status.st_mode)) return noFolder(path);
    if (::access(path.c_str(), R_OK | X_OK) != 0) return cantRead(path, errno);
    const InsideFolder inside(path);
    const std::string why = "Nothing is looked at where the registry of a Windows was not found.";
    for (const Trace& trace : kTraces)
        if (inside.find(inside.root(), trace.path).found())
            return problemOf(path + " " + std::string(trace.what) + ".", why, std::string(trace.help));
    if (InsideFolder::entries(inside.root()).empty())
        return problemOf(path + " is empty: probably nothing is mounted there.", why,
                         "Mount the disk there (mount -o ro /dev/sdXN " + path + ").");
    return problemOf(
        path + " holds no Windows: no folder in it has System32/config with hives, or a SYSTEM.DAT.", why,
        "Give the root of the disk, or the Windows folder itself.");
}

}  // namespace bromvale::offline

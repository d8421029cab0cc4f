#include "platform/offline/hives/disk/disk_parts.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kShortest = 4096;

}  // namespace

// As the program that mounts such disks decides: the file's first bytes, not what the registry says.
void findHibernation(DiskSearch& search) {
    WindowsDisk& disk = search.disk;
    const std::vector<std::string> names = namesLike(disk.root, "hiberfil.sys");
    if (names.empty()) return;
    const InsidePath path = search.drive.follow(disk.root, names.front());
    disk.hibernationFile = path.found() ? path.path : disk.root + "/" + names.front();
    disk.hibernation = Hibernation::Doubtful;
    if (!path.isFile()) return;
    const std::optional<std::string> start = startOf(path.path, 4);
    if (!start) return;
    const bool saved = *start == "hibr" || *start == "HIBR";
    if (saved || static_cast<std::size_t>(path.status.st_size) < kShortest)
        disk.hibernation = Hibernation::Hibernated;
}

}  // namespace bromvale::offline

#include <filesystem>
#include <optional>

#include "platform/offline/machine.h"
#include "tests/contract/on_drives.h"
#include "tests/support/host_folder_offline.h"

namespace bromvale::testing {
namespace {

namespace fs = std::filesystem;

std::optional<HostFolder>& hostFolder() {
    static std::optional<HostFolder> folder;
    return folder;
}

}  // namespace

std::vector<std::string> kindsOfDrives() {
    return {"Memory", "Folder", "Disk"};
}

void putDrive(const std::string& kind, const std::string& folder) {
    if (kind == "Memory") return;
    auto& drives = offline::machine().drives;
    const std::string host = (hostFolder().emplace().path() / "C").string();
    fs::create_directory(host);
    kind == "Disk" ? drives.addDisk('C', host) : drives.addFolder('C', host);
    drives.makeFolder(folder);
}

// The bin of such a drive stands beside its folder.
void removeDrive() {
    hostFolder().reset();
}

}  // namespace bromvale::testing

#include <filesystem>

#include "platform/offline/machine.h"
#include "tests/contract/on_drives.h"

namespace bromvale::testing {
namespace {

namespace fs = std::filesystem;

fs::path& hostFolder() {
    static fs::path folder;
    return folder;
}

}  // namespace

std::vector<std::string> kindsOfDrives() {
    return {"Memory", "Folder", "Disk"};
}

void putDrive(const std::string& kind, const std::string& folder) {
    if (kind == "Memory") return;
    std::string pattern = (fs::temp_directory_path() / "bromvale-drive-XXXXXX").string();
    hostFolder() = mkdtemp(pattern.data());
    auto& drives = offline::machine().drives;
    const std::string host = (hostFolder() / "C").string();
    fs::create_directory(host);
    kind == "Disk" ? drives.addDisk('C', host) : drives.addFolder('C', host);
    drives.makeFolder(folder);
}

// The bin of such a drive stands beside its folder.
void removeDrive() {
    if (hostFolder().empty()) return;
    std::error_code ignored;
    fs::remove_all(hostFolder(), ignored);
}

}  // namespace bromvale::testing

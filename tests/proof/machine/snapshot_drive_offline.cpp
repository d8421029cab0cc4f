#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/proof/machine/snapshot.h"

namespace bromvale::proof {

namespace fs = std::filesystem;

DriveSnapshot readDrive(const std::string& hostFolder) {
    DriveSnapshot drive;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(hostFolder)) {
        std::string content = "<folder>";
        if (entry.is_symlink()) {
            content = "<link> " + fs::read_symlink(entry.path()).string();
        } else if (!entry.is_directory()) {
            std::ifstream in(entry.path(), std::ios::binary);
            content.assign(std::istreambuf_iterator<char>(in), {});
        }
        drive.emplace(entry.path().string().substr(hostFolder.size()), content);
    }
    return drive;
}

}  // namespace bromvale::proof

#include "tests/contract/on_drives.h"

namespace bromvale::testing {

std::vector<std::string> kindsOfDrives() {
    return {"Windows"};
}

void putDrive(const std::string&, const std::string&) {}

void removeDrive() {}

}  // namespace bromvale::testing

#include "platform/final_path.h"

#include "platform/offline/machine.h"

namespace bromvale {

// A link can be reached under its own name here, so every path leads to itself.
std::string finalPath(const std::string& path, Links) {
    offline::Location location;
    const offline::Drives& drives = offline::machine().drives;
    if (drives.locate(path, location) != 0 || location.volume->find(location.all(), nullptr) != 0) return {};
    return location.text();
}

}  // namespace bromvale

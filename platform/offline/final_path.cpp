#include "platform/final_path.h"

#include <vector>

#include "platform/offline/machine.h"

namespace bromvale {

// A link can be reached under its own name here, so every path leads to itself, and a short name to the long
// one.
std::string finalPath(const std::string& path, Links) {
    offline::Location location;
    const offline::Drives& drives = offline::machine().drives;
    if (drives.locate(path, location) != 0 || location.volume->find(location.all(), nullptr) != 0) return {};
    if (path.find('~') == std::string::npos) return location.text();
    std::vector<offline::FileInfo> found(location.count);
    for (std::size_t i = 0; i < found.size(); ++i)
        static_cast<void>(location.volume->find(location.all().first(i + 1), &found[i]));
    for (std::size_t i = 0; i < found.size(); ++i) location.names[i] = found[i].name;
    return location.text();
}

}  // namespace bromvale

#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace bromvale {

// Why a folder of the list, or one that the user has chosen, isn't emptied: a German sentence; empty where
// nothing is wrong with its path. Refused is every path that the system reads otherwise than it stands there:
// one that isn't whole (drive or share first), is too long to be listed, holds marks (exact/text.h), or has
// components that lead elsewhere: "..", an end that is cut off, a separator, a wildcard, a device.
[[nodiscard]] std::string refusalOf(std::string_view path);

// Folders that were left alone, and the reasons.
struct RefusedFolder {
    std::string path;
    std::string reason;
};
using RefusedFolders = std::vector<RefusedFolder>;

// One box for all of them; none without any.
void tellRefused(const RefusedFolders& refused);

}  // namespace bromvale

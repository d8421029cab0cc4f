#pragma once
#include <string>

namespace bromvale {

enum class Links {
    Open,    // a link at the path's end is opened itself, where the system can
    Follow,  // what it points to is opened
};

// The path that the system arrives at when it opens a file or folder. Empty where it can't be opened, and on
// systems before Windows Vista, which don't tell.
[[nodiscard]] std::string finalPath(const std::string& path, Links links);

}  // namespace bromvale

#pragma once
#include <string>

namespace bromvale {

enum class Links {
    Open,    // a link at the path's end is opened itself, where the system can
    Follow,  // what it points to is opened
};

// Whether the system tells final paths at all: from Windows Vista on.
[[nodiscard]] bool tellsFinalPaths();

// The path that the system arrives at when it opens a file or folder (a path that may carry marks, see
// exact_text.h), in the form of its own. Empty where that can't be told: it isn't there, it can't be opened,
// or no such system.
[[nodiscard]] std::u16string finalPath(const std::string& path, Links links);

}  // namespace bromvale

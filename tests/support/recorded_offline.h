#pragma once
// What the offline machine has recorded.
#include <string>
#include <vector>

#include "platform/offline/machine.h"

namespace bromvale::testing {

// The texts of all events of a kind, in their order.
inline std::vector<std::string> recorded(offline::EventKind kind) {
    std::vector<std::string> texts;
    for (const offline::Event& event : offline::machine().events.of(kind)) texts.push_back(event.text);
    return texts;
}

// The paths that the files and folders of the recycle bin came from.
inline std::vector<std::string> recycled() {
    std::vector<std::string> paths;
    for (const auto& entry : offline::machine().drives.recycled) paths.push_back(entry.path);
    return paths;
}

}  // namespace bromvale::testing

#include "core/startup/arguments.h"

#include <algorithm>

#include "platform/machine.h"

namespace bromvale {

std::string_view arguments() {
    std::string_view line = GetCommandLineA();
    if (line.starts_with('"')) {
        line.remove_prefix(std::min(line.find('"', 1), line.size() - 1) + 1);
    } else {
        line.remove_prefix(std::min(line.find_first_of(" \t"), line.size()));
    }
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    return line;
}

}  // namespace bromvale

#pragma once
#include <string_view>

namespace bromvale {

// What stands behind the program's name on the command line, as it was typed, trailing blanks and all.
[[nodiscard]] std::string_view arguments();

// The start that empties the folders of the list, as Windows' own start makes it.
[[nodiscard]] inline bool emptiesFolders() {
    return arguments() == "-d";
}

}  // namespace bromvale

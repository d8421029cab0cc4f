#pragma once
#include <string>

namespace bromvale {

// The program's own file as the ANSI functions can reach it.
struct ProgramFile {
    std::string folder;  // with its trailing backslash
    std::string name;    // with its extension
};

// Folder and name are the long ones where the code page holds them, else the short ones that the drive keeps
// for them; marks (exact_text.h) stay where there are none. Both empty where the system doesn't tell.
[[nodiscard]] ProgramFile programFile();

}  // namespace bromvale

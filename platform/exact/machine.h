#pragma once
#include <string>

#include "platform/item_lists.h"

namespace bromvale {

// Names of the machine with marks where the code page lacks a character (text.h).

// GetWindowsDirectoryA, without a backslash behind it; empty where it fails or the folder is longer than a
// path may be.
[[nodiscard]] std::string exactWindowsFolder();

// ExpandEnvironmentStringsA: variables between percent signs are replaced. The text itself where it fails.
[[nodiscard]] std::string expandedExactly(const std::string& text);

// SHGetPathFromIDListA; empty where the folder has no path.
[[nodiscard]] std::string exactPathFromIdList(PCIDLIST_ABSOLUTE list);

// The program's own file as the ANSI functions can reach it.
struct ProgramFile {
    std::string folder;  // with its trailing backslash
    std::string name;    // with its extension
};

// Folder and name are the long ones where the code page holds them, else the short ones that the drive keeps
// for them; marks stay where there are none. Both empty where the system doesn't tell.
[[nodiscard]] ProgramFile programFile();

}  // namespace bromvale

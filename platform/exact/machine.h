#pragma once
#include <string>

namespace bromvale {

// Folders of the machine with marks where the code page lacks a character (exact_text.h).

// GetWindowsDirectoryA, without a backslash behind it; empty where it fails or the folder is longer than a
// path may be.
[[nodiscard]] std::string exactWindowsFolder();

// ExpandEnvironmentStringsA: variables between percent signs are replaced. The text itself where it fails.
[[nodiscard]] std::string expandedExactly(const std::string& text);

}  // namespace bromvale

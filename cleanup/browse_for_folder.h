#pragma once
#include <string>

namespace bromvale {

// Lets the user choose a folder; empty where the dialog is cancelled, and for a folder whose path the code
// page can't tell without leading elsewhere. The path stands as the dialog gives it, so a drive's root ends
// in a backslash and nothing else does.
[[nodiscard]] std::string BrowseForFolder();

}  // namespace bromvale

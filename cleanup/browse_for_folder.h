#pragma once
#include <string>

#include "platform/window_handle.h"

namespace bromvale {

// Lets the user choose a folder in a dialog over `owner`; empty where the dialog is cancelled, and for a
// folder that can't be emptied by its path (folder_paths.h), of which the user is told why. The path stands
// as the dialog gives it, so a drive's root ends in a backslash and nothing else does.
[[nodiscard]] std::string BrowseForFolder(WindowHandle owner);

}  // namespace bromvale

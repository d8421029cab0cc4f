#pragma once
#include <string>

#include "platform/folder_dialog.h"

namespace bromvale {

// SHGetPathFromIDListA with marks where the code page lacks a character (exact_text.h); empty where the
// folder has no path.
[[nodiscard]] std::string exactPathFromIdList(PCIDLIST_ABSOLUTE list);

}  // namespace bromvale

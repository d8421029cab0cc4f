#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/exact/files.h"

namespace bromvale {

// Lists what a folder holds. `path` gains a trailing backslash where it has none. `entries` ends in one
// without a name, so that its upper bound is the number of those that were found. Where the code page lacks a
// character a name carries marks (platform/exact/text.h), and its plain text names something else. Failures
// are reported, never thrown. The windows are served meanwhile.
void FindFileAPI(std::string& path, std::string_view pattern, std::vector<FoundEntry>& entries);

// Files and folders alike, wildcards work. One FindFirstFileA whose handle is not closed.
[[nodiscard]] bool FileExists(std::string_view path);

// FileExists; where it finds nothing, the other view of a 64-bit Windows is asked
// (platform/exact/other_view.h).
[[nodiscard]] bool FileExistsInAnyView(std::string_view path);

}  // namespace bromvale

#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// Deletes one file of a folder (always into the recycle bin), or with an empty `file` all that the folder
// holds (for good with DelFilePermanent, else into the recycle bin). `path` gains a trailing backslash where
// it has none and a folder is emptied. Failures are reported, the outcome is never checked.
void FileDel(std::string& path, std::string_view file);

}  // namespace bromvale

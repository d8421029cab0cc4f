#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// Deletes one file of a folder, always into the recycle bin, or with an empty `file` all that the folder
// holds: for good with DelFilePermanent, where filled sub folders stay, else into the recycle bin. Links go
// as links. `path` gains a trailing backslash where it has none and a folder is emptied. Failures are
// reported, the outcome is never checked.
void FileDel(std::string& path, std::string_view file);

}  // namespace bromvale

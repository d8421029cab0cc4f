#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// Deletes one file of a folder, always into the recycle bin, or with an empty `file` all that the folder
// holds: for good with DelFilePermanent, where filled sub folders stay, else into the recycle bin. Links go
// as links. A name that leads elsewhere (see entry_names.h) is never handed on: such a file isn't deleted by
// its name, and a folder's entries go by their short names or stay, which the log tells. What can't be looked
// into stays, too (see folder_links.h). Whether the folder's own path leads to it is for the caller to ask
// (folder_paths.h).
// `path` gains a trailing backslash where it has none and a folder is emptied. Failures are
// reported, the outcome is never checked.
void FileDel(std::string& path, std::string_view file);

}  // namespace bromvale

#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// Deletes one file of a folder, always into the recycle bin, or with an empty `file` all that the folder
// holds: for good with DelFilePermanent, where filled sub folders stay, else into the recycle bin. Links go
// as links. A name that the program's code page can't tell without leading elsewhere (see entry_names.h) is
// never handed on: such a file isn't deleted by its name, and a folder's entries go by their short names.
// `path` gains a trailing backslash where it has none and a folder is emptied. Failures are
// reported, the outcome is never checked.
void FileDel(std::string& path, std::string_view file);

}  // namespace bromvale

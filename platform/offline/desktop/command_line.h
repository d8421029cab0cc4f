#pragma once
#include <string>
#include <string_view>

namespace bromvale::offline {

// The program that a command line names, as CreateProcessA finds it: the text in quotes, or up to a blank
// behind which the text so far names a file; ".exe" is added to a name without a dot. Names without a folder
// are looked for in the program's folder, the current one, and the system's. Empty where there is no such
// file.
[[nodiscard]] std::string programOf(std::string_view commandLine);

}  // namespace bromvale::offline

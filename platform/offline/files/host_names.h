#pragma once
#include <string>
#include <string_view>

namespace bromvale::offline {

// Names of the host's files and what the machine calls them, in the stored form: the 9x family knows names of
// its code page only.
[[nodiscard]] std::string knownName(std::string_view hostName);
[[nodiscard]] std::string hostOfStored(std::string_view stored);

}  // namespace bromvale::offline

// Registry files in all of their forms.
#pragma once

#include <string>
#include <vector>

namespace bromvale::fuzz {

std::vector<std::string> regFileSeeds();

// UTF-16LE with mark.
std::string wideFile(std::string_view ascii);

}  // namespace bromvale::fuzz

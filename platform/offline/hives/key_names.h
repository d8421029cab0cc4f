// The names of sub keys as their lists need them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale::offline {

// By which sub keys are sorted. Written into a text that is used again and again, since hives have hundreds
// of thousands of names.
void upperCasedName(std::string_view nameBytes, bool oneByte, std::u16string& upperCased);

// What a list of the kind "lh" holds beside each sub key.
[[nodiscard]] std::uint32_t nameHash(std::u16string_view upperCased);

}  // namespace bromvale::offline

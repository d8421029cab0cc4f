#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace bromvale {

// What a folder lists is written in the code page of the program, which lacks most of the characters that a
// name may hold and takes the nearest one instead: a wide backslash comes as "\", a wide star as "*", a
// Cyrillic letter as "?". Such a name opens something else, in another folder maybe, or stands for many
// files.

// Whether an entry of this name can be reached by it: no character that separates, is a wildcard or is
// allowed in no name, and no dot or blank at its end, which the system would cut off.
[[nodiscard]] bool isPlainName(std::string_view name);

// The name by which an entry can be reached: its own, else its short one. Empty where neither is plain, as on
// drives that keep no short names.
[[nodiscard]] std::string reachableName(const WIN32_FIND_DATAA& found);

// An entry whose own name isn't plain.
struct ForeignEntry {
    std::string shortName;
    std::string listedName;
};
// Those of a folder (with its backslash) that can be reached by their short names.
[[nodiscard]] std::vector<ForeignEntry> foreignEntries(const std::string& path);

}  // namespace bromvale

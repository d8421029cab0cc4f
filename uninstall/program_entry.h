#pragma once
#include <string>
#include <string_view>

namespace bromvale {

// One collected value below an Uninstall key, taken apart: views into its line. It is cut at the first "[",
// "]" and "=" wherever they stand, since the line escapes nothing. Texts have their marks
// (platform/exact/text.h). Failure 5 where the first "=" stands
// before the first "]", as in a key with "=" in its name.
struct ProgramEntry {
    std::string_view hive;  // the root's handle as signed decimal text
    std::string_view key;   // with its closing "]"
    std::string_view name;
    std::string_view data;
};
[[nodiscard]] ProgramEntry takeApart(std::string_view line);

}  // namespace bromvale

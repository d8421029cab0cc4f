#pragma once
#include <string>
#include <string_view>

#include "platform/exact/files.h"

namespace bromvale {

// Which names lead to what they name. One that the code page can't hold carries marks (exact/text.h), and its
// plain text opens something else, in another folder maybe, or stands for many files. Others are exact and
// are read otherwise all the same: the system cuts dots and blanks off an end, and takes "nul.txt" for a
// device.

// Whether nothing reads the name otherwise, marks aside: no character that separates, is a wildcard or is
// allowed in no name, no dot or blank at the end, no device.
[[nodiscard]] bool isSoundName(std::string_view name);

// A sound name without marks: the ANSI functions and the shell reach the entry by it.
[[nodiscard]] bool isPlainName(std::string_view name);

// The name by which the ANSI functions and the shell reach an entry of a folder (with its backslash): its
// own, else its short one where that is proved to lead to the same entry. Empty where neither does.
[[nodiscard]] std::string reachableName(const std::string& folder, const FoundEntry& entry);
// The same for an entry that is given by its name alone.
[[nodiscard]] std::string reachableName(const std::string& folder, const std::string& name);

}  // namespace bromvale

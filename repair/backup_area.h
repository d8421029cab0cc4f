#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace bromvale {

// The undo files in BackupPath. They are listed, handed to the shell and deleted as whole files, never read.

// Removes undo files whose last write lies more than DelAfterDays days back; they go to the recycle bin.
// Called at a normal start while AutoRegFileDel is 1. A file whose date can't be read stays. Failures are
// reported.
void AutoFileDel();

// The names of all undo files, without path; a folder of such a name is none. `*.reg` also finds what bears
// such an ending in its short name alone; only names that end in ".reg" themselves, in whatever case, are
// undo files. Adds the backslash that BackupPath may lack.
[[nodiscard]] std::vector<std::string> undoFileNames();

// --- for tests: parts of the above and of the page ---

// Local date of the file's last write as "day.month.year" without leading zeros; "0.0.0" where it can't be
// read.
[[nodiscard]] std::string GetFileDate(std::string_view path);

// Kilobytes with the locale's decimal sign, cut to five characters: "2 KB", "0,976 KB", "1464, KB".
[[nodiscard]] std::string sizeText(double bytes);

}  // namespace bromvale

// The faults that a scan has found, with what the program's list leaves out: why each is one, and which file
// was looked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/result_row.h"

namespace bromvale::offline {

enum class FaultKind : std::uint8_t { MissingFile, EmptyKey, DeadLink, StaleUninstallEntry };

// "missing file" and so on, and the reason as a sentence without full stop. English.
[[nodiscard]] std::string_view kindText(FaultKind kind);
[[nodiscard]] std::string_view reasonText(FaultKind kind);

// Texts in UTF-16.
struct FoundRow {
    std::u16string key;        // whole path, as the program names it
    std::u16string valueName;  // empty for the default value
    std::u16string data;
    FaultKind kind = FaultKind::MissingFile;
    std::u16string sought;  // the file, or the GUID of a dead link; empty for the other kinds
    // Where the key lies: the same for all views and users that share it.
    std::uint32_t hive = 0;  // index of the mount; the number of mounts where it is in no hive
    std::uint32_t place = 0;
};

// The rows of a scan, one object's after the other's: of a big registry they are many, and nobody keeps them
// all twice. `row` gives the one of that number, from 0, in the order of the scan's list; its texts are in
// the machine's code page.
void explainRows(std::size_t count, const std::function<ResultRow(std::size_t)>& row,
                 const std::function<void(FoundRow&&)>& explained);

}  // namespace bromvale::offline

#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "scanner/entry_group.h"

namespace bromvale {

// Lower-case text that the keys of the open group share. Lives, like the group itself, as long as the
// program: nothing clears it at the start of a scan, so that the last object of one scan is judged in the
// next.
extern std::string GroupPrefix;
// True when the last entry joined a group, False when it belonged to no object.
extern bool GroupOpen;
[[nodiscard]] EntryGroup& entryGroup();

// Gathers the entries of one object and has them judged when the first entry of the next object arrives; that
// entry is then not buffered but asked for once more (RepeatEntry). `key` ends with "]". Failures are
// reported.
void CheckReg(std::int32_t hive, std::string_view hiveName, std::string_view key, std::string_view name,
              std::string_view value);

// Lists a default value that names a class, interface or type library which no hive has. Failures are
// reported.
void CheckQuerVerbindung(std::int32_t hive, std::string_view hiveName, std::string_view key,
                         std::string_view name, std::string_view value);

}  // namespace bromvale

// Hives as they come from files: opened with their logs, and what is to be said of each.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/offline/hives/cleaning/host_folder.h"
#include "platform/offline/hives/disk/disk.h"
#include "platform/offline/hives/mounted_hive.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::offline {

struct LoadedHive {
    std::string path;
    std::vector<FoundLog> logs;
    std::shared_ptr<MountedHive> hive;  // null where it can't be read
    Replay replay;
    std::string status;  // one line, English: clean, or dirty with what was done about it
    // What hive and logs were when they were read, where that was asked for: it takes a look at every byte.
    FilePrint print;
    std::vector<FilePrint> logPrints;
};

[[nodiscard]] LoadedHive loadHive(const std::string& path, const std::vector<FoundLog>& logs,
                                  bool withPrints);
// The logs that lie beside a hive under its name, in any case.
[[nodiscard]] std::vector<FoundLog> foundLogsOf(const std::string& path);

// Where a key is in its hive, with a backslash before each name; empty for the root.
[[nodiscard]] std::u16string pathIn(const Hive& hive, Cell key);
// Keys below this one and itself.
[[nodiscard]] std::size_t countKeys(const Hive& hive, Cell from);

}  // namespace bromvale::offline

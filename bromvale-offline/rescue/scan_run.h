// One scan of one machine, and the removal of chosen rows there: by the program itself, in a process of its
// own, so that several views and users can follow each other and a file that breaks under the scan ends that
// alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bromvale-offline/rescue/found_row.h"
#include "platform/offline/hives/mounted_hive.h"

namespace bromvale::offline {

struct ScanRun {
    // Sets the process's machine up, with the hives in it.
    std::function<void()> setUp;
    std::vector<std::shared_ptr<MountedHive>> hives;
    bool showProgress = false;  // on standard error, a line that is written over
    // Numbers of the rows to be removed, from 0, ascending, in the order of the scan; nothing: it is only
    // scanned.
    std::optional<std::vector<std::size_t>> remove;
};

struct ScanResult {
    std::string report;  // the program's own sentence, UTF-8; empty where it didn't come to a scan
    std::vector<FoundRow> rows;
    std::size_t elsewhere = 0;               // entries that point to what is not at hand
    std::vector<std::string> warnings;       // UTF-8
    std::vector<std::vector<Cell>> removed;  // for each hive the topmost keys that went
    std::vector<std::u16string>
        removedPaths;          // of all topmost keys that went, as the living machine names them
    std::string completeCopy;  // the program's own, of those keys: a registry file
    bool damaged = false;      // keys of a hive could not be read
    std::string failure;       // why there is no result
};

[[nodiscard]] ScanResult runScan(const ScanRun& run);

}  // namespace bromvale::offline

// The way back from a cleaning: hive and logs byte for byte as they were.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/offline/hives/cleaning/cleaning.h"
#include "platform/offline/hives/cleaning/record.h"

namespace bromvale::offline {

struct ListedHive {
    std::string path;  // of the host
    std::string copy;  // of the hive as it was
    CleaningState state{};
    std::size_t removed = 0;        // keys
    std::vector<std::string> keys;  // those that were announced
    bool copiesWhole = false;       // they hold what the list says
    bool changedSince = false;      // the hive is no longer what the cleaning has made of it
};

struct ListedCleaning {
    std::string stamp;
    std::size_t hivesThen = 0;  // of how many hives it was; fewer in the list: the others lie elsewhere
    std::vector<ListedHive> hives;
    // Whether there is something to put back without force.
    [[nodiscard]] bool canBeUndone() const;
};

struct ListedCleanings {
    std::vector<ListedCleaning> cleanings;  // by stamp
    std::vector<std::string> unreadable;    // paths of lists that can't be read
};

// Of these folders. Reads only, all of the copies too. Throws HostFailure.
[[nodiscard]] ListedCleanings listCleanings(HostFiles& files, std::span<const std::string> folders);

// Puts all hives of that cleaning back. As with a cleaning all refusals are asked first, of all hives; each
// hive is whole at any instant, and the next start goes on. With `force` also a hive that was changed since;
// what it was lies beside it at the end, under a name with ".aside". The list and the complete copy stay.
// `disk` and `words` as for a cleaning. Done, Refused or Unfinished.
[[nodiscard]] CleaningResult undoCleaning(HostFiles& files, std::span<const std::string> folders,
                                          const std::string& stamp, const DiskState& disk,
                                          const CleaningWords& words, bool force,
                                          const CleaningProgress& progress);

}  // namespace bromvale::offline

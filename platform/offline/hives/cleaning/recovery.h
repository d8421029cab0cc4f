// What an end in the middle of a cleaning or an undo has left, and the way on from there.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/offline/hives/cleaning/cleaning.h"

namespace bromvale::offline {

struct UnfinishedCleaning {
    enum class WayOn {
        TakeBack,   // no hive was replaced: what was made goes
        Finish,     // a new hive is in its place: the rest follows
        FinishUndo  // an undo was on its way
    };
    std::string stamp;
    WayOn wayOn = WayOn::TakeBack;
    std::vector<std::string> hives;  // paths of the host; a list for what never came further than that
    std::string what;                // English: what there is, and what will be done; two sentences
};

// In these folders, which should be all that have hives of the disk. Reads only. Throws HostFailure.
[[nodiscard]] std::vector<UnfinishedCleaning> unfinishedCleanings(HostFiles& files,
                                                                  std::span<const std::string> folders);

// Goes that way. TakenBack or Done (of an undo, too) where it could, else Refused or Unfinished as a
// cleaning. An undo whose hive was changed since is refused; undoCleaning() with force goes on with it.
[[nodiscard]] CleaningResult goOnWithCleaning(HostFiles& files, std::span<const std::string> folders,
                                              const std::string& stamp, const CleaningProgress& progress);

}  // namespace bromvale::offline

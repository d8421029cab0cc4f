// The parts of a cleaning, shared by its steps, its recovery and its undo; not for callers.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/offline/hives/cleaning/cleaning.h"
#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/image.h"
#include "platform/offline/hives/log_names.h"

namespace bromvale::offline {

// The folder, and the name in it; "." for a path without one.
[[nodiscard]] std::pair<std::string, std::string> splitPath(const std::string& path);

// A hive on its way. What was read for the refusals is what is worked on: no second look can see another
// file.
struct HiveWork {
    const HiveToClean* order = nullptr;
    HostFolder* folder = nullptr;
    std::string bytes;
    std::vector<std::string> logBytes;  // as in order->logs
    HiveImage image;                    // after the replay
    Replay replay;
    CleaningRecord record;
};

// Everything that was asked and read before the first byte is written.
struct CleaningWork {
    explicit CleaningWork(HostFiles& files) : folders(files) {}
    HostFolders folders;
    std::vector<HiveWork> hives;  // those with keys
    std::vector<Refusal> refusals;
};

// Takes the locks of the folders, which it keeps.
[[nodiscard]] CleaningWork prepareCleaning(HostFiles& files, const Cleaning& cleaning);

void addDiskStateRefusals(const DiskState& disk, const CleaningWords& words, std::vector<Refusal>& refusals);
// Of one hive: what can be asked of the host alone. `work` has order, folder and record.
void addFileRefusals(HiveWork& work, std::vector<Refusal>& refusals);
// Reads hive and logs, replays, and looks at what they hold.
void addContentRefusals(HiveWork& work, const Cleaning& cleaning, std::vector<Refusal>& refusals);
// Space, over all hives of each disk.
void addSpaceRefusals(const std::vector<HiveWork>& hives, std::vector<Refusal>& refusals);
// A file that a cleaning or an undo replaces: it must be one, with one name, and ours to replace.
void addOwnershipRefusals(const HostFolder& folder, const std::string& name, std::vector<Refusal>& refusals);
void addFolderRefusals(const HostFolder& folder, std::vector<Refusal>& refusals);

// Makes copies, replays, deletes, proves: everything but the hive's replacement. HostFailure, HiveDamage or
// CleaningStop where it can't.
void makeNewHive(HiveWork& work, const CleaningProgress& progress);

// Something is not as it must be; a sentence without full stop.
class CleaningStop : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Hive and logs are still what the record says of the old state.
[[nodiscard]] bool isOldState(const HostFolder& folder, const CleaningRecord& record);
// The new hive takes the old one's place; the logs go aside behind it.
void replaceHive(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress);
// The second half: the new hive is in its place.
void moveLogsAside(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress);
// The hive is the old one: all that was made goes. Where hive or logs are not what they were, the copies
// stay.
void takeBack(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress);

// The old hive and its logs come back; the record's state is Undoing. Goes on where it was left.
void putBack(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress);

// A hive with its list.
struct RecordedHive {
    HostFolder* folder = nullptr;
    CleaningRecord record;
};

// Opens and locks the folders; false, with a refusal, where another one has one of them.
[[nodiscard]] bool openAndLock(HostFolders& folders, std::span<const std::string> paths,
                               std::vector<Refusal>& refusals);

// The whole undo, but for opening and locking.
[[nodiscard]] CleaningResult undoRecorded(HostFolders& folders, const std::string& stamp, bool force,
                                          const CleaningProgress& progress);

// What an undo has found and kept until the old state is back.
void removeAsides(HostFolder& folder, const CleaningRecord& record);

// The logs of that hive in the folder, by their names.
[[nodiscard]] std::vector<std::string> logsBeside(const HostFolder& folder, const std::string& hive);

// Runs steps; the text of what stopped them, or nothing.
template <class Steps>
[[nodiscard]] std::string problemOf(Steps&& steps) {
    try {
        std::forward<Steps>(steps)();
        return {};
    } catch (const HostFailure& failure) {
        return failure.what();
    } catch (const HiveDamage& damage) {
        return std::string(damage.what()) + " (byte " + std::to_string(damage.place) + ")";
    } catch (const CleaningStop& stop) {
        return stop.what();
    }
}

}  // namespace bromvale::offline

// The steps between the old state of a hive and the new one, and the way back from half of them. Each goes on
// where it was left, by looking at what lies there.
#include <algorithm>

#include "platform/offline/hives/cleaning/work.h"

namespace bromvale::offline {
namespace {

void tell(const CleaningProgress& progress, const std::string& path, const std::string& step) {
    if (progress) progress(path, step);
}

// An old hive without its logs must not be, nor no hive at all; a disk that renames in several steps or keeps
// no order in them may come to it when the power fails.
void bringMissingBack(HostFolder& folder, const CleaningRecord& record) {
    if (!folder.has(record.hive) && folder.holds(record.hiveCopy(), record.old))
        folder.rename(record.hiveCopy(), record.hive);
    if (!folder.holds(record.hive, record.old)) return;
    for (const RecordedLog& log : record.logs) {
        if (!folder.has(log.name) && folder.holds(record.copyOf(log.name), log.print))
            folder.rename(record.copyOf(log.name), log.name);
    }
    folder.sync();
}

}  // namespace

bool isOldState(const HostFolder& folder, const CleaningRecord& record) {
    return folder.holds(record.hive, record.old) &&
           std::ranges::all_of(record.logs,
                               [&](const RecordedLog& log) { return folder.holds(log.name, log.print); });
}

void replaceHive(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress) {
    if (!isOldState(folder, record))
        throw CleaningStop("The hive \"" + folder.pathOf(record.hive) +
                           "\" or one of its logs was changed by another program meanwhile");
    if (!folder.holds(record.newHive(), record.fresh))
        throw CleaningStop("The new hive \"" + folder.pathOf(record.newHive()) + "\" was changed");
    folder.rename(record.newHive(), record.hive);
    moveLogsAside(folder, record, progress);
}

void moveLogsAside(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress) {
    // Before this is on the disk the logs must stay: an old hive without them would be lost.
    folder.sync();
    const bool untouched = folder.holds(record.hive, record.fresh);
    for (const RecordedLog& log : record.logs) {
        // A log that another one has written since is not ours to move, nor one beside a hive that is at work
        // again.
        if (untouched && folder.holds(log.name, log.print)) folder.rename(log.name, record.copyOf(log.name));
    }
    folder.sync();
    folder.remove(record.replayedHive());
    folder.remove(record.newHive());
    record.state = CleaningState::Done;
    storeRecord(folder, record);
    tell(progress, folder.pathOf(record.hive), "Cleaned: " + std::to_string(record.removed) + " keys");
}

void takeBack(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress) {
    const std::string path = folder.pathOf(record.hive);
    folder.remove(record.replayedHive());
    folder.remove(record.newHive());
    // The list is the last to go: as long as it is there the next start finds the rest. Where it never came
    // to be nothing else did.
    if (!folder.has(record.list())) {
        folder.remove(record.list() + ".new");
        folder.sync();
        return;
    }
    bringMissingBack(folder, record);
    if (!isOldState(folder, record)) {
        record.state = CleaningState::Abandoned;
        storeRecord(folder, record);
        tell(progress, path,
             "Hive or logs were changed by another program meanwhile and stay so; the copies were kept");
        return;
    }
    folder.remove(record.list() + ".new");
    folder.remove(record.completeCopy());
    for (const RecordedLog& log : record.logs) folder.remove(record.copyOf(log.name));
    folder.remove(record.hiveCopy());
    folder.sync();
    folder.remove(record.list());
    folder.sync();
    tell(progress, path, "Taken back: hive and logs are as they were");
}

}  // namespace bromvale::offline

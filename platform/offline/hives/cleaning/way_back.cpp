// The steps of an undo. The logs come back first: the hive that is there is clean, so they say nothing yet.
// Then the old hive takes its place in one instant.
#include <algorithm>

#include "platform/offline/hives/cleaning/work.h"
#include "platform/offline/hives/hive.h"

namespace bromvale::offline {
namespace {

// What is there now, under another name until the old state is back. An undo that goes on has done so.
void keepPresent(HostFolder& folder, const CleaningRecord& record, const std::string& name) {
    const std::string aside = record.asideOf(name);
    if (folder.has(name) && !folder.has(aside)) folder.keepAs(name, aside);
}

bool needsNoLogs(const HostFolder& folder, const std::string& hive) {
    if (!folder.has(hive)) return false;
    try {
        const std::string bytes = folder.read(hive);
        return !readBaseBlock(HiveBytes(bytes)).dirty();
    } catch (const HiveDamage&) {
        return false;
    }
}

// A hive that was changed since may need logs of its own, which are about to go. The old state with its logs
// replayed needs none, so it stands in between.
void bridge(HostFolder& folder, const CleaningRecord& record) {
    if (needsNoLogs(folder, record.hive)) return;
    HiveImage image(folder.read(record.hiveCopy()));
    std::vector<std::string> bytes;
    for (const RecordedLog& log : record.logs) {
        const std::string copy = record.copyOf(log.name);
        bytes.push_back(folder.read(folder.has(copy) ? copy : log.name));
    }
    std::vector<HiveLog> logs;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        logs.push_back({logNameOf(record.logs[i].name).value_or(LogName::Log), HiveBytes(bytes[i])});
    if (replayLogs(image, logs).state == Replay::State::NoUsableLog)
        throw CleaningStop("The logs of the old hive \"" + folder.pathOf(record.hiveCopy()) +
                           "\" can't be replayed");
    folder.remove(record.replayedHive());
    folder.create(record.replayedHive(), image.bytes().all(), record.hiveCopy());
    folder.rename(record.replayedHive(), record.hive);
    folder.sync();
}

void bringLogsBack(HostFolder& folder, const CleaningRecord& record) {
    for (const std::string& name : logsBeside(folder, record.hive)) {
        const bool wasThere = std::ranges::find(record.logs, name, &RecordedLog::name) != record.logs.end();
        if (!wasThere) {
            folder.rename(name, record.asideOf(name));
        } else if (folder.has(record.copyOf(name))) {
            keepPresent(folder, record, name);
        }
    }
    for (const RecordedLog& log : record.logs) {
        const std::string copy = record.copyOf(log.name);
        if (folder.has(copy)) folder.rename(copy, log.name);
    }
    folder.sync();
}

}  // namespace

void removeAsides(HostFolder& folder, const CleaningRecord& record) {
    const auto isAside = [&](const std::string& name) {
        return name.ends_with(".bromvale-" + record.stamp + ".aside") ||
               name == record.asideOf(record.hive) + ".half";
    };
    for (const std::string& name : folder.names()) {
        const std::string_view file = std::string_view(name).substr(0, name.rfind(".bromvale-"));
        const bool ofHive =
            sameHostName(file, record.hive) || sameHostName(file.substr(0, file.rfind('.')), record.hive);
        if (ofHive && isAside(name)) folder.remove(name);
    }
}

void putBack(HostFolder& folder, CleaningRecord& record, const CleaningProgress& progress) {
    if (folder.has(record.hiveCopy())) {
        keepPresent(folder, record, record.hive);
        bridge(folder, record);
        bringLogsBack(folder, record);
        folder.rename(record.hiveCopy(), record.hive);
        folder.sync();
    }
    if (!isOldState(folder, record))
        throw CleaningStop("The hive \"" + folder.pathOf(record.hive) +
                           "\" or one of its logs is not what the copies held");
    if (!record.forced) removeAsides(folder, record);
    folder.remove(record.replayedHive());
    record.state = CleaningState::Undone;
    storeRecord(folder, record);
    if (progress) progress(folder.pathOf(record.hive), "Hive and logs are back, byte for byte as they were");
}

}  // namespace bromvale::offline

#include "platform/offline/hives/cleaning/recovery.h"

#include <algorithm>
#include <map>

#include "platform/offline/hives/cleaning/work.h"

namespace bromvale::offline {
namespace {

// What is unfinished of one stamp, and what is done of it.
struct Parts {
    std::vector<RecordedHive> unfinished;
    bool someDone = false;
    std::vector<std::pair<HostFolder*, std::string>> halfLists;
};

// The new hive has left its name for that of the old one; perhaps somebody has changed it there since. Where
// a file system renames in two steps it may have both names for a while.
bool isReplaced(const HostFolder& folder, const CleaningRecord& record) {
    if (record.state != CleaningState::Ready) return false;
    return folder.holds(record.hive, record.fresh) ||
           (!folder.has(record.newHive()) && folder.has(record.hive) &&
            !folder.holds(record.hive, record.old));
}

std::string stampOfHalfList(const std::string& name) {
    constexpr std::string_view mark = ".bromvale-";
    constexpr std::string_view end = ".list.new";
    const std::size_t at = name.rfind(mark) + mark.size();
    return name.substr(at, name.size() - end.size() - at);
}

std::map<std::string, Parts> findParts(const HostFolders& folders) {
    std::map<std::string, Parts> found;
    for (const auto& folder : folders.all()) {
        FoundRecords records = findRecords(*folder);
        for (CleaningRecord& record : records.records) {
            Parts& parts = found[record.stamp];
            if (record.unfinished()) {
                parts.unfinished.push_back({folder.get(), std::move(record)});
            } else {
                parts.someDone = parts.someDone || record.state == CleaningState::Done;
            }
        }
        for (const std::string& name : records.halfMade)
            found[stampOfHalfList(name)].halfLists.emplace_back(folder.get(), name);
    }
    std::erase_if(found, [](const auto& entry) {
        return entry.second.unfinished.empty() && entry.second.halfLists.empty();
    });
    for (auto& [stamp, parts] : found)
        std::ranges::sort(parts.unfinished, {}, [](const RecordedHive& part) { return part.record.part; });
    return found;
}

UnfinishedCleaning::WayOn wayOn(const Parts& parts) {
    const auto isUndo = [](const RecordedHive& part) { return part.record.state == CleaningState::Undoing; };
    if (std::ranges::any_of(parts.unfinished, isUndo)) return UnfinishedCleaning::WayOn::FinishUndo;
    const bool replaced = std::ranges::any_of(
        parts.unfinished, [](const RecordedHive& part) { return isReplaced(*part.folder, part.record); });
    // With one hive in its place the others follow: they are made and proved, or could not have been begun
    // with.
    return replaced || (parts.someDone && !parts.unfinished.empty()) ? UnfinishedCleaning::WayOn::Finish
                                                                     : UnfinishedCleaning::WayOn::TakeBack;
}

const char* describe(const Parts& parts) {
    if (parts.unfinished.empty())
        return "The program was stopped while it wrote a list, and had done nothing else. The half list is "
               "removed.";
    switch (wayOn(parts)) {
        case UnfinishedCleaning::WayOn::Finish:
            return "A cleaning was stopped after the first new hive had taken its place. The others follow, "
                   "and the old logs are moved aside.";
        case UnfinishedCleaning::WayOn::FinishUndo:
            return "Putting a cleaning back was stopped in the middle. It goes on, until hives and logs are "
                   "as they were.";
        case UnfinishedCleaning::WayOn::TakeBack: break;
    }
    return "A cleaning was stopped before a hive was replaced. Hives and logs are as they were; what was "
           "half-made is removed.";
}

// A hive of a cleaning that is to be finished.
void finish(RecordedHive& part, const CleaningProgress& progress) {
    HostFolder& folder = *part.folder;
    if (isReplaced(folder, part.record)) {
        moveLogsAside(folder, part.record, progress);
    } else if (part.record.state == CleaningState::Ready && isOldState(folder, part.record) &&
               folder.holds(part.record.newHive(), part.record.fresh)) {
        replaceHive(folder, part.record, progress);
    } else {
        takeBack(folder, part.record, progress);
    }
}

void goOn(Parts& parts, UnfinishedCleaning::WayOn way, const CleaningProgress& progress) {
    for (RecordedHive& part : parts.unfinished) {
        if (way == UnfinishedCleaning::WayOn::Finish) {
            finish(part, progress);
        } else {
            takeBack(*part.folder, part.record, progress);
        }
    }
    for (const auto& [folder, name] : parts.halfLists) {
        folder->remove(name);
        folder->sync();
    }
}

CleaningResult goOnWith(HostFolders& folders, const std::string& stamp, const CleaningProgress& progress) {
    CleaningResult result;
    result.state = CleaningResult::State::Refused;
    std::map<std::string, Parts> found = findParts(folders);
    const auto parts = found.find(stamp);
    if (parts == found.end()) {
        result.refusals.push_back(
            refusal(RefusalKind::UnknownStamp, {}, "No cleaning \"" + stamp + "\" is unfinished"));
        return result;
    }
    const UnfinishedCleaning::WayOn way = wayOn(parts->second);
    if (way == UnfinishedCleaning::WayOn::FinishUndo) return undoRecorded(folders, stamp, false, progress);
    for (const RecordedHive& part : parts->second.unfinished)
        addFolderRefusals(*part.folder, result.refusals);
    if (!result.refusals.empty()) return result;
    result.state = CleaningResult::State::Unfinished;
    goOn(parts->second, way, progress);
    result.state = way == UnfinishedCleaning::WayOn::TakeBack ? CleaningResult::State::TakenBack
                                                              : CleaningResult::State::Done;
    return result;
}

}  // namespace

std::vector<UnfinishedCleaning> unfinishedCleanings(HostFiles& files, std::span<const std::string> folders) {
    HostFolders opened(files);
    for (const std::string& path : folders) static_cast<void>(opened.at(path));
    std::vector<UnfinishedCleaning> unfinished;
    for (const auto& [stamp, parts] : findParts(opened)) {
        UnfinishedCleaning cleaning{stamp, wayOn(parts), {}, {}};
        cleaning.what = describe(parts);
        for (const RecordedHive& part : parts.unfinished)
            cleaning.hives.push_back(part.folder->pathOf(part.record.hive));
        for (const auto& [folder, name] : parts.halfLists) cleaning.hives.push_back(folder->pathOf(name));
        unfinished.push_back(std::move(cleaning));
    }
    return unfinished;
}

CleaningResult goOnWithCleaning(HostFiles& files, std::span<const std::string> folders,
                                const std::string& stamp, const CleaningProgress& progress) {
    CleaningResult result;
    result.state = CleaningResult::State::Unfinished;
    HostFolders opened(files);
    std::string problem = problemOf([&] {
        if (openAndLock(opened, folders, result.refusals)) {
            result = goOnWith(opened, stamp, progress);
        } else {
            result.state = CleaningResult::State::Refused;
        }
    });
    if (!problem.empty()) result.problem = std::move(problem);
    return result;
}

}  // namespace bromvale::offline

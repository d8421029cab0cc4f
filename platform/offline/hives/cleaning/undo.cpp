#include "platform/offline/hives/cleaning/undo.h"

#include <algorithm>

#include "platform/offline/hives/cleaning/work.h"

namespace bromvale::offline {
namespace {

bool copiesAreWhole(const HostFolder& folder, const CleaningRecord& record) {
    // On its way back each file is either still aside or in its place.
    const auto isThere = [&](const std::string& name, const FilePrint& print) {
        return folder.holds(record.copyOf(name), print) ||
               (record.state == CleaningState::Undoing && !folder.has(record.copyOf(name)) &&
                folder.holds(name, print));
    };
    return isThere(record.hive, record.old) && std::ranges::all_of(record.logs, [&](const RecordedLog& log) {
               return isThere(log.name, log.print);
           });
}

// What lies there is not what the cleaning, or its undo so far, has left.
bool wasChanged(const HostFolder& folder, const CleaningRecord& record) {
    if (record.state == CleaningState::Undoing) {
        // A file system that renames in two steps may have lost it for a while.
        if (!folder.has(record.hive)) return !folder.has(record.asideOf(record.hive));
        return !folder.holds(record.hive, record.present) && !folder.holds(record.hive, record.old) &&
               !folder.holds(record.hive, record.replayed);
    }
    // A hive that runs has logs again.
    return !folder.holds(record.hive, record.fresh) || !logsBeside(folder, record.hive).empty();
}

bool hasSomethingToPutBack(const CleaningRecord& record, bool force) {
    return record.state == CleaningState::Done || record.state == CleaningState::Undoing ||
           (record.state == CleaningState::Abandoned && force);
}

void addHiveRefusals(const RecordedHive& hive, bool force, std::vector<Refusal>& refusals) {
    const HostFolder& folder = *hive.folder;
    const CleaningRecord& record = hive.record;
    const std::string path = folder.pathOf(record.hive);
    addFolderRefusals(folder, refusals);
    // An undo that goes on has given the hive a second name itself.
    if (folder.has(record.hive) && !folder.has(record.asideOf(record.hive)))
        addOwnershipRefusals(folder, record.hive, refusals);
    if (!copiesAreWhole(folder, record))
        refusals.push_back(refusal(RefusalKind::CopyDamaged, path,
                                   "The copies of hive and logs are not what the list says of them"));
    if (!force && wasChanged(folder, record))
        refusals.push_back(refusal(RefusalKind::ChangedSinceCleaning, path,
                                   "The hive was changed since, by Windows, by a later cleaning or by hand"));
}

struct Chosen {
    std::vector<RecordedHive> hives;  // with something to put back
    bool undone = false;              // there is one that was
    bool unfinished = false;          // a cleaning that never ended
};

Chosen choose(const HostFolders& folders, const std::string& stamp, bool force) {
    Chosen chosen;
    for (const auto& folder : folders.all()) {
        for (CleaningRecord& record : findRecords(*folder).records) {
            if (record.stamp != stamp) continue;
            chosen.undone = chosen.undone || record.state == CleaningState::Undone;
            chosen.unfinished = chosen.unfinished || record.state == CleaningState::Begun ||
                                record.state == CleaningState::Ready;
            if (hasSomethingToPutBack(record, force))
                chosen.hives.push_back({folder.get(), std::move(record)});
        }
    }
    std::ranges::sort(chosen.hives, {}, [](const RecordedHive& hive) { return hive.record.part; });
    return chosen;
}

std::vector<Refusal> refusalsOfUndo(const Chosen& chosen, const std::string& stamp, bool force) {
    std::vector<Refusal> refusals;
    const auto refuse = [&](RefusalKind kind, const std::string& what) {
        refusals.push_back(refusal(kind, {}, what));
    };
    if (chosen.unfinished) {
        refuse(RefusalKind::Unfinished, "The cleaning " + stamp + " was not finished");
    } else if (chosen.hives.empty() && chosen.undone) {
        refuse(RefusalKind::AlreadyUndone, "The cleaning " + stamp + " is undone");
    } else if (chosen.hives.empty()) {
        refuse(RefusalKind::UnknownStamp, "There is no cleaning \"" + stamp + "\" that could be undone");
    }
    for (const RecordedHive& hive : chosen.hives) {
        const bool forced = force || hive.record.forced;
        addHiveRefusals(hive, forced && (force || hive.record.state != CleaningState::Undoing), refusals);
    }
    return refusals;
}

void markAll(std::vector<RecordedHive>& hives) {
    for (auto& [folder, record] : hives) {
        const bool changed = wasChanged(*folder, record);
        const bool goesOn = record.state == CleaningState::Undoing;
        // What one that goes on has kept is not what there is now.
        if (goesOn && changed) removeAsides(*folder, record);
        if (!goesOn || changed)
            record.present = folder->has(record.hive) ? printOf(folder->read(record.hive)) : FilePrint{};
        record.forced = record.forced || changed;
        record.state = CleaningState::Undoing;
        storeRecord(*folder, record);
    }
}

ListedHive describe(const HostFolder& folder, const CleaningRecord& record) {
    ListedHive hive;
    hive.path = folder.pathOf(record.hive);
    hive.copy = folder.pathOf(record.hiveCopy());
    hive.state = record.state;
    hive.removed = record.removed;
    hive.keys = record.keys;
    hive.copiesWhole = copiesAreWhole(folder, record);
    hive.changedSince = hasSomethingToPutBack(record, true) && wasChanged(folder, record);
    return hive;
}

}  // namespace

bool ListedCleaning::canBeUndone() const {
    const auto can = [](const ListedHive& hive) {
        return (hive.state == CleaningState::Done || hive.state == CleaningState::Undoing) &&
               hive.copiesWhole && !hive.changedSince;
    };
    const auto isOver = [](const ListedHive& hive) { return hive.state == CleaningState::Undone; };
    return std::ranges::any_of(hives, can) &&
           std::ranges::all_of(hives, [&](const ListedHive& hive) { return can(hive) || isOver(hive); });
}

ListedCleanings listCleanings(HostFiles& files, std::span<const std::string> folders) {
    HostFolders opened(files);
    for (const std::string& path : folders) static_cast<void>(opened.at(path));
    ListedCleanings list;
    for (const auto& folder : opened.all()) {
        const FoundRecords found = findRecords(*folder);
        for (const std::string& name : found.unreadable) list.unreadable.push_back(folder->pathOf(name));
        for (const CleaningRecord& record : found.records) {
            auto cleaning = std::ranges::find(list.cleanings, record.stamp, &ListedCleaning::stamp);
            if (cleaning == list.cleanings.end()) {
                list.cleanings.push_back({record.stamp, record.parts, {}});
                cleaning = list.cleanings.end() - 1;
            }
            cleaning->hives.push_back(describe(*folder, record));
        }
    }
    std::ranges::sort(list.cleanings, {}, &ListedCleaning::stamp);
    return list;
}

CleaningResult undoRecorded(HostFolders& folders, const std::string& stamp, bool force,
                            const CleaningProgress& progress) {
    CleaningResult result;
    Chosen chosen = choose(folders, stamp, force);
    result.refusals = refusalsOfUndo(chosen, stamp, force);
    result.state = CleaningResult::State::Refused;
    if (!result.refusals.empty()) return result;
    result.state = CleaningResult::State::Unfinished;
    result.problem = problemOf([&] {
        markAll(chosen.hives);
        for (auto& [folder, record] : chosen.hives) {
            putBack(*folder, record, progress);
            const std::string aside = record.forced ? folder->pathOf(record.asideOf(record.hive)) : "";
            result.hives.push_back(
                {folder->pathOf(record.hive), record.removed, aside, {}, folder->pathOf(record.list())});
        }
        result.state = CleaningResult::State::Done;
    });
    return result;
}

CleaningResult undoCleaning(HostFiles& files, std::span<const std::string> folders, const std::string& stamp,
                            const DiskState& disk, const CleaningWords& words, bool force,
                            const CleaningProgress& progress) {
    CleaningResult result;
    addDiskStateRefusals(disk, words, result.refusals);
    HostFolders opened(files);
    std::string problem = problemOf([&] {
        if (result.refusals.empty() && openAndLock(opened, folders, result.refusals))
            result = undoRecorded(opened, stamp, force, progress);
    });
    if (!result.refusals.empty()) result.state = CleaningResult::State::Refused;
    if (!problem.empty()) {
        result.state = CleaningResult::State::Unfinished;
        result.problem = std::move(problem);
    }
    return result;
}

}  // namespace bromvale::offline

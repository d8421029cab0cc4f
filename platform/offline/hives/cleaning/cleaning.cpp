#include "platform/offline/hives/cleaning/cleaning.h"

#include <algorithm>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/cleaning/work.h"
#include "platform/offline/hives/comparison.h"
#include "platform/offline/hives/deletion.h"

namespace bromvale::offline {
namespace {

void tell(const CleaningProgress& progress, const std::string& path, const std::string& step) {
    if (progress) progress(path, step);
}

void requireWhole(HiveBytes hive, const std::string& which) {
    const HiveCheck check = checkHive(hive);
    if (check.whole()) return;
    throw CleaningStop("The strict check of the " + which + " hive finds " +
                       std::to_string(check.faultCount) +
                       " faults: " + (check.faults.empty() ? "" : check.faults.front().what));
}

void requireHeld(const HostFolder& folder, const std::string& name, const FilePrint& print) {
    if (!folder.holds(name, print))
        throw CleaningStop("The file \"" + folder.pathOf(name) + "\" is not what was written into it");
}

void makeCopies(HiveWork& work) {
    HostFolder& folder = *work.folder;
    const CleaningRecord& record = work.record;
    folder.create(record.hiveCopy(), work.bytes, record.hive, true);
    for (std::size_t i = 0; i < record.logs.size(); ++i) {
        const std::string& log = record.logs[i].name;
        folder.create(record.copyOf(log), work.logBytes[i], log, true);
    }
    if (!work.order->completeCopy.empty()) folder.create(record.completeCopy(), work.order->completeCopy);
    folder.sync();
    requireHeld(folder, record.hiveCopy(), record.old);
    for (const RecordedLog& log : record.logs) requireHeld(folder, record.copyOf(log.name), log.print);
}

std::string describe(const Replay& replay) {
    if (replay.state != Replay::State::Replayed) return "The hive is clean";
    return std::to_string(replay.entries) + " entries of " + replay.from + " replayed" +
           (replay.problem.empty() ? "" : "; " + replay.problem);
}

// Of what lies on the disk now, not of what was meant to.
void prove(HiveWork& work, const std::vector<Cell>& gone) {
    const HostFolder& folder = *work.folder;
    const std::string before = folder.read(work.record.replayedHive());
    const std::string after = folder.read(work.record.newHive());
    requireWhole(HiveBytes(before), "replayed");
    requireWhole(HiveBytes(after), "new");
    if (printOf(before) != work.record.replayed || printOf(after) != work.record.fresh)
        throw CleaningStop("The files that were written do not hold what was written into them");
    const Hive old{HiveBytes(before)};
    if (const auto difference = differenceOfTrees(old, Hive{HiveBytes(after)}, gone))
        throw CleaningStop("The new hive is not the old one without the keys: " + *difference);
    const std::string path = folder.pathOf(work.record.newHive());
    if (const auto difference = differenceForSecondReader(path, old, gone))
        throw CleaningStop("For the second reader the new hive is not the old one without the keys: " +
                           *difference);
}

void describeResult(const std::vector<HiveWork>& hives, CleaningResult& result) {
    for (const HiveWork& work : hives) {
        const HostFolder& folder = *work.folder;
        const bool copied = !work.order->completeCopy.empty();
        result.hives.push_back({work.order->path, work.record.removed, folder.pathOf(work.record.hiveCopy()),
                                copied ? folder.pathOf(work.record.completeCopy()) : std::string(),
                                folder.pathOf(work.record.list())});
    }
}

void makeAll(std::vector<HiveWork>& hives, const CleaningProgress& progress) {
    for (HiveWork& work : hives) makeNewHive(work, progress);
    for (const HiveWork& work : hives) {
        if (!isOldState(*work.folder, work.record))
            throw CleaningStop("The hive \"" + work.order->path +
                               "\" or one of its logs was changed by another program meanwhile");
    }
}

}  // namespace

void makeNewHive(HiveWork& work, const CleaningProgress& progress) {
    HostFolder& folder = *work.folder;
    CleaningRecord& record = work.record;
    storeRecord(folder, record);
    makeCopies(work);
    tell(progress, work.order->path, "Copied to " + folder.pathOf(record.hiveCopy()));

    record.replayed = printOf(work.image.bytes().all());
    folder.create(record.replayedHive(), work.image.bytes().all(), record.hive);
    tell(progress, work.order->path, describe(work.replay));

    std::vector<Cell> gone;
    for (const AnnouncedKey& key : work.order->keys) gone.push_back(key.cell);
    record.removed = deleteKeys(work.image, gone);
    record.fresh = printOf(work.image.bytes().all());
    folder.create(record.newHive(), work.image.bytes().all(), record.hive);
    tell(progress, work.order->path, std::to_string(record.removed) + " keys taken out");

    prove(work, gone);
    folder.remove(record.replayedHive());
    record.state = CleaningState::Ready;
    storeRecord(folder, record);
    tell(progress, work.order->path, "Proved by two readers");
    work.image = HiveImage();
}

CleaningResult cleanHives(HostFiles& files, const Cleaning& cleaning, const CleaningProgress& progress) {
    CleaningResult result;
    CleaningWork work = prepareCleaning(files, cleaning);
    result.refusals = std::move(work.refusals);
    if (!result.refusals.empty()) {
        result.state = CleaningResult::State::Refused;
        return result;
    }
    if (work.hives.empty()) return result;
    bool replacing = false;
    result.problem = problemOf([&] {
        makeAll(work.hives, progress);
        replacing = true;
        for (HiveWork& hive : work.hives) replaceHive(*hive.folder, hive.record, progress);
    });
    if (result.problem.empty()) {
        result.state = CleaningResult::State::Done;
        describeResult(work.hives, result);
        return result;
    }
    result.state = CleaningResult::State::Unfinished;
    // Once a hive may have been replaced only a fresh look tells what is there, after whatever is wrong with
    // the disk was mended.
    if (replacing) return result;
    const std::string again = problemOf([&] {
        for (HiveWork& hive : work.hives) takeBack(*hive.folder, hive.record, progress);
        result.state = CleaningResult::State::TakenBack;
    });
    if (!again.empty()) result.problem += "; taking back was stopped as well: " + again;
    return result;
}

}  // namespace bromvale::offline

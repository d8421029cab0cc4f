// What is asked before the first byte is written.
#include <algorithm>
#include <cctype>
#include <map>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/cleaning/work.h"
#include "platform/offline/hives/comparison.h"
#include "platform/offline/hives/deletion.h"
#include "platform/offline/hives/hive.h"

namespace bromvale::offline {
namespace {

// Lists, and what the folders themselves take.
constexpr std::uint64_t kReserve = 1u << 20;

bool endsWith(std::string_view name, std::string_view end) {
    return name.size() >= end.size() && sameHostName(name.substr(name.size() - end.size()), end);
}

std::string withCause(std::string what, const std::string& cause) {
    return cause.empty() ? std::move(what) : std::move(what) + ": " + cause;
}

void addRecordRefusals(const HiveWork& work, std::vector<Refusal>& refusals) {
    const HostFolder& folder = *work.folder;
    std::vector<std::string> copies{work.record.hiveCopy()};
    for (const LogToClean& log : work.order->logs)
        copies.push_back(work.record.copyOf(splitPath(log.path).second));
    const auto isOurs = [&](const std::string& name) {
        return std::ranges::any_of(
            copies, [&](const std::string& copy) { return name == copy || name.starts_with(copy + "."); });
    };
    const std::vector<std::string> names = folder.names();
    if (const auto used = std::ranges::find_if(names, isOurs); used != names.end()) {
        refusals.push_back(refusal(RefusalKind::StampUsed, folder.pathOf(*used),
                                   "There is a cleaning of this hive with the same stamp"));
    }
    const FoundRecords found = findRecords(folder);
    for (const CleaningRecord& record : found.records) {
        if (record.unfinished())
            refusals.push_back(refusal(RefusalKind::Unfinished, folder.pathOf(record.list()),
                                       "The cleaning " + record.stamp + " of " + record.hive +
                                           " was not finished (" + std::string(nameOfState(record.state)) +
                                           ")"));
    }
}

void addLogRefusals(const HiveWork& work, std::vector<Refusal>& refusals) {
    std::vector<std::string> beside = logsBeside(*work.folder, work.record.hive);
    for (const LogToClean& log : work.order->logs) {
        const auto [folder, name] = splitPath(log.path);
        if (folder != splitPath(work.order->path).first) {
            refusals.push_back(
                refusal(RefusalKind::LogElsewhere, log.path, "The log lies in another folder than its hive"));
            continue;
        }
        addOwnershipRefusals(*work.folder, name, refusals);
        std::erase(beside, name);
    }
    for (const std::string& name : beside) {
        refusals.push_back(refusal(RefusalKind::LogNotGiven, work.folder->pathOf(name),
                                   "There is a log beside the hive that was not looked at"));
    }
}

bool isAllZero(std::string_view bytes) {
    return bytes.find_first_not_of('\0') == std::string_view::npos;
}

// The files that the kernel's transactions of this hive keep beside it.
void addTransactionRefusals(const HiveWork& work, const Cleaning& cleaning, std::vector<Refusal>& refusals) {
    const BaseBlock base = readBaseBlock(work.image.bytes());
    if ((base.flags & base_block::kFlagTransactions) == 0 || cleaning.words.loseTransactions) return;
    const std::string begin = work.record.hive + "{";
    for (const std::string& name : work.folder->names()) {
        if (!endsWith(name, ".regtrans-ms") || !sameHostName(name.substr(0, begin.size()), begin)) continue;
        if (isAllZero(work.folder->read(name))) continue;
        refusals.push_back(refusal(RefusalKind::Transactions, work.folder->pathOf(name),
                                   "The hive expects transactions, and a file of them is not empty"));
        return;
    }
}

void addKeyRefusals(const HiveWork& work, std::vector<Refusal>& refusals) {
    for (const AnnouncedKey& key : work.order->keys) {
        std::optional<std::string> why;
        try {
            why = whyUndeletable(work.image.bytes(), key.cell);
        } catch (const HiveDamage& damage) {
            why = damage.what();
        }
        if (why) {
            refusals.push_back(refusal(RefusalKind::KeyStays, work.order->path,
                                       "The key \"" + key.path + "\" can't be deleted: " + *why));
        }
    }
}

// False where it is not what was shown.
bool readFile(const HiveWork& work, const std::string& name, const FilePrint& shown, std::string& bytes,
              std::vector<Refusal>& refusals) {
    bytes = work.folder->read(name);
    if (printOf(bytes) == shown) return true;
    refusals.push_back(refusal(RefusalKind::ChangedSinceShown, work.folder->pathOf(name),
                               "The file was changed since the keys were chosen"));
    return false;
}

bool readAll(HiveWork& work, std::vector<Refusal>& refusals) {
    bool same = readFile(work, work.record.hive, work.order->shown, work.bytes, refusals);
    for (const LogToClean& log : work.order->logs) {
        const std::string name = splitPath(log.path).second;
        same = readFile(work, name, log.shown, work.logBytes.emplace_back(), refusals) && same;
        work.record.logs.push_back({name, printOf(work.logBytes.back())});
    }
    work.record.old = printOf(work.bytes);
    return same;
}

bool replay(HiveWork& work, std::vector<Refusal>& refusals) {
    work.image = HiveImage(work.bytes);
    std::vector<HiveLog> logs;
    for (std::size_t i = 0; i < work.logBytes.size(); ++i)
        logs.push_back({work.order->logs[i].name, HiveBytes(work.logBytes[i])});
    work.replay = replayLogs(work.image, logs);
    if (work.replay.state != Replay::State::NoUsableLog) return true;
    refusals.push_back(refusal(RefusalKind::DirtyWithoutLogs, work.order->path,
                               withCause("The hive is dirty, and no log fits it", work.replay.problem)));
    return false;
}

}  // namespace

void addDiskStateRefusals(const DiskState& disk, const CleaningWords& words, std::vector<Refusal>& refusals) {
    const auto refuse = [&](RefusalKind kind, std::string_view what) {
        refusals.push_back(refusal(kind, {}, what));
    };
    if (disk.hibernated)
        refuse(RefusalKind::Hibernated, "This Windows is hibernated, or was shut down for a fast start");
    if (disk.hibernationDoubtful && !words.notHibernated)
        refuse(RefusalKind::HibernationDoubtful, "Whether this Windows is hibernated can't be told");
}

void addFolderRefusals(const HostFolder& folder, std::vector<Refusal>& refusals) {
    if (folder.files().space(folder.handle()).readOnly) {
        refusals.push_back(refusal(RefusalKind::ReadOnly, folder.path(), "The disk is mounted read-only"));
    } else if (!folder.files().mayWrite(folder.handle())) {
        refusals.push_back(
            refusal(RefusalKind::NotWritable, folder.path(), "The folder can't be written to"));
    }
}

void addOwnershipRefusals(const HostFolder& folder, const std::string& name, std::vector<Refusal>& refusals) {
    const auto refuse = [&](RefusalKind kind, std::string_view what) {
        refusals.push_back(refusal(kind, folder.pathOf(name), what));
    };
    const std::optional<struct stat> state = folder.state(name);
    if (!state) return refuse(RefusalKind::Unreadable, "The file is not there");
    if (S_ISLNK(state->st_mode)) return refuse(RefusalKind::NotAFile, "The file is a symbolic link");
    if (!S_ISREG(state->st_mode)) return refuse(RefusalKind::NotAFile, "This is no plain file");
    HostFiles& files = folder.files();
    // ntfs-3g counts the short name of NTFS as one more.
    const bool shortName =
        state->st_nlink > 1 &&
        !files.attribute(files.openFile(folder.handle(), name), "system.ntfs_dos_name").value_or("").empty();
    if (state->st_nlink > (shortName ? 2U : 1U)) refuse(RefusalKind::HardLinked, "The file has other names");
    if (files.user != 0 && state->st_uid != files.user)
        refuse(RefusalKind::ForeignOwner, "The file belongs to somebody else");
}

void addFileRefusals(HiveWork& work, std::vector<Refusal>& refusals) {
    if (work.order->mandatoryProfile || endsWith(work.record.hive, ".MAN")) {
        refusals.push_back(refusal(RefusalKind::MandatoryProfile, work.order->path,
                                   "The hive is that of a mandatory profile"));
    }
    addFolderRefusals(*work.folder, refusals);
    addOwnershipRefusals(*work.folder, work.record.hive, refusals);
    addLogRefusals(work, refusals);
    if (isStamp(work.record.stamp)) addRecordRefusals(work, refusals);
}

void addContentRefusals(HiveWork& work, const Cleaning& cleaning, std::vector<Refusal>& refusals) {
    if (!readAll(work, refusals) || !replay(work, refusals)) return;
    const HiveCheck check = checkHive(work.image.bytes());
    if (!check.whole()) {
        refusals.push_back(
            refusal(RefusalKind::Damaged, work.order->path,
                    withCause("The strict check finds " + std::to_string(check.faultCount) + " faults",
                              check.faults.empty() ? "" : check.faults.front().what)));
        return;
    }
    addKeyRefusals(work, refusals);
    addTransactionRefusals(work, cleaning, refusals);
}

void addSpaceRefusals(const std::vector<HiveWork>& hives, std::vector<Refusal>& refusals) {
    struct Need {
        const HostFolder* folder = nullptr;
        std::uint64_t bytes = kReserve;
    };
    std::map<dev_t, Need> needs;
    for (const HiveWork& work : hives) {
        Need& need = needs[work.folder->device()];
        need.folder = work.folder;
        need.bytes += work.bytes.size() + 2 * work.image.size() + work.order->completeCopy.size();
        for (const std::string& log : work.logBytes) need.bytes += log.size();
    }
    for (const auto& [device, need] : needs) {
        const std::uint64_t free = need.folder->files().space(need.folder->handle()).free;
        if (free >= need.bytes) continue;
        refusals.push_back(refusal(RefusalKind::NoSpace, need.folder->path(),
                                   "There are " + std::to_string(free) + " bytes free, and " +
                                       std::to_string(need.bytes) + " are needed"));
    }
}

namespace {

// The hives that have something to do, each in its folder.
void openHives(const Cleaning& cleaning, CleaningWork& work) {
    for (const HiveToClean& order : cleaning.hives) {
        if (order.keys.empty()) continue;
        HiveWork hive;
        hive.order = &order;
        hive.record.stamp = cleaning.stamp;
        hive.record.hive = splitPath(order.path).second;
        hive.record.part = work.hives.size() + 1;
        for (const AnnouncedKey& key : order.keys) hive.record.keys.push_back(key.path);
        const std::string problem =
            problemOf([&] { hive.folder = &work.folders.at(splitPath(order.path).first); });
        if (!problem.empty()) {
            work.refusals.push_back(refusal(RefusalKind::Unreadable, order.path, problem));
            continue;
        }
        const bool twice = std::ranges::any_of(work.hives, [&](const HiveWork& other) {
            return other.folder == hive.folder && sameHostName(other.record.hive, hive.record.hive);
        });
        if (twice)
            work.refusals.push_back(
                refusal(RefusalKind::SameHiveTwice, order.path, "The hive is named twice"));
        work.hives.push_back(std::move(hive));
    }
    for (HiveWork& hive : work.hives) hive.record.parts = work.hives.size();
}

void askOfHives(const Cleaning& cleaning, CleaningWork& work) {
    for (HiveWork& hive : work.hives) {
        const std::string problem = problemOf([&] {
            const std::size_t before = work.refusals.size();
            addFileRefusals(hive, work.refusals);
            if (work.refusals.size() == before) addContentRefusals(hive, cleaning, work.refusals);
        });
        if (!problem.empty())
            work.refusals.push_back(refusal(RefusalKind::Unreadable, hive.order->path, problem));
    }
}

}  // namespace

CleaningWork prepareCleaning(HostFiles& files, const Cleaning& cleaning) {
    CleaningWork work(files);
    openHives(cleaning, work);
    if (work.hives.empty() && work.refusals.empty()) return work;
    if (!isStamp(cleaning.stamp))
        work.refusals.push_back(
            refusal(RefusalKind::BadStamp, {}, "The stamp can't be part of a file's name"));
    if (!hasSecondReader())
        work.refusals.push_back(
            refusal(RefusalKind::NoSecondReader, {}, "The program was built without libhivex"));
    addDiskStateRefusals(cleaning.disk, cleaning.words, work.refusals);
    const std::string problem = problemOf([&] {
        if (const HostFolder* busy = work.folders.lockAll()) {
            work.refusals.push_back(refusal(RefusalKind::Busy, busy->path(),
                                            "Another cleaning or undo is at work in the folder"));
            return;
        }
        askOfHives(cleaning, work);
        if (work.refusals.empty()) addSpaceRefusals(work.hives, work.refusals);
    });
    if (!problem.empty()) work.refusals.push_back(refusal(RefusalKind::Unreadable, {}, problem));
    return work;
}

std::vector<Refusal> refusalsOf(HostFiles& files, const Cleaning& cleaning) {
    return prepareCleaning(files, cleaning).refusals;
}

}  // namespace bromvale::offline

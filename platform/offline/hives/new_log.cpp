// The log since Windows 8.1: entries with numbers and hashes, each with the pages that it changes. A hive has
// two, which are written in turns.
#include <algorithm>
#include <optional>

#include "platform/offline/hives/log_files.h"

namespace bromvale::offline {
namespace {

struct LogEntry {
    HiveBytes bytes;
    LastEntry says;
    std::uint32_t pageCount = 0;
};

// Sequence numbers begin anew behind the last.
bool isEarlier(std::uint32_t left, std::uint32_t right) {
    return static_cast<std::int32_t>(left - right) < 0;
}

bool isSignature(HiveBytes log, std::size_t at) {
    return log.holds(at, log_entry::kPages) && log.text(at, 4) == log_entry::kSignature;
}

bool headerHolds(HiveBytes entry) {
    return marvin32(entry.text(0, log_entry::kHash2)) == entry.u64(log_entry::kHash2);
}

// For each page its offset in the bins and its bytes.
template <class Receiver>
void forEachPage(const LogEntry& entry, Receiver receive) {
    namespace at = log_entry;
    const HiveBytes pairs = entry.bytes.part(at::kPages, std::size_t{entry.pageCount} * 8);
    std::size_t content = at::kPages + pairs.size();
    for (std::size_t pair = 0; pair < pairs.size(); pair += 8) {
        const std::uint32_t size = pairs.u32(pair + 4);
        receive(pairs.u32(pair), entry.bytes.text(content, size));
        content += size;
    }
}

// HiveDamage where something of it isn't right.
LogEntry readEntry(HiveBytes log, std::size_t place) {
    namespace at = log_entry;
    const HiveBytes header = log.part(place, at::kPages);
    if (header.text(0, 4) != at::kSignature) throw HiveDamage(place, "has no signature");
    if (!headerHolds(header)) throw HiveDamage(place, "has a header whose hash is wrong");
    const std::uint32_t size = header.u32(at::kSize);
    if (size < kSectorSize || size % kSectorSize != 0) throw HiveDamage(place, "has an impossible length");
    LogEntry entry{log.part(place, size), {}, 0};
    if (marvin32(entry.bytes.all().substr(at::kPages)) != header.u64(at::kHash1))
        throw HiveDamage(place, "has pages whose hash is wrong");
    entry.says = {header.u32(at::kSequence), header.u32(at::kBinsSize), header.u32(at::kFlags)};
    entry.pageCount = header.u32(at::kPageCount);
    if (!possibleBinsSize(entry.says.binsSize)) throw HiveDamage(place, "names an impossible size of bins");
    forEachPage(entry, [&](std::uint32_t offset, std::string_view bytes) {
        if (bytes.size() > entry.says.binsSize || offset > entry.says.binsSize - bytes.size())
            throw HiveDamage(place, "has a page behind the bins");
    });
    return entry;
}

bool hasLaterEntry(HiveBytes log, std::size_t place, std::uint32_t due) {
    for (; log.holds(place, log_entry::kPages); place += kSectorSize) {
        if (!isSignature(log, place) || isEarlier(log.u32(place + log_entry::kSequence), due)) continue;
        if (headerHolds(log.part(place, log_entry::kPages))) return true;
    }
    return false;
}

// Behind a log's last entry lie zeros, or what an earlier use of the file left there. So the end is an
// ordinary one unless the file is cut, the entry that is due is there and damaged, or a later one is there.
bool isOrdinaryEnd(HiveBytes log, std::size_t place, std::uint32_t due) {
    namespace at = log_entry;
    if (place == log.size()) return true;
    if (!log.holds(place, kSectorSize)) return false;
    if (isSignature(log, place) && !headerHolds(log.part(place, at::kPages))) return false;
    if (log.u32(place + at::kSize) != 0 && log.u32(place + at::kSequence) == due) return false;
    return !hasLaterEntry(log, place, due);
}

// Adds the log's entries up to the first that is bad or has another number than the one that is due.
// What the matter was, or nothing.
std::string addEntries(const UsableLog& log, std::vector<LogEntry>& entries) {
    std::uint32_t due = log.number();
    std::string why;
    std::size_t place = kSectorSize;
    try {
        for (; place < log.bytes.size(); place += entries.back().bytes.size(), ++due) {
            const LogEntry entry = readEntry(log.bytes, place);
            if (entry.says.sequence != due) {
                why = "has the number " + std::to_string(entry.says.sequence);
                break;
            }
            entries.push_back(entry);
        }
    } catch (const HiveDamage& damage) {
        why = damage.what();
    }
    if (isOrdinaryEnd(log.bytes, place, due)) return {};
    return textOf(log.name) + " ends early: what should be entry " + std::to_string(due) + " " + why;
}

// Those that don't lie before what the hive already holds, the earlier one first; where the hive's base block
// is wrong nobody knows what it holds, and the later one alone counts.
std::vector<UsableLog> inOrder(std::vector<UsableLog> logs, const BaseBlock* base, std::string& problem) {
    std::ranges::stable_sort(logs, isEarlier, &UsableLog::number);
    if (base == nullptr) {
        const std::uint32_t latest = logs.back().number();
        const auto first = std::ranges::find(logs, latest, &UsableLog::number);
        return {*first};
    }
    std::erase_if(logs, [&](const UsableLog& log) {
        const bool stale = isEarlier(log.number(), base->secondSequence);
        if (stale) {
            addProblem(problem, textOf(log.name) + " begins with " + std::to_string(log.number()) +
                                    ", and the hive already has " + std::to_string(base->secondSequence));
        }
        return stale;
    });
    return logs;
}

// The entries of all logs that follow each other, and in `replay` which these are and what stopped them.
std::vector<LogEntry> collectEntries(const std::vector<UsableLog>& logs, Replay& replay) {
    std::vector<LogEntry> entries;
    std::optional<std::uint32_t> due;
    for (const UsableLog& log : logs) {
        if (due && log.number() != *due) {
            addProblem(replay.problem, textOf(log.name) + " begins with " + std::to_string(log.number()) +
                                           " and not with " + std::to_string(*due) + ", so it is not used");
            continue;
        }
        const std::size_t before = entries.size();
        const std::string stopped = addEntries(log, entries);
        const std::size_t added = entries.size() - before;
        if (!stopped.empty()) addProblem(replay.problem, stopped);
        if (added > 0) replay.from += (replay.from.empty() ? "" : " and ") + textOf(log.name);
        due = log.number() + static_cast<std::uint32_t>(added);
    }
    return entries;
}

}  // namespace

void replayNewLogs(HiveImage& image, const BaseBlock* base, const std::vector<UsableLog>& logs,
                   Replay& replay) {
    std::string stale;
    const std::vector<UsableLog> ordered = inOrder(logs, base, stale);
    const std::vector<LogEntry> entries = collectEntries(ordered, replay);
    if (entries.empty()) {
        if (!stale.empty()) addProblem(replay.problem, stale);
        if (!ordered.empty()) addProblem(replay.problem, "no log has an entry that fits");
        return;
    }
    std::uint32_t largest = 0;
    for (const LogEntry& entry : entries) largest = std::max(largest, entry.says.binsSize);
    makeRoom(image, largest);
    if (base == nullptr) takeBaseBlock(image, ordered.front());
    for (const LogEntry& entry : entries) {
        forEachPage(entry, [&image](std::uint32_t offset, std::string_view bytes) {
            image.write(kBinsStart + offset, bytes);
        });
    }
    finishBaseBlock(image, entries.back().says);
    replay.state = Replay::State::Replayed;
    replay.entries = entries.size();
    replay.firstSequence = entries.front().says.sequence;
    replay.lastSequence = entries.back().says.sequence;
}

}  // namespace bromvale::offline

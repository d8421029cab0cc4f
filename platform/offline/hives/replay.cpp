#include "platform/offline/hives/replay.h"

#include <algorithm>
#include <new>
#include <optional>

#include "platform/offline/hives/log_files.h"

namespace bromvale::offline {
namespace {

constexpr LogName kOrder[] = {LogName::Log1, LogName::Log2, LogName::Log};
constexpr std::uint32_t kLargestBins = 0x7FFFF000u;

bool knownVersion(const BaseBlock& base) {
    return base.major == 1 && base.minor >= 3 && base.minor <= 6;
}

bool isTypeOfLog(std::uint32_t type) {
    return type == base_block::kTypeOldLog || type == base_block::kTypeOlderLog ||
           type == base_block::kTypeNewLog;
}

std::optional<std::string> whyUnusable(const BaseBlock& base) {
    if (!base.checksumRight) return "has a wrong checksum in its first sector";
    if (!isTypeOfLog(base.type)) return "is no log";
    if (base.firstSequence != base.secondSequence) return "was being written itself";
    if (!knownVersion(base)) return "is that of a hive whose version is none of 1.3 to 1.6";
    return std::nullopt;
}

std::optional<UsableLog> usableLog(const HiveLog& log, std::string& problem) {
    std::string why = "is empty";
    if (log.bytes.size() > 0) {
        try {
            UsableLog usable{log.name, log.bytes, readBaseBlock(log.bytes)};
            const std::optional<std::string> found = whyUnusable(usable.base);
            if (!found) return usable;
            why = *found;
        } catch (const HiveDamage&) {
            why = "has no first sector of a log";
        }
    }
    addProblem(problem, textOf(log.name) + " " + why);
    return std::nullopt;
}

// LOG beside the other two is a leftover of an older Windows, and so is a log of the old format beside one of
// the new.
std::vector<UsableLog> usableLogs(std::span<const HiveLog> logs, std::string& problem) {
    std::vector<UsableLog> usable;
    for (const LogName name : kOrder) {
        const auto log =
            std::ranges::find_if(logs, [name](const HiveLog& given) { return given.name == name; });
        if (log == logs.end()) continue;
        if (name == LogName::Log && !usable.empty()) {
            addProblem(problem, "LOG is a leftover beside the others");
        } else if (const std::optional<UsableLog> found = usableLog(*log, problem)) {
            usable.push_back(*found);
        }
    }
    if (std::ranges::any_of(usable, &UsableLog::isNew)) {
        std::erase_if(usable, [&problem](const UsableLog& log) {
            if (!log.isNew())
                addProblem(problem, textOf(log.name) + " is of the old format, beside one of the new");
            return !log.isNew();
        });
    }
    if (logs.empty()) addProblem(problem, "there is no log");
    return usable;
}

// The hive's base block, or nothing where it is wrong.
std::optional<BaseBlock> rightBaseBlock(const HiveImage& image) {
    try {
        const BaseBlock base = readBaseBlock(image.bytes());
        if (base.checksumRight) return base;
    } catch (const HiveDamage&) {
    }
    return std::nullopt;
}

// What no log mends.
std::optional<std::string> whyBeyondHelp(const BaseBlock& base, const HiveImage& image) {
    if (base.type != base_block::kTypeHive) return "the file is a log and no hive";
    if (!knownVersion(base)) return "the hive's version is none of 1.3 to 1.6";
    if (!image.bytes().holds(kBinsStart, base.binsSize))
        return "the hive's bins reach beyond the end of the file";
    return std::nullopt;
}

void replay(HiveImage& image, const BaseBlock* base, std::span<const HiveLog> logs, Replay& replay) {
    if (base != nullptr) {
        if (const std::optional<std::string> why = whyBeyondHelp(*base, image))
            return addProblem(replay.problem, *why);
    }
    std::string unusable;
    const std::vector<UsableLog> usable = usableLogs(logs, unusable);
    if (!usable.empty()) {
        (usable.front().isNew() ? replayNewLogs : replayOldLog)(image, base, usable, replay);
    }
    // That the other log is empty or a leftover is usual and worth no word where one was used.
    if (replay.state == Replay::State::NoUsableLog) {
        if (!unusable.empty()) addProblem(replay.problem, unusable);
    }
}

}  // namespace

std::string textOf(LogName name) {
    switch (name) {
        case LogName::Log1: return "LOG1";
        case LogName::Log2: return "LOG2";
        default: return "LOG";
    }
}

void addProblem(std::string& problem, const std::string& what) {
    if (!problem.empty()) problem += "; ";
    problem += what;
}

bool possibleBinsSize(std::uint32_t size) {
    return size > 0 && size % kPageSize == 0 && size <= kLargestBins;
}

void makeRoom(HiveImage& image, std::size_t binsSize) {
    if (image.size() < kBinsStart + binsSize) image.resize(kBinsStart + binsSize);
}

void takeBaseBlock(HiveImage& image, const UsableLog& log) {
    image.write(0, log.bytes.text(0, kSectorSize));
}

void finishBaseBlock(HiveImage& image, const LastEntry& last) {
    namespace at = base_block;
    const std::uint32_t flags = image.bytes().u32(at::kFlags);
    image.write(at::kFlags, (flags & ~at::kFlagTransactions) | (last.flags & at::kFlagTransactions));
    image.write(at::kFirstSequence, last.sequence);
    image.write(at::kSecondSequence, last.sequence);
    image.write(at::kBinsSize, last.binsSize);
    image.write(at::kType, at::kTypeHive);
    image.write(at::kChecksum, baseBlockChecksum(image.bytes()));
}

Replay replayLogs(HiveImage& image, std::span<const HiveLog> logs) {
    Replay result;
    const std::optional<BaseBlock> base = rightBaseBlock(image);
    if (base && !base->dirty()) return result;
    result.state = Replay::State::NoUsableLog;
    if (!base) addProblem(result.problem, "the hive's base block is damaged");
    try {
        replay(image, base ? &*base : nullptr, logs, result);
    } catch (const HiveDamage& damage) {
        addProblem(result.problem, damage.what());
    } catch (const std::bad_alloc&) {
        addProblem(result.problem, "there is too little memory for the hive as its log says it is");
    }
    return result;
}

}  // namespace bromvale::offline

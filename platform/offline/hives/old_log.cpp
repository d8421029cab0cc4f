// The log up to Windows 8: which sectors of the bins are to be replaced, and these. It has no hash, so what
// belongs to a hive is known by its time stamp alone, and of a log that is cut nothing is used.
#include <algorithm>
#include <bit>
#include <optional>

#include "platform/offline/hives/log_files.h"

namespace bromvale::offline {
namespace {

constexpr std::uint32_t kLargestClusteringFactor = 8;  // sectors of 4,096 bytes

struct OldLog {
    const UsableLog* log = nullptr;
    HiveBytes bitmap;  // the lowest bit of the first byte is the first sector of the bins
    HiveBytes sectors;

    [[nodiscard]] std::size_t count() const { return sectors.size() / kSectorSize; }
};

// HiveDamage where it isn't whole.
OldLog readOldLog(const UsableLog& log) {
    const std::uint32_t factor = log.base.clusteringFactor;
    if (factor == 0 || factor > kLargestClusteringFactor)
        throw HiveDamage(base_block::kClusteringFactor, "has an impossible size of sectors");
    if (!possibleBinsSize(log.base.binsSize))
        throw HiveDamage(base_block::kBinsSize, "names an impossible size of bins");
    const std::size_t sector = kSectorSize * factor;
    const std::size_t map = sector + old_log::kSignature.size();
    const std::size_t mapSize = log.base.binsSize / kSectorSize / 8;
    if (!log.bytes.holds(sector, old_log::kSignature.size() + mapSize))
        throw HiveDamage(sector, "is too short");
    if (log.bytes.text(sector, old_log::kSignature.size()) != old_log::kSignature)
        throw HiveDamage(sector, "says nothing of what has changed");
    OldLog read{&log, log.bytes.part(map, mapSize), {}};
    std::size_t count = 0;
    for (const char eight : read.bitmap.all())
        count += static_cast<std::size_t>(std::popcount(static_cast<unsigned char>(eight)));
    if (count == 0) throw HiveDamage(map, "names no sector that has changed");
    const std::size_t start = (map + mapSize + sector - 1) / sector * sector;
    if (!log.bytes.holds(start, count * kSectorSize)) throw HiveDamage(start, "is too short");
    read.sectors = log.bytes.part(start, count * kSectorSize);
    return read;
}

// The first that has the hive's time stamp and is whole.
std::optional<OldLog> matchingLog(const BaseBlock& base, const std::vector<UsableLog>& logs,
                                  std::string& problem) {
    std::string others;
    for (const UsableLog& log : logs) {
        if (log.base.lastWritten != base.lastWritten) {
            addProblem(others, textOf(log.name) + " has another time than the hive");
            continue;
        }
        try {
            return readOldLog(log);
        } catch (const HiveDamage& damage) {
            addProblem(problem, textOf(log.name) + " " + damage.what());
        }
    }
    if (!others.empty()) addProblem(problem, others);
    return std::nullopt;
}

// For a hive whose base block is wrong: the first bin repeats its time stamp.
std::optional<OldLog> latestLog(const HiveImage& image, const std::vector<UsableLog>& logs,
                                std::string& problem) {
    const UsableLog& latest =
        *std::ranges::max_element(logs, {}, [](const UsableLog& log) { return log.base.lastWritten; });
    const HiveBytes file = image.bytes();
    if (!file.holds(kBinsStart, bin::kHeaderSize) ||
        file.text(kBinsStart, bin::kSignature.size()) != bin::kSignature) {
        addProblem(problem, "the hive's first bin is damaged too");
        return std::nullopt;
    }
    if (latest.base.lastWritten < file.u64(kBinsStart + bin::kLastWritten)) {
        addProblem(problem, textOf(latest.name) + " is older than the hive");
        return std::nullopt;
    }
    try {
        return readOldLog(latest);
    } catch (const HiveDamage& damage) {
        addProblem(problem, textOf(latest.name) + " " + damage.what());
        return std::nullopt;
    }
}

void writeSectors(HiveImage& image, const OldLog& old) {
    std::size_t next = 0;
    for (std::size_t i = 0; i < old.bitmap.size() * 8; ++i) {
        if ((static_cast<unsigned char>(old.bitmap.all()[i / 8]) >> (i % 8) & 1) == 0) continue;
        image.write(kBinsStart + i * kSectorSize, old.sectors.text(next, kSectorSize));
        next += kSectorSize;
    }
}

}  // namespace

void replayOldLog(HiveImage& image, const BaseBlock* base, const std::vector<UsableLog>& logs,
                  Replay& replay) {
    std::string problem;
    const std::optional<OldLog> old =
        base != nullptr ? matchingLog(*base, logs, problem) : latestLog(image, logs, problem);
    if (!problem.empty()) addProblem(replay.problem, problem);
    if (!old) return;
    const UsableLog& log = *old->log;
    makeRoom(image, log.base.binsSize);
    if (base == nullptr) takeBaseBlock(image, log);
    writeSectors(image, *old);
    finishBaseBlock(image, {log.number(), log.base.binsSize, log.base.flags});
    replay.state = Replay::State::Replayed;
    replay.entries = old->count();
    replay.oldFormat = true;
    replay.from = textOf(log.name);
    replay.firstSequence = log.number();
    replay.lastSequence = log.number();
}

}  // namespace bromvale::offline

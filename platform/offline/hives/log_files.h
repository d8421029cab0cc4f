// What the parts of the replay share: the logs that can be used, and how a hive becomes what they say.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::offline {

// A log whose first sector is right: "regf", checksum, both sequence numbers the same.
struct UsableLog {
    LogName name = LogName::Log;
    HiveBytes bytes;
    BaseBlock base;

    [[nodiscard]] bool isNew() const { return base.type == base_block::kTypeNewLog; }
    [[nodiscard]] std::uint32_t number() const { return base.firstSequence; }
};

[[nodiscard]] std::string textOf(LogName name);
// Puts one more thing that is wrong behind the others.
void addProblem(std::string& problem, const std::string& what);

// Whether a hive may say of itself that its bins have this size: whole pages, and below the offsets whose top
// bit means keys that are in no file.
[[nodiscard]] bool possibleBinsSize(std::uint32_t size);

// Fill in `replay` and change the image, or neither: then `replay` has the problem alone. `base` is the
// hive's base block, or null where it is wrong. `logs` come in the order LOG1, LOG2 (or LOG alone), and all
// of them have the format.
void replayNewLogs(HiveImage& image, const BaseBlock* base, const std::vector<UsableLog>& logs,
                   Replay& replay);
void replayOldLog(HiveImage& image, const BaseBlock* base, const std::vector<UsableLog>& logs,
                  Replay& replay);

// The image holds bins of that size. Throws std::bad_alloc, and then nothing has changed.
void makeRoom(HiveImage& image, std::size_t binsSize);
// The log's first sector becomes that of the hive.
void takeBaseBlock(HiveImage& image, const UsableLog& log);
// The base block is that of a clean hive, as it was after the entry (of an old log: the log) with these
// numbers.
struct LastEntry {
    std::uint32_t sequence = 0;
    std::uint32_t binsSize = 0;
    std::uint32_t flags = 0;
};
void finishBaseBlock(HiveImage& image, const LastEntry& last);

}  // namespace bromvale::offline

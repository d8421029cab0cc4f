// The logs of a hive: what Windows had decided to write and not yet written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/offline/hives/bytes.h"
#include "platform/offline/hives/image.h"

namespace bromvale::offline {

enum class LogName { Log, Log1, Log2 };  // NAME.LOG, NAME.LOG1, NAME.LOG2

struct HiveLog {
    LogName name = LogName::Log;
    HiveBytes bytes;
};

struct Replay {
    enum class State {
        Clean,       // nothing to do: the logs of a clean hive are ignored, whatever they hold
        Replayed,    // the image is what Windows would have made of hive and logs
        NoUsableLog  // the hive is dirty, and no log fits: the image is as it was
    };
    State state = State::Clean;
    bool oldFormat = false;           // up to Windows 8: without entries
    std::size_t entries = 0;          // of a new log; sectors of an old one
    std::string from;                 // "LOG1", "LOG2 and LOG1": which, in the order of their use
    std::uint32_t firstSequence = 0;  // of the entries
    std::uint32_t lastSequence = 0;
    // What stopped it, or what is wrong with base block and logs (English); may stand beside Replayed.
    std::string problem;
};

// In memory. The order of the logs and what makes one usable are Windows' own; where an entry is bad the
// earlier ones hold. A hive that is too damaged for its base block to be read, and has no log to take one
// from, is NoUsableLog.
[[nodiscard]] Replay replayLogs(HiveImage& image, std::span<const HiveLog> logs);

// The hash of a log's entries: Marvin with 64 bits and the seed of the registry.
[[nodiscard]] std::uint64_t marvin32(std::string_view bytes);

}  // namespace bromvale::offline

// A hive of a disk as Windows would see it: mapped, with its logs replayed in memory.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/offline/hives/disk/disk.h"
#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"
#include "platform/offline/hives/replay.h"

namespace bromvale::offline {

struct OpenHive {
    HiveImage image;
    Replay replay;
    std::optional<Hive> hive;              // of the image; nothing where it can't be read
    std::string problem;                   // then why (English)
    std::vector<std::string> logProblems;  // logs that can't be read, each with why
};

[[nodiscard]] OpenHive openHive(const std::string& path, const std::vector<FoundLog>& logs);

// What a hive holds, by the keys below its root and the root's own name.
enum class HiveContent { Unknown, Software, System, User, UserClasses };
[[nodiscard]] HiveContent contentOf(const Hive& hive);

}  // namespace bromvale::offline

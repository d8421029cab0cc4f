// The files that a hive's logs are: the hive's own name and an end, in any case (ASCII).
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/offline/hives/replay.h"

namespace bromvale::offline {

inline constexpr std::array<std::pair<LogName, std::string_view>, 3> kLogEnds{
    {{LogName::Log, ".LOG"}, {LogName::Log1, ".LOG1"}, {LogName::Log2, ".LOG2"}}};

[[nodiscard]] bool sameHostName(std::string_view left, std::string_view right);
// By the end of the name alone; nothing where it is no log's.
[[nodiscard]] std::optional<LogName> logNameOf(std::string_view fileName);
// Which of this hive's logs has that name; nothing where none has.
[[nodiscard]] std::optional<LogName> logOfHive(std::string_view fileName, std::string_view hive);

}  // namespace bromvale::offline

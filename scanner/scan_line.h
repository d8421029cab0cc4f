#pragma once
#include <cstdint>
#include <string_view>

#include "core/log.h"

namespace bromvale {

// The parts of one collected entry, as views into its line and into fixed texts. One record serves a whole
// scan: a part that can't be taken from a line keeps what it had from the line before.
struct EntryParts {
    std::int32_t hive = 0;
    std::string_view hiveName;
    std::string_view key;  // with its closing "]", which the checks rely on
    std::string_view name;
    std::string_view value;

    // Each failing part is reported under `tags`. The line must outlive the parts.
    void take(std::string_view line, Tags tags);

  private:
    // Places of "[", "]" and "=".
    std::int32_t p1 = 0;
    std::int32_t p2 = 0;
    std::int32_t p3 = 0;
};

}  // namespace bromvale

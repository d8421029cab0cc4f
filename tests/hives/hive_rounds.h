// How often tests with chance in them repeat.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace bromvale::offline {

// `usual` in a quick run; as often as BROMVALE_HIVE_ROUNDS says where it is set, `full` at most.
inline std::uint32_t hiveRounds(std::uint32_t usual, std::uint32_t full = 0xFFFFFFFFu) {
    const char* const rounds = std::getenv("BROMVALE_HIVE_ROUNDS");
    if (rounds == nullptr) return usual;
    return std::min(static_cast<std::uint32_t>(std::strtoul(rounds, nullptr, 10)), full);
}

}  // namespace bromvale::offline

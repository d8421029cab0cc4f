#pragma once
#include <span>
#include <string_view>

namespace bromvale::proof {

// What an operation plausibly answers when it fails.
[[nodiscard]] std::span<const long> faultsOf(std::string_view operation);

// Whether the failed call leaves something open that would have been closed, or keeps open what the routine
// is known to leave open: a query that fails leaves its key open. A removal that fails leaves its undo file
// open whatever failed.
[[nodiscard]] bool mayLeak(std::string_view operation);

}  // namespace bromvale::proof

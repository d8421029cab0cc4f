#pragma once
#include <optional>

#include "platform/offline/reg_files/reg_file.h"

namespace bromvale::offline {

// The example machine: its registry, and its files where the drive lives in memory.
[[nodiscard]] std::optional<RegFileError> loadExample();

}  // namespace bromvale::offline

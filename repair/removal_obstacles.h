#pragma once
#include <cstdint>

#include "ui/scan_page.h"

namespace bromvale {

// Who wants the removal. Before one that a setting has started nobody may sit: no box waits for an answer
// then.
enum class WishedBy { User, Setting };

// Asked before a removal touches anything. False, with a word to the user, where no undo file can be written:
// nothing may be removed then. True, with a word that keys of the machine will stay, where the rights for
// them are missing.
[[nodiscard]] bool mayRemoveFaults(const ScanPage& page, WishedBy who);

// The same for a single key. False for one of the machine without the rights for it.
[[nodiscard]] bool mayRemoveKey(std::int32_t hive);

}  // namespace bromvale

#pragma once

namespace bromvale {

// Restarts Windows without asking running programs, and returns: the caller goes on until the system ends the
// process. Where it is refused nothing happens.
void RebootSystem();

// --- for tests: a part of the above ---

// The NT family (platform 2), not the 9x one.
[[nodiscard]] bool IsWinNT();

}  // namespace bromvale

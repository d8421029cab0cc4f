#pragma once

namespace bromvale {

// The NT family (platform 2), not the 9x one.
[[nodiscard]] bool IsWinNT();
// Asks for the right to shut down. All results are ignored and the token stays open.
void AdjustShutdownPrivilege();
// Restarts Windows without asking running programs, and returns: the caller goes on until the system ends the
// process. Where it is refused nothing happens.
void RebootSystem();

}  // namespace bromvale

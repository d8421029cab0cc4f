#pragma once
#include <cstdint>
#include <string_view>

#include "platform/shell.h"

namespace bromvale {

// Makes sure that the components are registered: asks the registry for each class, the machine's half first
// and then the user's, registers a file of the system folder whose class is in neither, reports a file that
// is missing too. Called once at each start, on both roads.
void CheckLibs();

// Loads the library at `Pfad` and calls its registration entry (`Registrieren` other than 0) or the one that
// takes it back, behind the waiting window, which stays. A library or an entry that is missing goes unnoticed
// by the user.
void RegisterServer(HWND window, std::string_view Pfad, std::int16_t Registrieren);

}  // namespace bromvale

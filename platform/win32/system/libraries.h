#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// From here on Windows looks for libraries in its system folder alone, where it knows how to: neither beside
// the program nor in the current folder, into which anybody may have put one. Called by the program's entry
// before anything is loaded.
void guardLibraries();

// Loads one of the system's libraries by its full path, whatever lies elsewhere under its name. Null where
// the system lacks it.
[[nodiscard]] HMODULE loadSystemLibrary(const char* name);

}  // namespace bromvale

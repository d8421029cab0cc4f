#pragma once

namespace bromvale {

// Called by the program's entry so that the linker takes this file's functions before those of the system
// library: what the C++ runtime asks for in wide characters is answered by functions that Windows 98 has.
void bindOldSystems();

}  // namespace bromvale

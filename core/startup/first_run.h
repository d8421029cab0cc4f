#pragma once

namespace bromvale {

// Shows the help once: the setting 1stRun becomes "0", the variable FirstRun keeps its value until the
// program ends.
void CheckFirstRun();

}  // namespace bromvale

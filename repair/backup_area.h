#pragma once

namespace bromvale {

// Removes undo files that are older than DelAfterDays. Called at a normal start while AutoRegFileDel is 1.
void AutoFileDel();

}  // namespace bromvale

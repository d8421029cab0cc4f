#include "repair/backup_area.h"

namespace bromvale {

// The removal of old undo files is not there yet: nothing is deleted, whatever AutoRegFileDel says.
void AutoFileDel() {}

}  // namespace bromvale

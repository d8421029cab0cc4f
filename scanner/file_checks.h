#pragma once
#include <string>
#include <string_view>

#include "scanner/entry_group.h"

namespace bromvale {

// Judges one entry (from 1) of the closing group: empty key, missing file, stale Uninstall entry. The first
// entry that comes to a decision ends the check of the whole group, since it empties it. `hiveName` is that
// of the entry that closed the group and goes into the rows. Failures are reported.
void CheckFile(std::string_view hiveName, int index, EntryGroup& group, RowSink& rows);

// What CheckFile takes a value's file to be: lower case but for the folders put in for variables, without
// quotes, from the drive letter on, cut behind the first ".exe", ".dll" and ".ocx". Failures are reported.
// Declared for tests.
void toFileReference(std::string_view value, std::string& reference);

}  // namespace bromvale

#pragma once

namespace bromvale {

// From here on the system shows no box "no disk in drive", nor any other of its own for a file that can't be
// reached: the call fails instead. A scan looks for files on drives of every kind, and its user would have to
// answer a box for each entry of an empty one. For the whole process; called by the program's entry, before
// anything looks at a drive. Programs that the process starts inherit it unless CreateProcessA is told
// otherwise.
void silenceDrives();

}  // namespace bromvale

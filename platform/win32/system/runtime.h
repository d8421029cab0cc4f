#pragma once

namespace bromvale {

// The 32-bit program computes with the old coprocessor, the only one that a Pentium has, and MinGW's start-up
// code sets that to 80 bits: shares would then be rounded to other texts than everywhere else. Sets it to the
// 53 bits of a double, for the calling thread. The program's first thread has it before any constructor runs;
// each thread that is started calls this first, since not every system hands out threads of this precision.
// Does nothing in the 64-bit program, which doesn't compute with it.
void useDoublePrecision();

// From here on the system shows no box "no disk in drive", nor any other of its own for a file that can't be
// reached: the call fails instead. A scan looks for files on drives of every kind, and its user would have to
// answer a box for each entry of an empty one. For the whole process; called by the program's entry, before
// anything looks at a drive. Programs that the process starts inherit it unless CreateProcessA is told
// otherwise.
void silenceDrives();

// Called by the program's entry so that the linker takes this file's functions before those of the system
// library: what the C++ runtime asks for in wide characters is answered by functions that Windows 98 has.
void bindOldSystems();

}  // namespace bromvale

#pragma once

namespace bromvale {

// The 32-bit program computes with the old coprocessor, the only one that a Pentium has, and MinGW's start-up
// code sets that to 80 bits: shares would then be rounded to other texts than everywhere else. Sets it to the
// 53 bits of a double, for the calling thread. The program's first thread has it before any constructor runs;
// each thread that is started calls this first, since not every system hands out threads of this precision.
// Does nothing in the 64-bit program, which doesn't compute with it.
void useDoublePrecision();

}  // namespace bromvale

#pragma once
// The test program's own operator new, which can fail once.
#include <vector>

namespace bromvale::proof {

// From now on each allocation is noted: true for one of the program's own, false for one that the machine
// beneath it (the offline provider) makes, whose memory is the system's.
void noteAllocations();
[[nodiscard]] std::vector<bool> notedAllocations();

// The allocation with this number from now on (0 is the next one) fails, once.
void failAllocation(unsigned long number);
// Nothing fails any more.
void letAllocationsWork();
// The failure came.
[[nodiscard]] bool allocationFailed();

}  // namespace bromvale::proof

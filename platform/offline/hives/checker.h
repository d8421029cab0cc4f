// Whether a hive is whole, to the last byte: as strict as Windows' own files are, so that what fails here is
// really damaged. Demanded before anything is written and of everything that was.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/offline/hives/bytes.h"

namespace bromvale::offline {

struct HiveFault {
    std::size_t place = 0;  // byte of the file
    std::string what;       // English
};

struct HiveCheck {
    std::size_t faultCount = 0;
    std::vector<HiveFault> faults;  // the first hundred
    std::size_t keys = 0;           // with the root
    std::size_t values = 0;

    [[nodiscard]] bool whole() const { return faultCount == 0; }
};

// Bins and cells tile the file; each cell in use is referred to exactly once (security by as many keys as it
// counts); lists are sorted by the upper-cased names and have the right hashes; counts, parents, names and
// rings agree; the checksum is right and both sequence numbers are the same. Never throws for what the file
// holds.
[[nodiscard]] HiveCheck checkHive(HiveBytes file);

}  // namespace bromvale::offline

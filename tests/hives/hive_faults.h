// What the strict checker says of a file, as a text to compare.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/hives/checker.h"

namespace bromvale::offline {

// A line for each of the first hundred faults.
inline std::string faultsOf(std::string_view file) {
    std::string faults;
    for (const HiveFault& fault : checkHive(HiveBytes(file)).faults) faults += fault.what + "\n";
    return faults;
}

}  // namespace bromvale::offline

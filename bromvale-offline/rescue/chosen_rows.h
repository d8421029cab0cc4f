#pragma once
#include <string>
#include <vector>

#include "bromvale-offline/rescue/findings.h"

namespace bromvale::offline {

// The rows that --remove names: "all", numbers and ranges from 1 ("1,3-5"), or a file (UTF-8) with a number,
// a range or a key a line. One flag a row of the findings. Throws RescueStop.
[[nodiscard]] std::vector<bool> chosenRows(const Findings& findings, const std::string& option);

}  // namespace bromvale::offline

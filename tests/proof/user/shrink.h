#pragma once
#include <functional>
#include <string>
#include <vector>

namespace bromvale::proof {

using Actions = std::vector<std::string>;

// The actions that are left when no single one can be taken out without the fault's going: parts of them are
// taken out, halves first, while `fails` still says so. `fails` is asked at most `tries` times; the actions
// given are known to fail.
[[nodiscard]] Actions shrink(Actions actions, const std::function<bool(const Actions&)>& fails, int tries);

}  // namespace bromvale::proof

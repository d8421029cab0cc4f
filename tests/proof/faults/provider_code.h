#pragma once

namespace bromvale::proof {

// Whether a function of the offline provider is among the callers. Slow.
[[nodiscard]] bool calledByProvider();

}  // namespace bromvale::proof

#pragma once
#include "core/routine.h"

namespace bromvale {

inline constexpr auto kGoOn = [](const Failure&) { return Ending::Next; };

}  // namespace bromvale

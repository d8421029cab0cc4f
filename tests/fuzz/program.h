// The program on the simulated machine, as targets need it that run more than a parser.
#pragma once

#include <string>
#include <string_view>

#include "platform/offline/machine.h"

namespace bromvale::fuzz {

inline constexpr const char* kProgramFolder = "C:\\Programme\\Bromvale\\";

// The program's state as after its start, made once; the registry, the events and the log are empty after
// each call, whatever a run before has left there.
offline::Machine& freshMachine();

}  // namespace bromvale::fuzz

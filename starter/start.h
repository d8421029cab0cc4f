#pragma once
#include "starter/machine.h"

namespace bromvale::starter {

// The whole of a start, from the question whether another one runs to the machine's registry as it was
// before. True when the program was started and all is put back; the user has been told of everything else.
bool start(Machine& machine);

}  // namespace bromvale::starter

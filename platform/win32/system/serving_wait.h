#pragma once
#include "platform/win32/system/windows.h"

namespace bromvale {

// Waits until `object` is signalled and serves the windows meanwhile (see ServeWindows). False when it was
// not within the time, INFINITE for as long as it takes.
[[nodiscard]] bool waitServing(HANDLE object, DWORD milliseconds);

}  // namespace bromvale

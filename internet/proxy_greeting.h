#pragma once
#include "platform/controls/socket.h"

namespace bromvale {

// Opens a way through the proxy of the settings: connects, asks for the web services' root page, waits seven
// seconds and leaves the socket open. The answer isn't read, and what follows goes by the direct path all the
// same. False where the proxy can't be reached. Serves events while it waits.
[[nodiscard]] bool greetProxy(Socket& winsock);

}  // namespace bromvale

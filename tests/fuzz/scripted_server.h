// Servers that answer as an input says, one answer a connection.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "platform/offline/network/tcp.h"

namespace bromvale::fuzz {

struct ScriptedServers {
    std::deque<std::string> answers;  // of the next connections; without one nothing comes
    std::size_t pieceSize = 4096;     // the most that comes at once
    std::vector<std::string> requests;

    // Connections to them; they must outlive these.
    [[nodiscard]] offline::Connect connect();
};

}  // namespace bromvale::fuzz

#include "tests/fuzz/scripted_server.h"

#include <algorithm>

namespace bromvale::fuzz {
namespace {

class Scripted : public offline::ByteStream {
  public:
    explicit Scripted(ScriptedServers& servers) : servers_(servers) {
        if (servers.answers.empty()) return;
        rest_ = std::move(servers.answers.front());
        servers.answers.pop_front();
    }

    State state(int /*milliseconds*/) override { return State::Connected; }
    bool send(std::string_view bytes, int /*milliseconds*/) override {
        servers_.requests.emplace_back(bytes);
        return true;
    }
    long receive(char* buffer, std::size_t size, int /*milliseconds*/) override {
        const std::size_t got = rest_.copy(buffer, std::min(size, servers_.pieceSize));
        rest_.erase(0, got);
        return static_cast<long>(got);
    }

  private:
    ScriptedServers& servers_;
    std::string rest_;
};

}  // namespace

offline::Connect ScriptedServers::connect() {
    return [this](const std::string&, int) { return std::make_unique<Scripted>(*this); };
}

}  // namespace bromvale::fuzz

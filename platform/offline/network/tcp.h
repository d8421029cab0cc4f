#pragma once
#include <string>
#include <string_view>

namespace bromvale::offline {

// A TCP connection of the host, the one thing of the offline machine that is real. Waits are real time: the
// machine's clock doesn't know of them.
class Tcp {
  public:
    enum class State { Connecting, Connected, ClosedByPeer, Failed };

    // Starts to connect and returns at once, but for the look-up of a name.
    Tcp(const std::string& host, int port);
    ~Tcp();
    Tcp(const Tcp&) = delete;
    Tcp& operator=(const Tcp&) = delete;

    // Waits so long for a connection that is under way.
    [[nodiscard]] State state(int milliseconds);
    // False when the connection broke, or when the other side took nothing for so long.
    bool send(std::string_view bytes, int milliseconds);
    // Bytes that came in, 0 at the end, below 0 for a failure or when nothing came for so long.
    long receive(char* buffer, std::size_t size, int milliseconds);

  private:
    [[nodiscard]] bool waitFor(short events, int milliseconds) const;
    int socket_ = -1;
    State state_ = State::Failed;
};

}  // namespace bromvale::offline

#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace bromvale::offline {

// A connection to a server.
class ByteStream {
  public:
    enum class State { Connecting, Connected, ClosedByPeer, Failed };

    ByteStream() = default;
    virtual ~ByteStream() = default;
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    // Waits so long for a connection that is under way.
    [[nodiscard]] virtual State state(int milliseconds) = 0;
    // False when the connection broke, or when the other side took nothing for so long.
    virtual bool send(std::string_view bytes, int milliseconds) = 0;
    // Bytes that came in, 0 at the end, below 0 for a failure or when nothing came for so long.
    virtual long receive(char* buffer, std::size_t size, int milliseconds) = 0;
};

// How a connection comes about; never null.
using Connect = std::function<std::unique_ptr<ByteStream>(const std::string& host, int port)>;

// A TCP connection of the host, the one thing of the offline machine that is real. Waits are real time: the
// machine's clock doesn't know of them.
class Tcp : public ByteStream {
  public:
    // Starts to connect and returns at once, but for the look-up of a name.
    Tcp(const std::string& host, int port);
    ~Tcp() override;

    [[nodiscard]] State state(int milliseconds) override;
    bool send(std::string_view bytes, int milliseconds) override;
    long receive(char* buffer, std::size_t size, int milliseconds) override;

  private:
    [[nodiscard]] bool waitFor(short events, int milliseconds) const;
    int socket_ = -1;
    State state_ = State::Failed;
};

// The host's network.
[[nodiscard]] std::unique_ptr<ByteStream> connectByTcp(const std::string& host, int port);

}  // namespace bromvale::offline

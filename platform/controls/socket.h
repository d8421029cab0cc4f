#pragma once
#include "platform/controls/control_of.h"

namespace bromvale {

// The states of a socket that the program can see, as the numbers that they have always had. The search for a
// host's address counts as connecting.
enum SocketState : int {
    kSocketClosed = 0,
    kSocketConnecting = 6,
    kSocketConnected = 7,
    kSocketClosing = 8,  // the other side has closed
    kSocketError = 9,
};

// Provider: one connection, under way or open. Its end closes it.
class Connection {
  public:
    virtual ~Connection() = default;
    // The state as it is now. Never waits longer than an eye blinks.
    [[nodiscard]] virtual SocketState state() = 0;
    // False when the connection broke.
    virtual bool send(std::string_view bytes) = 0;
};
// Starts to connect and returns at once; names are looked up on the way.
[[nodiscard]] std::unique_ptr<Connection> openConnection(const std::string& host, int port);

// A TCP connection to somewhere. Nothing of it is to be seen and it has no events: whoever uses it asks for
// its state.
class Socket : public ControlOf<Socket, ControlKind::Socket> {
  public:
    using ControlOf::ControlOf;

    [[nodiscard]] int remotePort() const { return remotePort_; }
    void setRemotePort(int port) { remotePort_ = port; }
    [[nodiscard]] const std::string& remoteHost() const { return remoteHost_; }
    void setRemoteHost(std::string_view host) { remoteHost_ = host; }

    void close();
    // Closes what was open. A host or port that cannot be is an error state, no failure.
    void connect();
    [[nodiscard]] int state();
    // Failure 40006 without a connection.
    void sendData(std::string_view bytes);

  private:
    std::unique_ptr<Connection> connection_;
    std::string remoteHost_;
    int remotePort_ = 0;
    int state_ = kSocketClosed;
};

}  // namespace bromvale

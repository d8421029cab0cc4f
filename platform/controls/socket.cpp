#include "platform/controls/socket.h"

#include "base/failure.h"

namespace bromvale {
namespace {

constexpr int kHighestPort = 65535;
constexpr int kWrongState = 40006;

}  // namespace

void Socket::close() {
    connection_.reset();
    state_ = kSocketClosed;
}

void Socket::connect() {
    close();
    const bool possible = !remoteHost_.empty() && remotePort_ > 0 && remotePort_ <= kHighestPort;
    if (possible) connection_ = openConnection(remoteHost_, remotePort_);
    state_ = connection_ ? kSocketConnecting : kSocketError;
}

int Socket::state() {
    if (connection_ && state_ != kSocketError) state_ = connection_->state();
    return state_;
}

// The state is that of the last look: a peer that has closed meanwhile shows itself when the sending fails.
void Socket::sendData(std::string_view bytes) {
    if (!connection_ || state_ != kSocketConnected) raise(kWrongState);
    if (!connection_->send(bytes)) state_ = kSocketError;
}

}  // namespace bromvale

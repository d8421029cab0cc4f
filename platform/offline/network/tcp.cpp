#include "platform/offline/network/tcp.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace bromvale::offline {

Tcp::Tcp(const std::string& host, int port) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &list) != 0) return;
    const std::unique_ptr<addrinfo, void (*)(addrinfo*)> found(list, freeaddrinfo);
    socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket_ >= 0) {
        const int result = ::connect(socket_, found->ai_addr, found->ai_addrlen);
        if (result == 0) state_ = State::Connected;
        if (result != 0 && errno == EINPROGRESS) state_ = State::Connecting;
    }
}

Tcp::~Tcp() {
    if (socket_ >= 0) ::close(socket_);
}

bool Tcp::waitFor(short events, int milliseconds) const {
    pollfd wait{socket_, events, 0};
    return ::poll(&wait, 1, milliseconds) > 0;
}

Tcp::State Tcp::state(int milliseconds) {
    if (state_ == State::Connecting && waitFor(POLLOUT, milliseconds)) {
        int error = 0;
        socklen_t size = sizeof error;
        const bool known = ::getsockopt(socket_, SOL_SOCKET, SO_ERROR, &error, &size) == 0;
        state_ = known && error == 0 ? State::Connected : State::Failed;
    } else if (state_ == State::Connected && waitFor(POLLIN, 0)) {
        char byte = 0;
        const auto got = ::recv(socket_, &byte, 1, MSG_PEEK);
        if (got == 0) state_ = State::ClosedByPeer;
        if (got < 0 && errno != EAGAIN) state_ = State::Failed;
    }
    return state_;
}

bool Tcp::send(std::string_view bytes, int milliseconds) {
    while (!bytes.empty()) {
        const auto sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno != EAGAIN || !waitFor(POLLOUT, milliseconds)) {
            state_ = State::Failed;
            return false;
        }
    }
    return true;
}

long Tcp::receive(char* buffer, std::size_t size, int milliseconds) {
    if (!waitFor(POLLIN, milliseconds)) return -1;
    return ::recv(socket_, buffer, size, 0);
}

std::unique_ptr<ByteStream> connectByTcp(const std::string& host, int port) {
    return std::make_unique<Tcp>(host, port);
}

}  // namespace bromvale::offline

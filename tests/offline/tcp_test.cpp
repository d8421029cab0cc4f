// The one connection of the offline machine that is real, to a server within this process.
#include "platform/offline/network/tcp.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace bromvale::testing {
namespace {

using offline::Tcp;
using State = offline::ByteStream::State;

constexpr int kPatience = 20'000;  // milliseconds

class TcpTest : public ::testing::Test {
  protected:
    void SetUp() override {
        listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in here{};
        here.sin_family = AF_INET;
        here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof here;
        ASSERT_EQ(::bind(listener_, reinterpret_cast<sockaddr*>(&here), size), 0);
        ASSERT_EQ(::getsockname(listener_, reinterpret_cast<sockaddr*>(&here), &size), 0);
        ASSERT_EQ(::listen(listener_, 1), 0);
        port_ = ntohs(here.sin_port);
    }
    void TearDown() override {
        ::close(listener_);
        if (peer_ >= 0) ::close(peer_);
    }
    void accept() { peer_ = ::accept(listener_, nullptr, nullptr); }
    // Ends it at once, so that what is sent afterwards is refused.
    void reset() {
        const linger none{1, 0};
        ::setsockopt(peer_, SOL_SOCKET, SO_LINGER, &none, sizeof none);
        ::close(peer_);
        peer_ = -1;
    }

    int listener_ = -1;
    int peer_ = -1;
    int port_ = 0;
};

TEST_F(TcpTest, WhatIsSentComesAndTheEndIsTold) {
    Tcp tcp("127.0.0.1", port_);
    ASSERT_EQ(tcp.state(kPatience), State::Connected);
    accept();
    ASSERT_TRUE(tcp.send("Frage", kPatience));
    char buffer[10] = {};
    EXPECT_EQ(::recv(peer_, buffer, 5, MSG_WAITALL), 5);
    EXPECT_STREQ(buffer, "Frage");
    EXPECT_EQ(tcp.receive(buffer, sizeof buffer, 1), -1) << "nothing came";
    ASSERT_EQ(::send(peer_, "ja", 2, 0), 2);
    EXPECT_EQ(tcp.receive(buffer, sizeof buffer, kPatience), 2);
    EXPECT_EQ(tcp.state(0), State::Connected);
    ::shutdown(peer_, SHUT_WR);
    EXPECT_EQ(tcp.receive(buffer, sizeof buffer, kPatience), 0);
    EXPECT_EQ(tcp.state(0), State::ClosedByPeer);
}

TEST_F(TcpTest, AConnectionThatBreaksWhileItSendsHasFailed) {
    Tcp tcp("127.0.0.1", port_);
    ASSERT_EQ(tcp.state(kPatience), State::Connected);
    accept();
    reset();
    while (tcp.send("Frage", kPatience)) {
    }
    EXPECT_EQ(tcp.state(0), State::Failed);
}

TEST_F(TcpTest, WhoTakesNothingBreaksTheConnection) {
    Tcp tcp("127.0.0.1", port_);
    ASSERT_EQ(tcp.state(kPatience), State::Connected);
    accept();
    EXPECT_FALSE(tcp.send(std::string(std::size_t{64} << 20, 'x'), 20));
    EXPECT_EQ(tcp.state(0), State::Failed);
}

TEST_F(TcpTest, WhereNobodyListensItFails) {
    ::close(listener_);
    Tcp tcp("127.0.0.1", port_);
    EXPECT_EQ(tcp.state(kPatience), State::Failed);
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

}  // namespace
}  // namespace bromvale::testing

// The greeting of a proxy, and the socket that it uses.
#include "internet/proxy_greeting.h"

#include "base/failure.h"
#include "core/time.h"
#include "platform/events.h"
#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

class ProxyGreeting : public InternetTest {
  protected:
    Socket& winsock() { return frmMain().winsock; }
    // The state when the connecting has come to an end, or after some seconds.
    int settledState() {
        for (int i = 0; i < 500 && winsock().state() == 6; ++i) {
            DoEvents();
            WaitForEvents(10);
        }
        return winsock().state();
    }
};

TEST_F(ProxyGreeting, SixLinesAreSentAndTheSocketStaysOpenForSevenSeconds) {
    const RecordingServer proxy("silent");
    WebHost = "www.bromvale.example";
    useProxy("127.0.0.1", proxy.port());
    const double start = secondsOfDay();
    EXPECT_TRUE(greetProxy(winsock()));
    EXPECT_GE(secondsOfDay() - start, 7.0);
    EXPECT_LT(secondsOfDay() - start, 9.0);
    EXPECT_EQ(winsock().state(), 7);
    EXPECT_EQ(proxy.requests(), Texts{"GET http://www.bromvale.example/ HTTP/1.0\r\n"
                                      "Accept: */*\r\n"
                                      "Proxy-Connection: Keep-Alive\r\n"
                                      "User-Agent: Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)\r\n"
                                      "Host: www.bromvale.example\r\n"
                                      "\r\n"});
}

TEST_F(ProxyGreeting, TheAnswerIsNotRead) {
    const RecordingServer proxy("raw", "HTTP/1.0 403 Verboten\r\n\r\nnein");
    useProxy("127.0.0.1", proxy.port());
    EXPECT_TRUE(greetProxy(winsock()));
}

TEST_F(ProxyGreeting, AProxyByItsNameIsReached) {
    const RecordingServer proxy("silent");
    useProxy("localhost", proxy.port());
    EXPECT_TRUE(greetProxy(winsock()));
    EXPECT_EQ(proxy.requests().size(), 1u);
}

TEST_F(ProxyGreeting, EventsAreServedDuringTheSevenSeconds) {
    const RecordingServer proxy("silent");
    useProxy("127.0.0.1", proxy.port());
    bool served = false;
    atPump(5, [&] { served = true; });
    EXPECT_TRUE(greetProxy(winsock()));
    EXPECT_TRUE(served);
}

TEST_F(ProxyGreeting, ARefusingProxyEndsItAtOnce) {
    useProxy("127.0.0.1", kDeadPort);
    const double start = secondsOfDay();
    EXPECT_FALSE(greetProxy(winsock()));
    EXPECT_LT(secondsOfDay() - start, 5.0);
}

TEST_F(ProxyGreeting, AHostOrPortThatCannotBeEndsIt) {
    for (const auto& [host, port] : {std::pair{"", 80}, std::pair{"127.0.0.1", 0}, std::pair{"127.0.0.1", -1},
                                     std::pair{"nirgends.invalid", 80}}) {
        useProxy(host, port);
        EXPECT_FALSE(greetProxy(winsock())) << host << ":" << port;
    }
}

TEST_F(ProxyGreeting, ASecondGreetingClosesTheFirstConnection) {
    const RecordingServer proxy("silent");
    useProxy("127.0.0.1", proxy.port());
    EXPECT_TRUE(greetProxy(winsock()));
    EXPECT_TRUE(greetProxy(winsock()));
    EXPECT_EQ(proxy.requests().size(), 2u);
}

TEST_F(ProxyGreeting, TheSocketsStates) {
    EXPECT_EQ(winsock().state(), 0);
    const RecordingServer server("raw", "HTTP/1.0 200 OK\r\n\r\n");
    winsock().setRemoteHost("127.0.0.1");
    winsock().setRemotePort(server.port());
    winsock().connect();
    EXPECT_EQ(settledState(), 7);
    winsock().close();
    EXPECT_EQ(winsock().state(), 0);
    winsock().setRemotePort(kDeadPort);
    winsock().connect();
    EXPECT_EQ(settledState(), 9);
}

TEST_F(ProxyGreeting, ASocketWhosePeerHasClosedSaysSo) {
    const RecordingServer server("close");
    winsock().setRemoteHost("127.0.0.1");
    winsock().setRemotePort(server.port());
    winsock().connect();
    for (int i = 0; i < 100 && (winsock().state() == 6 || winsock().state() == 7); ++i) waitABit();
    EXPECT_EQ(winsock().state(), 8);
}

TEST_F(ProxyGreeting, SendingWithoutAConnectionIsAFailure) {
    try {
        winsock().sendData("x");
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 40006);
        EXPECT_FALSE(failure.description.empty());
    }
}

}  // namespace
}  // namespace bromvale::testing

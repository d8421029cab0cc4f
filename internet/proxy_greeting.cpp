#include "internet/proxy_greeting.h"

#include <string>

#include "core/settings.h"
#include "core/state.h"
#include "core/time.h"
#include "internet/web_page.h"
#include "platform/events.h"

namespace bromvale {
namespace {

constexpr double kSecondsForTheProxy = 7;
constexpr unsigned kLookAgain = 10;  // milliseconds

void sendLine(Socket& winsock, const std::string& line) {
    winsock.sendData(line + "\r\n");
}

}  // namespace

bool greetProxy(Socket& winsock) {
    winsock.close();
    winsock.setRemotePort(ProxyPort);
    winsock.setRemoteHost(ProxyAdresse);
    winsock.connect();
    while (winsock.state() == kSocketConnecting) {
        DoEvents();
        WaitForEvents(kLookAgain);
    }
    if (winsock.state() != kSocketConnected) return false;
    sendLine(winsock, "GET " + webServices() + "/ HTTP/1.0");
    sendLine(winsock, "Accept: */*");
    sendLine(winsock, "Proxy-Connection: Keep-Alive");
    sendLine(winsock, "User-Agent: Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)");
    sendLine(winsock, "Host: " + WebHost);
    sendLine(winsock, "");
    Pause(kSecondsForTheProxy);
    return true;
}

}  // namespace bromvale

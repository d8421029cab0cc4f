// Answers what the program asks: a newer version, a file, thanks for a report.
#include <arpa/inet.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/proof/faults/scripts.h"

namespace bromvale::proof {
namespace {

pid_t server = 0;

std::string answerTo(const std::string& request) {
    if (request.find("appver.txt") != std::string::npos) return "9.9.9";
    if (request.find("download.php") != std::string::npos) return "neu";
    return "ok";
}

[[noreturn]] void serve(int listening) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) {
        const int line = ::accept(listening, nullptr, nullptr);
        if (line < 0) continue;
        std::string request;
        char buffer[2048];
        ssize_t count = 0;
        while (request.find("\r\n\r\n") == std::string::npos &&
               (count = ::read(line, buffer, sizeof buffer)) > 0)
            request.append(buffer, static_cast<std::size_t>(count));
        const std::string body = answerTo(request);
        const std::string answer =
            "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
            "\r\n\r\n" + body;
        static_cast<void>(!::write(line, answer.data(), answer.size()));
        ::close(line);
    }
}

}  // namespace

std::string startWebServer() {
    const int listening = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listening, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listening, 8) != 0)
        return {};
    ::getsockname(listening, reinterpret_cast<sockaddr*>(&address), &size);
    server = ::fork();
    if (server == 0) serve(listening);
    ::close(listening);
    return "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
}

void stopWebServer() {
    if (server <= 0) return;
    ::kill(server, SIGKILL);
    ::waitpid(server, nullptr, 0);
    server = 0;
}

}  // namespace bromvale::proof

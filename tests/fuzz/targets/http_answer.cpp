// Answers of web servers: heads, forwardings and bodies in all of their forms. No more is read than came,
// what has a length has just that, and a chain of forwardings ends.
#include "base/forwarding.h"
#include "platform/offline/network/http_get.h"
#include "tests/fuzz/scripted_server.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

constexpr int kPatience = 60'000;
constexpr std::string_view kNextAnswer = "\xFF\xFF";

void readAll(offline::HttpGet& get, std::size_t bufferSize, std::size_t most) {
    std::string buffer(bufferSize, ' ');
    std::size_t total = 0;
    for (;;) {
        std::size_t got = 0;
        const bool whole = get.read(buffer.data(), buffer.size(), got);
        require(got <= buffer.size(), "the buffer holds it");
        total += got;
        require(total <= most, "no more than came");
        if (!whole) return;
        if (got == 0) break;
    }
    require(!get.length() || total == *get.length(), "as long as the head has said");
}

void run(std::string_view input) {
    Pieces pieces(input);
    ScriptedServers servers;
    servers.pieceSize = std::size_t{1} + pieces.byte();
    const std::size_t bufferSize = std::size_t{1} + pieces.byte();
    while (!pieces.rest().empty()) servers.answers.emplace_back(pieces.until(kNextAnswer));
    const auto get =
        offline::HttpGet::open("http://server.example/appver.txt", "Bromvale", kPatience, servers.connect());
    require(servers.requests.size() <= std::size_t{kMostForwardings} + 1, "forwardings end");
    for (const std::string& request : servers.requests) {
        require(request.starts_with("GET /") && request.ends_with("\r\nConnection: close\r\n\r\n"),
                "a request");
        require(request.find('\n') > request.find(" HTTP/1.1\r"), "its address is in one line");
    }
    if (get == nullptr) return;
    require(get->status() < 100 || get->status() >= 200, "no preliminary answer");
    readAll(*get, bufferSize, input.size());
}

std::vector<std::string> seeds() {
    const std::string start(2, '\x0F');
    return {start + "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n1.2.3", start + "HTTP/1.0 200\n\n1.2.3\r\n",
            start +
                "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                "3;x=y\r\n1.2\r\n2\r\n.3\r\n0\r\n\r\n",
            start +
                "HTTP/1.1 302 Found\r\nLocation: /neu.txt?a b\r\n\r\n\xFF\xFFHTTP/1.1 301 M\r\n"
                "location:  http://b.example:81\r\n\r\n\xFF\xFFHTTP/1.1 404 Not Found\r\n\r\nx"};
}

const KnownTarget kTarget({"http_answer", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz

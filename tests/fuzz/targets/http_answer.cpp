// Answers of web servers: heads, forwardings and bodies in all of their forms. No more is read than came,
// what has a length has just that, and a chain of forwardings ends.
#include <cstdio>

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
        require(!get.length() || total <= *get.length(), "no more than the head has said");
        if (!whole || got == 0) {
            require(!get.length() || whole == (total == *get.length()), "whole is what is as long as that");
            return;
        }
    }
}

// A body in chunks of any sizes is put together again.
void readChunks(std::string_view input, ScriptedServers& servers, std::size_t bufferSize) {
    std::string answer = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    std::string body;
    for (Pieces pieces(input); !pieces.rest().empty();) {
        const std::string_view chunk = pieces.take(std::size_t{1} + pieces.byte());
        if (chunk.empty()) break;
        char size[16];
        std::snprintf(size, sizeof size, "%zx\r\n", chunk.size());
        answer.append(size).append(chunk).append("\r\n");
        body.append(chunk);
    }
    servers.answers.push_back(answer + "0\r\n\r\n");
    const auto get =
        offline::HttpGet::open("http://server.example/", "Bromvale", kPatience, servers.connect());
    require(get != nullptr && !get->length(), "an answer without a length");
    std::string read;
    std::string buffer(bufferSize, ' ');
    for (std::size_t got = 1; got > 0; read.append(buffer, 0, got))
        require(get->read(buffer.data(), buffer.size(), got), "the line is whole");
    require(read == body, "the chunks are the body");
}

void run(std::string_view input) {
    Pieces pieces(input);
    ScriptedServers servers;
    servers.pieceSize = std::size_t{1} + pieces.byte();
    const std::size_t bufferSize = std::size_t{1} + pieces.byte();
    if (bufferSize % 2 != 0) return readChunks(pieces.rest(), servers, bufferSize);
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
    return {start + "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n1.2.3",
            start + "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\n1.2.3",
            std::string("\x02\x06\x04") + "ein Text in Stuecken, immer laenger",
            start + "HTTP/1.0 200\n\n1.2.3\r\n",
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

// What a web server's answer is taken for, byte by byte and at once, without a network.
#include "platform/offline/network/http_get.h"

#include <gtest/gtest.h>

#include "tests/fuzz/scripted_server.h"

namespace bromvale::testing {
namespace {

using offline::HttpGet;
using Texts = std::vector<std::string>;

constexpr int kPatience = 60'000;

struct Answered {
    int status = 0;
    std::optional<std::uint64_t> length;
    std::string body;  // "<none>" without an answer; with "<broken>" behind it where a read fails
};

Answered answered(fuzz::ScriptedServers& servers, std::size_t bufferSize) {
    const auto get = HttpGet::open("http://rechner:8080/x", "Wer fragt", kPatience, servers.connect());
    if (get == nullptr) return {0, {}, "<none>"};
    Answered answer{get->status(), get->length(), ""};
    std::string buffer(bufferSize, '.');
    for (std::size_t got = 1; got > 0;) {
        const bool worked = get->read(buffer.data(), buffer.size(), got);
        answer.body.append(buffer, 0, got);
        if (!worked) {
            answer.body += "<broken>";
            break;
        }
    }
    return answer;
}

struct Case {
    const char* name;
    std::string bytes;
    int status;
    std::optional<std::uint64_t> length;
    const char* body;
};

const std::string kOk = "HTTP/1.1 200 OK\r\n";
const std::string kChunks = kOk + "Transfer-Encoding: chunked\r\n\r\n";

const Case kCases[] = {
    {"up to the connection's end", kOk + "\r\nabc", 200, {}, "abc"},
    {"line ends of one character", "HTTP/1.0 404 Fehlt\n\nabc", 404, {}, "abc"},
    {"as long as it says", kOk + "Content-Length: 3\r\n\r\nabcdef", 200, 3, "abc"},
    {"shorter than it says", kOk + "Content-Length: 9\r\n\r\nabc", 200, 9, "abc<broken>"},
    {"of no length", kOk + "content-length:\t0 \r\n\r\nabc", 200, 0, ""},
    {"a length that is none", kOk + "Content-Length: viel\r\n\r\nabc", 200, {}, "abc"},
    {"a length too great for a number",
     kOk + "Content-Length: 99999999999999999999\r\n\r\nabc",
     200,
     {},
     "abc"},
    {"a field without a colon", kOk + "Content-Length\r\n\r\nabc", 200, {}, "abc"},
    {"chunks", kChunks + "3;x=y\r\nabc\r\nA\r\n0123456789\r\n0\r\n\r\n", 200, {}, "abc0123456789"},
    {"chunks have no other length",
     kOk + "Transfer-Encoding: gzip, Chunked\r\nContent-Length: 1\r\n\r\n3\r\nabc\r\n0\r\n\r\n",
     200,
     {},
     "abc"},
    {"a length before the chunks",
     kOk + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n0\r\n\r\n",
     200,
     {},
     "abc"},
    {"no chunk at all", kChunks + "0\r\n\r\nabc", 200, {}, ""},
    {"a chunk that is cut", kChunks + "3\r\nab", 200, {}, "ab<broken>"},
    {"a chunk without the next one's length", kChunks + "3\r\nabc\r\nkaputt\r\n", 200, {}, "abc<broken>"},
    {"a chunk that ends with the line", kChunks + "3\r\nabc", 200, {}, "abc<broken>"},
    {"a first chunk without length", kChunks + "kaputt\r\n", 0, {}, "<none>"},
    {"a preliminary answer before",
     "HTTP/1.1 100 Weiter\r\nContent-Length: 2\r\n\r\n" + kOk + "\r\nabc",
     200,
     {},
     "abc"},
    {"the last preliminary one", "HTTP/1.1 199 Weiter\r\n\r\n" + kOk + "\r\nabc", 200, {}, "abc"},
    {"a status below the preliminary ones", "HTTP/1.1 99 Was\r\n\r\nabc", 99, {}, "abc"},
    {"a status without its text", "HTTP/1.1 204\r\n\r\n", 204, {}, ""},
    {"a forwarding without a place", "HTTP/1.1 302 Found\r\n\r\nabc", 302, {}, "abc"},
    {"a place of a preliminary answer",
     "HTTP/1.1 103 Vorab\r\nLocation: http://anderswo/\r\n\r\nHTTP/1.1 302 Found\r\n\r\nabc",
     302,
     {},
     "abc"},
    {"another scheme", "HTTP/1.1 302 Found\r\nLocation: https://rechner/\r\n\r\n", 0, {}, "<none>"},
    {"a head without its end", kOk + "Ein: Feld\r\n", 0, {}, "<none>"},
    {"another service", "SSH-2.0-irgendwas\r\n\r\n", 0, {}, "<none>"},
    {"no status", "HTTP/1.1 OK\r\n\r\n", 0, {}, "<none>"},
    {"nothing", "", 0, {}, "<none>"},
};

TEST(HttpGetTest, AnAnswerIsTheSameInPiecesOfAnySize) {
    for (const Case& row : kCases) {
        for (const std::size_t piece : {1, 2, 4096}) {
            for (const std::size_t buffer : {1, 7, 100}) {
                SCOPED_TRACE(row.name + std::string(" in pieces of ") + std::to_string(piece) + ", read by " +
                             std::to_string(buffer));
                fuzz::ScriptedServers servers{{row.bytes}, piece, {}};
                const Answered answer = answered(servers, buffer);
                EXPECT_EQ(answer.status, row.status);
                EXPECT_EQ(answer.length, row.length);
                EXPECT_EQ(answer.body, row.body);
            }
        }
    }
}

TEST(HttpGetTest, TheRequestSaysWhoAsksForWhat) {
    fuzz::ScriptedServers servers{{kOk + "\r\n"}, 4096, {}};
    answered(servers, 10);
    EXPECT_EQ(servers.requests,
              Texts{"GET /x HTTP/1.1\r\nAccept: */*\r\nHost: rechner:8080\r\nUser-Agent: Wer fragt\r\n"
                    "Connection: close\r\n\r\n"});
}

TEST(HttpGetTest, AForwardingAsksAnewAndForgetsTheFirstHead) {
    fuzz::ScriptedServers servers{
        {"HTTP/1.1 301 Moved\r\nContent-Length: 2\r\nlocation:  ../y z\r\n\r\nab", kOk + "\r\nabc"},
        4096,
        {}};
    const Answered answer = answered(servers, 10);
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.length, std::nullopt);
    EXPECT_EQ(answer.body, "abc");
    ASSERT_EQ(servers.requests.size(), 2u);
    EXPECT_TRUE(servers.requests[1].starts_with("GET /y%20z HTTP/1.1\r\n")) << servers.requests[1];
}

// The line's end and the empty line count.
TEST(HttpGetTest, AHeadMayHaveSixtyFourKilobytesAndNoByteMore) {
    const std::string first = "HTTP/1.1 200 OK\n";
    for (const bool more : {false, true}) {
        const std::size_t room = 65536 - first.size() - 1 - 3 - 1 + (more ? 1 : 0);
        fuzz::ScriptedServers servers{{first + "X: " + std::string(room, 'x') + "\n\nabc"}, 4096, {}};
        EXPECT_EQ(answered(servers, 10).body, more ? "<none>" : "abc");
    }
}

TEST(HttpGetTest, ALineBetweenChunksHasItsLimitToo) {
    fuzz::ScriptedServers servers{{kChunks + "1\r\na\r\n" + std::string(200000, '1')}, 4096, {}};
    EXPECT_EQ(answered(servers, 10).body, "a<broken>");
}

TEST(HttpGetTest, PortsAreNumbersFromOneTo65535) {
    for (const auto& [url, port] : std::initializer_list<std::pair<const char*, int>>{
             {"http://rechner", 80}, {"http://rechner:1/", 1}, {"http://rechner:65535", 65535}}) {
        const auto address = offline::webAddress(url);
        ASSERT_TRUE(address) << url;
        EXPECT_EQ(address->port, port) << url;
        EXPECT_EQ(address->hostAndPort(), port == 80 ? "rechner" : "rechner:" + std::to_string(port));
    }
    for (const char* url :
         {"http://rechner:0/", "http://rechner:65536/", "http://rechner:-1/", "http://rechner:/",
          "http://rech\tner/", "http://rech\rner/", "http://rech\nner/"})
        EXPECT_FALSE(offline::webAddress(url)) << url;
}

TEST(HttpGetTest, APathBeginsWithASlashAndHoldsNoBlanks) {
    EXPECT_EQ(offline::webAddress("http://rechner#teil")->path, "/#teil");
    EXPECT_EQ(offline::webAddress("http://rechner?a b")->path, "/?a%20b");
    EXPECT_EQ(offline::webAddress("http://rechner/a  b c")->path, "/a%20%20b%20c");
    EXPECT_EQ(offline::webAddress("http://rechner/a\nb")->path, "/a\nb");
}

}  // namespace
}  // namespace bromvale::testing

#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/offline/tcp.h"

namespace bromvale::offline {

// The answer to one GET. Does what the program's four internet calls promise and no more: one request a
// connection, no cache, no cookies, no proxy, plain http.
class HttpGet {
  public:
    // Sends the request and reads the head of the answer, over forwardings too. Null where no answer comes.
    static std::unique_ptr<HttpGet> open(std::string_view url, std::string_view agent, int patience);

    // Fills the buffer, with less at the end of the answer. Below 0 when the line broke before; what came in
    // until then stands in the buffer.
    long read(char* buffer, std::size_t size);

  private:
    HttpGet(const std::string& host, int port, int patience) : tcp_(host, port), patience_(patience) {}
    [[nodiscard]] bool ask(std::string_view request);
    [[nodiscard]] bool readHead();
    [[nodiscard]] bool readLine(std::string& line);
    void takeField(std::string_view line);
    [[nodiscard]] bool more();
    [[nodiscard]] bool nextChunk();
    long readSome(char* buffer, std::size_t size);

    Tcp tcp_;
    int patience_;
    std::string received_;  // came in and was not read yet
    int status_ = 0;
    std::string location_;
    std::optional<std::uint64_t>
        left_;  // of the body or of the chunk; nothing: up to the end of the connection
    bool chunked_ = false;
    bool ended_ = false;
};

// Host, port and the rest of an address.
struct WebAddress {
    std::string host;
    int port = 80;
    std::string path;
    [[nodiscard]] std::string hostAndPort() const;
};
// Nothing for what is no http address. Blanks in it become %20; nothing else is changed, line breaks stay.
[[nodiscard]] std::optional<WebAddress> webAddress(std::string_view url);

}  // namespace bromvale::offline

#pragma once
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/offline/network/tcp.h"

namespace bromvale::offline {

// Host, port and the rest of an address.
struct WebAddress {
    std::string host;
    int port = 80;
    std::string path;
    [[nodiscard]] std::string hostAndPort() const;
};

// How long something may still take, in real time.
class Deadline {
  public:
    explicit Deadline(int milliseconds) : end_(Clock::now() + std::chrono::milliseconds(milliseconds)) {}
    [[nodiscard]] int left() const {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
        return rest.count() > 0 ? static_cast<int>(rest.count()) : 0;
    }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point end_;
};

// The answer to one GET. Does what WebAnswer promises and no more: one request a
// connection, no cache, no cookies, no proxy, plain http.
class HttpGet {
  public:
    // Sends the request and reads the head of the answer, over forwardings too. Null where no answer comes
    // within the patience (milliseconds).
    static std::unique_ptr<HttpGet> open(std::string_view url, std::string_view agent, int patience,
                                         const Connect& connect = connectByTcp);

    [[nodiscard]] int status() const { return status_; }
    // What the head says of the body's length in bytes; nothing for a body in chunks.
    [[nodiscard]] std::optional<std::uint64_t> length() const { return length_; }
    // Fills the buffer from `got` on, which is 0 at first, and counts what comes: less at the end of the
    // answer, or when the patience is over but something has come. False when the line broke before, or after
    // as long a silence.
    [[nodiscard]] bool read(char* buffer, std::size_t size, std::size_t& got);

  private:
    HttpGet(std::unique_ptr<ByteStream> stream, int patience, const Deadline& opening)
        : stream_(std::move(stream)), patience_(patience), silence_(opening) {}
    [[nodiscard]] bool ask(std::string_view request);
    [[nodiscard]] bool readHead();
    [[nodiscard]] bool readHeadLine(std::string& line);
    [[nodiscard]] bool readLine(std::string& line);
    void takeField(std::string_view line);
    [[nodiscard]] long more();
    [[nodiscard]] bool nextChunk();
    [[nodiscard]] bool nextPart();
    long readSome(char* buffer, std::size_t size);

    std::unique_ptr<ByteStream> stream_;
    int patience_;
    Deadline silence_;  // until the head has come, afterwards until the next byte of the body
    std::size_t headSize_ = 0;
    std::string received_;  // came in and was not read yet
    int status_ = 0;
    std::string location_;
    std::optional<std::uint64_t> length_;
    std::optional<std::uint64_t>
        left_;  // of the body or of the chunk; nothing: up to the end of the connection
    bool chunked_ = false;
    bool ended_ = false;
};

// Nothing for what is no http address. Blanks in it become %20; nothing else is changed, line breaks stay.
[[nodiscard]] std::optional<WebAddress> webAddress(std::string_view url);

}  // namespace bromvale::offline

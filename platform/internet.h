#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace bromvale {

// How long the head of an answer may take, and how long the server may be silent afterwards, in milliseconds.
// Tests shorten it.
inline unsigned internetPatience = 60000;

// The answer to one GET, which goes the direct way, past any cache. On Windows wininet brings it, loaded at
// the first use since a system may lack it; without it there is no answer to anything. Windows are served
// while it waits (see ServeWindows).
class WebAnswer {
  public:
    // Asks and waits for the head of the answer, whatever its status; forwardings are followed.
    WebAnswer(const std::string& address, const std::string& agent);
    ~WebAnswer();
    WebAnswer(const WebAnswer&) = delete;
    WebAnswer& operator=(const WebAnswer&) = delete;

    // False where there is no answer; then there is nothing to be read either.
    [[nodiscard]] bool came() const;
    // What the head says of the status and of the body's length in bytes; nothing where it doesn't say it.
    [[nodiscard]] std::optional<std::uint32_t> status() const;
    [[nodiscard]] std::optional<std::uint32_t> length() const;
    // Fills the buffer and tells how much it got. Less comes at the end of the answer, and when a slow server
    // has taken up the patience but has sent something; nothing only at the end. False when the line breaks
    // or the server falls silent: what came until then is in the buffer and counted, and no more is to be
    // had.
    bool read(char* buffer, std::size_t size, std::size_t& got);

  private:
    struct Carrier;
    std::unique_ptr<Carrier> carrier_;
};

// Opens the system's download dialog (DoFileDownload) for the address. False where there is none.
[[nodiscard]] bool openDownloadDialog(const std::string& address);

}  // namespace bromvale

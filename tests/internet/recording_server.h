#pragma once
#include <string>
#include <vector>

namespace bromvale::testing {

// The server of the script tools/recording_server, started for one test; see there for its modes.
class RecordingServer {
  public:
    explicit RecordingServer(const std::string& mode, const std::string& answer = "");
    ~RecordingServer();
    RecordingServer(const RecordingServer&) = delete;
    RecordingServer& operator=(const RecordingServer&) = delete;

    [[nodiscard]] int port() const { return port_; }
    [[nodiscard]] std::string host() const { return "127.0.0.1:" + std::to_string(port_); }
    // What came in on each connection, in their order, byte by byte.
    [[nodiscard]] std::vector<std::string> requests() const;

  private:
    std::string folder_;  // as this program names it
    int port_ = 0;
};

// A port on which nobody listens.
inline constexpr int kDeadPort = 1;

// By platform: the folder of the server with this number, as this program names it and as the server does;
// and its start.
std::string serverFolder(int number);
std::string serverFolderOnHost(int number);
bool startOnHost(const std::vector<std::string>& command);
void waitABit();

}  // namespace bromvale::testing

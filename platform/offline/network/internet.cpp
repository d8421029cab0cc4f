// The internet of the offline machine: real connections, each address recorded.
#include "platform/internet.h"

#include "platform/controls/socket.h"
#include "platform/dialogs.h"
#include "platform/offline/machine.h"
#include "platform/offline/network/http_get.h"

namespace bromvale {
namespace {

using offline::EventKind;
using offline::failsHere;
using offline::machine;
using offline::Tcp;

constexpr int kLookMilliseconds = 10;

class RealConnection : public Connection {
  public:
    RealConnection(const std::string& host, int port) : tcp_(host, port) {}
    SocketState state() override {
        switch (tcp_.state(kLookMilliseconds)) {
            case Tcp::State::Connecting: return kSocketConnecting;
            case Tcp::State::Connected: return kSocketConnected;
            case Tcp::State::ClosedByPeer: return kSocketClosing;
            case Tcp::State::Failed: return kSocketError;
        }
        return kSocketError;
    }
    bool send(std::string_view bytes) override {
        return !failsHere("send") && tcp_.send(bytes, static_cast<int>(internetPatience));
    }

  private:
    Tcp tcp_;
};

}  // namespace

struct WebAnswer::Carrier {
    bool session = false;
    std::unique_ptr<offline::HttpGet> get;
};

// The steps have the names of Windows' functions, and each is made whether the one before has worked or not.
WebAnswer::WebAnswer(const std::string& address, const std::string& agent)
    : carrier_(std::make_unique<Carrier>()) {
    carrier_->session = !failsHere("InternetOpenA");
    if (carrier_->session) ++machine().internetHandles;
    if (failsHere("InternetOpenUrlA") || !carrier_->session) return;
    machine().events.record({EventKind::Fetch, address});
    carrier_->get =
        offline::HttpGet::open(address, agent, static_cast<int>(internetPatience), machine().connect);
    if (came()) ++machine().internetHandles;
}

// The answer first, then the session.
WebAnswer::~WebAnswer() {
    for (const bool open : {came(), carrier_->session}) {
        if (!failsHere("InternetCloseHandle") && open) --machine().internetHandles;
    }
}

bool WebAnswer::came() const {
    return carrier_->get != nullptr;
}

std::optional<std::uint32_t> WebAnswer::status() const {
    if (failsHere("HttpQueryInfoA") || !came()) return std::nullopt;
    return static_cast<std::uint32_t>(carrier_->get->status());
}

std::optional<std::uint32_t> WebAnswer::length() const {
    if (failsHere("HttpQueryInfoA") || !came()) return std::nullopt;
    const auto length = carrier_->get->length();
    return length ? std::optional(static_cast<std::uint32_t>(*length)) : std::nullopt;
}

bool WebAnswer::read(char* buffer, std::size_t size, std::size_t& got) {
    got = 0;
    return !failsHere("InternetReadFile") && came() && carrier_->get->read(buffer, size, got);
}

// This machine has none.
bool openDownloadDialog(const std::string& address) {
    if (failsHere("DoFileDownload")) return true;
    machine().events.record({EventKind::Download, address});
    return false;
}

std::string askWhereToSave(const std::string& suggestedName) {
    auto& paths = machine().savePaths;
    std::string chosen = paths.empty() ? std::string() : paths.front();
    if (!paths.empty()) paths.pop_front();
    machine().events.record({EventKind::SaveDialog, suggestedName, chosen, 0, chosen.empty() ? 0 : 1});
    return chosen;
}

std::unique_ptr<Connection> openConnection(const std::string& host, int port) {
    machine().events.record({EventKind::Connect, host + ":" + std::to_string(port)});
    if (failsHere("connect")) return nullptr;
    return std::make_unique<RealConnection>(host, port);
}

}  // namespace bromvale

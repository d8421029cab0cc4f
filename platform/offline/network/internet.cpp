// The internet of the offline machine: real connections, each address recorded.
#include "platform/internet.h"

#include <cstring>

#include "platform/controls/socket.h"
#include "platform/dialogs.h"
#include "platform/offline/files/handles.h"
#include "platform/offline/machine.h"
#include "platform/offline/network/http_get.h"

namespace bromvale {
namespace {

using offline::EventKind;
using offline::failsHere;
using offline::machine;
using offline::Tcp;

// A session has an agent, an opened address an answer.
struct InternetObject {
    std::string agent;
    std::unique_ptr<offline::HttpGet> answer;
};

offline::HandleTable<InternetObject>& objects() {
    static offline::HandleTable<InternetObject> table;
    return table;
}

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

HINTERNET InternetOpenA(const char* agent, DWORD, const char*, const char*, DWORD) {
    if (failsHere("InternetOpenA")) return nullptr;
    return objects().open({agent, nullptr});
}

HINTERNET InternetOpenUrlA(HINTERNET session, const char* url, const char*, DWORD, DWORD, std::uintptr_t) {
    if (failsHere("InternetOpenUrlA")) return nullptr;
    const InternetObject* object = objects().find(session);
    if (object == nullptr) return nullptr;
    machine().events.record({EventKind::Fetch, url, "", 0, 0});
    auto answer = offline::HttpGet::open(url, object->agent, static_cast<int>(internetPatience));
    return answer ? objects().open({"", std::move(answer)}) : nullptr;
}

BOOL InternetReadFile(HINTERNET url, void* buffer, DWORD count, DWORD* read) {
    *read = 0;
    if (failsHere("InternetReadFile")) return FALSE;
    const InternetObject* object = objects().find(url);
    if (object == nullptr || !object->answer) return FALSE;
    std::size_t got = 0;
    const bool worked = object->answer->read(static_cast<char*>(buffer), count, got);
    *read = static_cast<DWORD>(got);
    return worked ? TRUE : FALSE;
}

BOOL HttpQueryInfoA(HINTERNET url, DWORD what, void* number, DWORD*, DWORD*) {
    if (failsHere("HttpQueryInfoA")) return FALSE;
    const InternetObject* object = objects().find(url);
    if (object == nullptr || !object->answer) return FALSE;
    const auto length = object->answer->length();
    const auto tell = [number](auto value) {
        const auto told = static_cast<DWORD>(value);
        std::memcpy(number, &told, sizeof told);
        return TRUE;
    };
    if (what == (kQueryStatusCode | kQueryNumber)) return tell(object->answer->status());
    if (what == (kQueryContentLength | kQueryNumber) && length) return tell(*length);
    return FALSE;
}

BOOL InternetCloseHandle(HINTERNET handle) {
    if (failsHere("InternetCloseHandle")) return FALSE;
    return objects().close(handle) ? TRUE : FALSE;
}

// This machine has none.
bool openDownloadDialog(const std::string& address) {
    if (failsHere("DoFileDownload")) return true;
    machine().events.record({EventKind::Download, address, "", 0, 0});
    return false;
}

std::string askWhereToSave(const std::string& suggestedName) {
    auto& paths = machine().savePaths;
    const std::string chosen = paths.empty() ? std::string() : paths.front();
    if (!paths.empty()) paths.pop_front();
    machine().events.record({EventKind::SaveDialog, suggestedName, chosen, 0, chosen.empty() ? 0 : 1});
    return chosen;
}

std::unique_ptr<Connection> openConnection(const std::string& host, int port) {
    machine().events.record({EventKind::Connect, host + ":" + std::to_string(port), "", 0, 0});
    if (failsHere("connect")) return nullptr;
    return std::make_unique<RealConnection>(host, port);
}

}  // namespace bromvale

std::size_t bromvale::offline::openInternetHandles() {
    return bromvale::objects().count();
}

#include "platform/internet.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <utility>
#include <vector>

#include "base/forwarding.h"
#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"
#include "platform/win32/system/patient_call.h"

#include <wininet.h>

namespace bromvale {
namespace {

// Loaded at the first use: a system may lack it.
struct Library {
    decltype(&::InternetOpenA) open = nullptr;
    decltype(&::InternetOpenUrlA) openUrl = nullptr;
    decltype(&::InternetQueryDataAvailable) available = nullptr;
    decltype(&::InternetReadFile) read = nullptr;
    decltype(&::HttpQueryInfoA) query = nullptr;
    decltype(&::InternetCloseHandle) close = nullptr;
    bool usable = false;
};

Library loadLibrary() {
    Library library;
    const HMODULE module = loadSystemLibrary("wininet.dll");
    library.usable = loadEntry(module, "InternetOpenA", library.open) &&
                     loadEntry(module, "InternetOpenUrlA", library.openUrl) &&
                     loadEntry(module, "InternetQueryDataAvailable", library.available) &&
                     loadEntry(module, "InternetReadFile", library.read) &&
                     loadEntry(module, "HttpQueryInfoA", library.query) &&
                     loadEntry(module, "InternetCloseHandle", library.close);
    return library;
}

const Library& wininet() {
    static const Library library = loadLibrary();
    return library;
}

// A number of the head; nothing where it doesn't say it.
std::optional<std::uint32_t> numberIn(HINTERNET answer, DWORD which) {
    DWORD number = 0;
    DWORD size = sizeof number;
    const bool told = answer != nullptr &&
                      wininet().query(answer, which | HTTP_QUERY_FLAG_NUMBER, &number, &size, nullptr) != 0;
    return told ? std::optional<std::uint32_t>(number) : std::nullopt;
}

// Empty where the head names none, or one that is too long to be any.
std::string locationIn(HINTERNET answer) {
    std::array<char, 4096> text{};
    DWORD size = text.size();
    if (!wininet().query(answer, HTTP_QUERY_LOCATION, text.data(), &size, nullptr)) return {};
    return {text.data(), std::min<std::size_t>(size, text.size())};
}

class OpenUrl : public PatientCall {
  public:
    OpenUrl(HINTERNET session, std::string address) : session_(session), address_(std::move(address)) {}
    // An answer that came too late for anybody.
    ~OpenUrl() override {
        if (answer_ != nullptr) wininet().close(answer_);
    }
    [[nodiscard]] HINTERNET takeAnswer() { return std::exchange(answer_, nullptr); }

  protected:
    // Forwardings are followed here: some versions of the library follow one that never ends for ever, and go
    // on when nobody waits any more.
    void run() override {
        constexpr DWORD kFlags = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_AUTO_REDIRECT;
        for (int followed = 0; followed <= kMostForwardings && !leftAlone(); ++followed) {
            answer_ = wininet().openUrl(session_, address_.c_str(), nullptr, 0, kFlags, 0);
            if (answer_ == nullptr) return;
            const auto status = numberIn(answer_, HTTP_QUERY_STATUS_CODE);
            if (!status || !isForwarding(static_cast<int>(*status))) return;
            const std::string location = locationIn(answer_);
            if (location.empty()) return;
            wininet().close(std::exchange(answer_, nullptr));
            address_ = forwardedAddress(address_, location);
        }
    }

  private:
    HINTERNET session_;
    std::string address_;
    HINTERNET answer_ = nullptr;
};

// Reads into a buffer of its own: the caller's may be gone when a late answer comes. What is there is taken
// piece by piece, so that a slow server is told from a silent one.
class ReadUrl : public PatientCall {
  public:
    ReadUrl(HINTERNET answer, std::size_t size)
        : answer_(answer), patience_(internetPatience), bytes_(size) {}
    // What has come, even while the reading is left to itself: it writes only behind that.
    std::size_t takeBytes(char* buffer) const {
        const std::size_t got = got_;
        std::memcpy(buffer, bytes_.data(), got);
        return got;
    }
    // Of a reading that is done.
    [[nodiscard]] bool worked() const { return worked_; }

  protected:
    void run() override {
        const DWORD start = GetTickCount();
        while (got_ < bytes_.size()) {
            DWORD piece = 0;
            worked_ = readPiece(piece);
            got_ += piece;
            const bool goesOn = mayGoOn() && worked_ && piece > 0;
            if (!goesOn || GetTickCount() - start >= patience_) return;
        }
    }

  private:
    bool readPiece(DWORD& piece) {
        DWORD available = 0;
        if (!wininet().available(answer_, &available, 0, 0)) return false;
        if (available == 0) return true;
        const DWORD count = std::min(available, static_cast<DWORD>(bytes_.size() - got_));
        return wininet().read(answer_, bytes_.data() + got_, count, &piece) != 0;
    }
    HINTERNET answer_;
    DWORD patience_;
    std::vector<char> bytes_;
    std::atomic<std::size_t> got_ = 0;
    bool worked_ = true;
};

// Wine has the entry of the download dialog, but nothing behind it.
bool hasNoDownloadDialog() {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace

struct WebAnswer::Carrier {
    HINTERNET session = nullptr;
    HINTERNET answer = nullptr;
    bool silent = false;  // its reading was left to itself: nothing may be read from it any more
};

WebAnswer::WebAnswer(const std::string& address, const std::string& agent)
    : carrier_(std::make_unique<Carrier>()) {
    if (!wininet().usable) return;
    carrier_->session = wininet().open(agent.c_str(), INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0);
    auto* call = new OpenUrl(carrier_->session, address);
    if (call->doneInTime(internetPatience)) carrier_->answer = call->takeAnswer();
    call->release();
}

WebAnswer::~WebAnswer() {
    for (const HINTERNET handle : {carrier_->answer, carrier_->session}) {
        if (handle != nullptr) wininet().close(handle);
    }
}

bool WebAnswer::came() const {
    return carrier_->answer != nullptr;
}

std::optional<std::uint32_t> WebAnswer::status() const {
    return numberIn(carrier_->answer, HTTP_QUERY_STATUS_CODE);
}

std::optional<std::uint32_t> WebAnswer::length() const {
    return numberIn(carrier_->answer, HTTP_QUERY_CONTENT_LENGTH);
}

bool WebAnswer::read(char* buffer, std::size_t size, std::size_t& got) {
    got = 0;
    if (!came() || carrier_->silent) return false;
    auto* call = new ReadUrl(carrier_->answer, size);
    const bool done = call->doneInTime(internetPatience);
    carrier_->silent = !done;
    got = call->takeBytes(buffer);
    const bool worked = done && call->worked();
    call->release();
    return worked;
}

bool openDownloadDialog(const std::string& address) {
    if (hasNoDownloadDialog()) return false;
    DWORD(WINAPI * download)(LPCWSTR) = nullptr;
    if (!loadEntry(loadSystemLibrary("shdocvw.dll"), "DoFileDownload", download)) return false;
    download(std::wstring(address.begin(), address.end()).c_str());
    return true;
}

}  // namespace bromvale

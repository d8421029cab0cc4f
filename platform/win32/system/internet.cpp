#include "platform/internet.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/forwarding.h"
#include "platform/win32/system/patient_call.h"

namespace bromvale {
namespace {

using OpenEntry = HINTERNET(WINAPI*)(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD);
using OpenUrlEntry = HINTERNET(WINAPI*)(HINTERNET, LPCSTR, LPCSTR, DWORD, DWORD, DWORD_PTR);
using ReadEntry = BOOL(WINAPI*)(HINTERNET, LPVOID, DWORD, LPDWORD);
using AvailableEntry = BOOL(WINAPI*)(HINTERNET, LPDWORD, DWORD, DWORD_PTR);
using QueryEntry = BOOL(WINAPI*)(HINTERNET, DWORD, LPVOID, LPDWORD, LPDWORD);
using CloseEntry = BOOL(WINAPI*)(HINTERNET);
using DownloadEntry = DWORD(WINAPI*)(LPCWSTR);

template <class Entry>
Entry entryOf(HMODULE library, const char* name) {
    if (library == nullptr) return nullptr;
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

template <class Entry>
Entry internetEntry(const char* name) {
    static const HMODULE library = LoadLibraryA("wininet.dll");
    return entryOf<Entry>(library, name);
}

BOOL closeEntry(HINTERNET handle) {
    const auto close = internetEntry<CloseEntry>("InternetCloseHandle");
    return close != nullptr ? close(handle) : FALSE;
}

// 0 where the head doesn't say it.
int statusOf(HINTERNET answer) {
    const auto query = internetEntry<QueryEntry>("HttpQueryInfoA");
    DWORD status = 0;
    DWORD size = sizeof status;
    if (query == nullptr || !query(answer, kQueryStatusCode | kQueryNumber, &status, &size, nullptr))
        return 0;
    return static_cast<int>(status);
}

// Empty where the head names none, or one that is too long to be any.
std::string locationIn(HINTERNET answer) {
    constexpr DWORD kQueryLocation = 33;
    const auto query = internetEntry<QueryEntry>("HttpQueryInfoA");
    std::array<char, 4096> text{};
    DWORD size = text.size();
    if (query == nullptr || !query(answer, kQueryLocation, text.data(), &size, nullptr)) return {};
    return {text.data(), std::min<std::size_t>(size, text.size())};
}

class OpenUrl : public PatientCall {
  public:
    OpenUrl(OpenUrlEntry open, HINTERNET session, const char* url, const char* headers, DWORD headersLength,
            DWORD flags, std::uintptr_t context)
        : open_(open),
          session_(session),
          url_(url),
          headers_(headers != nullptr ? headers : ""),
          headersLength_(headersLength),
          flags_(flags),
          context_(context) {}
    // An answer that came too late for anybody.
    ~OpenUrl() override {
        if (answer_ != nullptr) closeEntry(answer_);
    }
    [[nodiscard]] HINTERNET takeAnswer() { return std::exchange(answer_, nullptr); }

  protected:
    // Forwardings are followed here: some versions of the library follow one that never ends for ever, and go
    // on when nobody waits any more.
    void run() override {
        for (int followed = 0; followed <= kMostForwardings && !leftAlone(); ++followed) {
            answer_ = ask();
            if (answer_ == nullptr || !isForwarding(statusOf(answer_))) return;
            const std::string location = locationIn(answer_);
            if (location.empty()) return;
            closeEntry(std::exchange(answer_, nullptr));
            url_ = forwardedAddress(url_, location);
        }
    }

  private:
    HINTERNET ask() const {
        constexpr DWORD kNoForwarding = 0x00200000;  // INTERNET_FLAG_NO_AUTO_REDIRECT
        const char* headers = headers_.empty() ? nullptr : headers_.c_str();
        return open_(session_, url_.c_str(), headers, headersLength_, flags_ | kNoForwarding, context_);
    }
    OpenUrlEntry open_;
    HINTERNET session_;
    std::string url_;
    std::string headers_;
    DWORD headersLength_;
    DWORD flags_;
    std::uintptr_t context_;
    HINTERNET answer_ = nullptr;
};

// Reads into a buffer of its own: the caller's may be gone when a late answer comes. What is there is taken
// piece by piece, so that a slow server is told from a silent one.
class ReadUrl : public PatientCall {
  public:
    ReadUrl(ReadEntry read, AvailableEntry available, HINTERNET url, DWORD count)
        : read_(read), available_(available), url_(url), patience_(internetPatience), bytes_(count) {}
    // What has come, even while the reading is left to itself: it writes only behind that.
    DWORD takeBytes(void* buffer) const {
        const DWORD got = got_;
        std::memcpy(buffer, bytes_.data(), got);
        return got;
    }
    // Of a reading that is done.
    [[nodiscard]] BOOL result() const { return result_; }

  protected:
    void run() override {
        const DWORD start = GetTickCount();
        while (got_ < bytes_.size()) {
            DWORD piece = 0;
            result_ = readPiece(piece);
            got_ += piece;
            const bool goesOn = mayGoOn() && result_ && piece > 0;
            if (!goesOn || GetTickCount() - start >= patience_) return;
        }
    }

  private:
    BOOL readPiece(DWORD& piece) {
        DWORD available = 0;
        if (!available_(url_, &available, 0, 0)) return FALSE;
        if (available == 0) return TRUE;
        const DWORD rest = static_cast<DWORD>(bytes_.size()) - got_;
        return read_(url_, bytes_.data() + got_, std::min(available, rest), &piece);
    }
    ReadEntry read_;
    AvailableEntry available_;
    HINTERNET url_;
    DWORD patience_;
    std::vector<char> bytes_;
    std::atomic<DWORD> got_ = 0;
    BOOL result_ = TRUE;
};

// Answers whose reading was left to itself: nothing may be read from them any more.
std::set<HINTERNET>& silentAnswers() {
    static std::set<HINTERNET> answers;
    return answers;
}

// Wine has the entry of the download dialog, but nothing behind it.
bool hasNoDownloadDialog() {
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace

HINTERNET InternetOpenA(const char* agent, DWORD accessType, const char* proxy, const char* bypass,
                        DWORD flags) {
    const auto open = internetEntry<OpenEntry>("InternetOpenA");
    return open != nullptr ? open(agent, accessType, proxy, bypass, flags) : nullptr;
}

HINTERNET InternetOpenUrlA(HINTERNET session, const char* url, const char* headers, DWORD headersLength,
                           DWORD flags, std::uintptr_t context) {
    const auto open = internetEntry<OpenUrlEntry>("InternetOpenUrlA");
    if (open == nullptr) return nullptr;
    auto* call = new OpenUrl(open, session, url, headers, headersLength, flags, context);
    const HINTERNET answer = call->doneInTime(internetPatience) ? call->takeAnswer() : nullptr;
    call->release();
    return answer;
}

BOOL InternetReadFile(HINTERNET url, void* buffer, DWORD count, DWORD* read) {
    *read = 0;
    const auto readFile = internetEntry<ReadEntry>("InternetReadFile");
    const auto available = internetEntry<AvailableEntry>("InternetQueryDataAvailable");
    if (readFile == nullptr || available == nullptr || url == nullptr) return FALSE;
    if (silentAnswers().contains(url)) return FALSE;
    auto* call = new ReadUrl(readFile, available, url, count);
    const bool done = call->doneInTime(internetPatience);
    if (!done) silentAnswers().insert(url);
    *read = call->takeBytes(buffer);
    const BOOL result = done ? call->result() : FALSE;
    call->release();
    return result;
}

BOOL HttpQueryInfoA(HINTERNET url, DWORD what, void* number, DWORD* size, DWORD* index) {
    const auto query = internetEntry<QueryEntry>("HttpQueryInfoA");
    return query != nullptr ? query(url, what, number, size, index) : FALSE;
}

BOOL InternetCloseHandle(HINTERNET handle) {
    silentAnswers().erase(handle);
    return closeEntry(handle);
}

bool openDownloadDialog(const std::string& address) {
    if (hasNoDownloadDialog()) return false;
    static const HMODULE library = LoadLibraryA("shdocvw.dll");
    const auto download = entryOf<DownloadEntry>(library, "DoFileDownload");
    if (download == nullptr) return false;
    download(std::wstring(address.begin(), address.end()).c_str());
    return true;
}

}  // namespace bromvale

#include "platform/internet.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_download.h"
#include "platform/win32/patient_call.h"

namespace bromvale {
namespace {

// How long a server may keep the program waiting, in milliseconds. The library's own limit is an hour in some
// versions, and in others there is none that a caller could set before the answer has begun.
constexpr DWORD kPatience = 60000;

using OpenEntry = HINTERNET(WINAPI*)(LPCSTR, DWORD, LPCSTR, LPCSTR, DWORD);
using OpenUrlEntry = HINTERNET(WINAPI*)(HINTERNET, LPCSTR, LPCSTR, DWORD, DWORD, DWORD_PTR);
using ReadEntry = BOOL(WINAPI*)(HINTERNET, LPVOID, DWORD, LPDWORD);
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
        if (answer_ != nullptr) InternetCloseHandle(answer_);
    }
    [[nodiscard]] HINTERNET takeAnswer() { return std::exchange(answer_, nullptr); }

  protected:
    void run() override {
        const char* headers = headers_.empty() ? nullptr : headers_.c_str();
        answer_ = open_(session_, url_.c_str(), headers, headersLength_, flags_, context_);
    }

  private:
    OpenUrlEntry open_;
    HINTERNET session_;
    std::string url_;
    std::string headers_;
    DWORD headersLength_;
    DWORD flags_;
    std::uintptr_t context_;
    HINTERNET answer_ = nullptr;
};

// Reads into a buffer of its own: the caller's may be gone when a late answer comes.
class ReadUrl : public PatientCall {
  public:
    ReadUrl(ReadEntry read, HINTERNET url, DWORD count) : read_(read), url_(url), bytes_(count) {}
    BOOL takeResult(void* buffer, DWORD* read) const {
        std::memcpy(buffer, bytes_.data(), got_);
        *read = got_;
        return result_;
    }

  protected:
    void run() override { result_ = read_(url_, bytes_.data(), static_cast<DWORD>(bytes_.size()), &got_); }

  private:
    ReadEntry read_;
    HINTERNET url_;
    std::vector<char> bytes_;
    DWORD got_ = 0;
    BOOL result_ = FALSE;
};

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
    const HINTERNET answer = call->doneInTime(kPatience) ? call->takeAnswer() : nullptr;
    call->release();
    return answer;
}

BOOL InternetReadFile(HINTERNET url, void* buffer, DWORD count, DWORD* read) {
    *read = 0;
    const auto readFile = internetEntry<ReadEntry>("InternetReadFile");
    if (readFile == nullptr || url == nullptr) return FALSE;
    auto* call = new ReadUrl(readFile, url, count);
    const BOOL result = call->doneInTime(kPatience) ? call->takeResult(buffer, read) : FALSE;
    call->release();
    return result;
}

BOOL InternetCloseHandle(HINTERNET handle) {
    const auto close = internetEntry<CloseEntry>("InternetCloseHandle");
    return close != nullptr ? close(handle) : FALSE;
}

DWORD DoFileDownload(const wchar_t* address) {
    if (!hasNoDownloadDialog()) {
        static const HMODULE library = LoadLibraryA("shdocvw.dll");
        const auto download = entryOf<DownloadEntry>(library, "DoFileDownload");
        if (download != nullptr) return download(address);
    }
    std::string text;
    for (const wchar_t* at = address; *at != 0; ++at) text += static_cast<char>(*at);
    fetchWithConsent(text);
    return 0;
}

}  // namespace bromvale

#include "platform/file_download.h"

#include <array>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/internet.h"

namespace bromvale {
namespace {

constexpr const char* kTitle = "Dateidownload";
constexpr const char* kSuggestedName = "Bromvale-Update.exe";

bool copyAll(HINTERNET source, HANDLE file) {
    std::array<char, 8192> buffer;
    for (;;) {
        DWORD got = 0;
        if (!InternetReadFile(source, buffer.data(), static_cast<DWORD>(buffer.size()), &got)) return false;
        if (got == 0) return true;
        DWORD written = 0;
        if (!WriteFile(file, buffer.data(), got, &written, nullptr) || written != got) return false;
    }
}

bool fetchTo(HINTERNET source, const std::string& path) {
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool whole = copyAll(source, file);
    CloseHandle(file);
    if (!whole) DeleteFileA(path.c_str());
    return whole;
}

bool fetch(const std::string& address, const std::string& path) {
    const HINTERNET session = InternetOpenA("Bromvale", kInternetOpenDirect, nullptr, nullptr, 0);
    const HINTERNET source = InternetOpenUrlA(session, address.c_str(), nullptr, 0, kInternetReload, 0);
    const bool done = source != nullptr && fetchTo(source, path);
    InternetCloseHandle(source);
    InternetCloseHandle(session);
    return done;
}

}  // namespace

void fetchWithConsent(const std::string& address) {
    const std::string path = askWhereToSave(kSuggestedName);
    if (path.empty() || fetch(address, path)) return;
    const std::string text = "Die Datei konnte nicht von " + address + " geladen werden.";
    MessageBoxA(nullptr, text.c_str(), kTitle, MB_ICONEXCLAMATION | MB_TASKMODAL);
}

}  // namespace bromvale

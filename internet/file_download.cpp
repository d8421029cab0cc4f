#include "internet/file_download.h"

#include <array>
#include <string>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/internet.h"

namespace bromvale {
namespace {

constexpr const char* kTitle = "Dateidownload";
constexpr const char* kSuggestedName = "Bromvale-Update.exe";

// A file that is being made, under its temporary name.
struct PartFile {
    std::string path;
    HANDLE file = INVALID_HANDLE_VALUE;
};

// A server's page about an error is not the file that was asked for.
bool isTheFile(const WebAnswer& answer) {
    const auto status = answer.status();
    return status && *status >= 200 && *status < 300;
}

// False where less comes than the head has said: not every library tells of a line that broke.
bool copyAll(WebAnswer& source, HANDLE file) {
    const auto length = source.length();
    DWORD copied = 0;
    std::array<char, 8192> buffer;
    for (;;) {
        std::size_t read = 0;
        if (!source.read(buffer.data(), buffer.size(), read)) return false;
        if (read == 0) return !length || copied == *length;
        const auto got = static_cast<DWORD>(read);
        DWORD written = 0;
        if (!WriteFile(file, buffer.data(), got, &written, nullptr) || written != got) return false;
        copied += got;
    }
}

// In the folder of the file itself, so that it can be moved to its place in one step.
PartFile makePartOf(const std::string& path) {
    constexpr int kMostTries = 100;
    PartFile part;
    for (int i = 1; i <= kMostTries && part.file == INVALID_HANDLE_VALUE; ++i) {
        part.path = path + "." + std::to_string(i) + ".teil";
        part.file = CreateFileA(part.path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    return part;
}

// The old file goes only now. Old systems can't replace it in the same step.
bool moveOver(const std::string& part, const std::string& path) {
    const bool free =
        GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES || DeleteFileA(path.c_str());
    if (free) return MoveFileA(part.c_str(), path.c_str());
    DeleteFileA(part.c_str());
    return false;
}

bool fetchTo(WebAnswer& source, const std::string& path) {
    const PartFile part = makePartOf(path);
    if (part.file == INVALID_HANDLE_VALUE) return false;
    const bool whole = copyAll(source, part.file);
    CloseHandle(part.file);
    if (whole) return moveOver(part.path, path);
    DeleteFileA(part.path.c_str());
    return false;
}

}  // namespace

bool fetchFile(const std::string& address, const std::string& path) {
    WebAnswer source(address, "Bromvale");
    return source.came() && isTheFile(source) && fetchTo(source, path);
}

void fetchWithConsent(const std::string& address) {
    const std::string path = askWhereToSave(kSuggestedName);
    if (path.empty() || fetchFile(address, path)) return;
    const std::string text = "Die Datei konnte nicht von " + address + " geladen werden.";
    MessageBoxA(nullptr, text.c_str(), kTitle, MB_ICONEXCLAMATION | MB_TASKMODAL);
}

}  // namespace bromvale

#include "starter/win32/wide.h"
#include "starter/win32/windows_machine.h"

namespace bromvale::starter {
namespace {

HANDLE openFile(const std::u16string& path, DWORD access, DWORD share, DWORD how) {
    if (const WideCalls* const calls = wide()) {
        return calls->createFile(units(path), access, share, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    return CreateFileA(toCodePage(path).c_str(), access, share, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool deleteFile(const std::u16string& path) {
    return (wide() != nullptr ? wide()->deleteFile(units(path)) : DeleteFileA(toCodePage(path).c_str())) != 0;
}

std::u16string fileOfStarter() {
    const WideCalls* const calls = wide();
    if (calls == nullptr) {
        char path[MAX_PATH];
        return fromCodePage({path, GetModuleFileNameA(nullptr, path, MAX_PATH)});
    }
    std::u16string path(32768, u'\0');
    path.resize(calls->moduleFileName(nullptr, units(path), static_cast<DWORD>(path.size())));
    return path;
}

}  // namespace

WindowsMachine::WindowsMachine() : folder_(fileOfStarter()) {
    folder_.erase(folder_.rfind(u'\\') + 1);
}

std::u16string WindowsMachine::pathOf(std::string_view name) const {
    return folder_ + std::u16string(name.begin(), name.end());
}

File WindowsMachine::readFile(std::string_view name) {
    const HANDLE file = openFile(pathOf(name), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        return {error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? Found::No : Found::Unknown,
                {}};
    }
    std::string bytes(kLargestFile + 1, '\0');
    DWORD read = 0;
    const BOOL done = ReadFile(file, bytes.data(), kLargestFile + 1, &read, nullptr);
    CloseHandle(file);
    if (!done || read > kLargestFile) return {Found::Unknown, {}};
    bytes.resize(read);
    return {Found::Yes, std::move(bytes)};
}

bool WindowsMachine::writeFile(std::string_view name, std::string_view bytes) {
    const HANDLE file = openFile(pathOf(name), GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool done =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
        written == bytes.size() && FlushFileBuffers(file) != 0;
    const bool closed = CloseHandle(file) != 0;
    if (done && closed) return true;
    deleteFile(pathOf(name));
    return false;
}

bool WindowsMachine::replaceFile(std::string_view from, std::string_view to) {
    if (const WideCalls* const calls = wide()) {
        return calls->moveFile(units(pathOf(from)), units(pathOf(to)),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    }
    deleteFile(pathOf(to));
    return MoveFileA(toCodePage(pathOf(from)).c_str(), toCodePage(pathOf(to)).c_str()) != 0;
}

void WindowsMachine::removeFile(std::string_view name) {
    deleteFile(pathOf(name));
}

std::string WindowsMachine::toCodePage(std::u16string_view text) {
    return starter::toCodePage(text);
}

std::u16string WindowsMachine::fromCodePage(std::string_view text) {
    return starter::fromCodePage(text);
}

}  // namespace bromvale::starter

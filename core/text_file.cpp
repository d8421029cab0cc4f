#include "core/text_file.h"

#include <array>
#include <map>

#include "base/c_text.h"
#include "base/failure.h"
#include "platform/files.h"

namespace bromvale {
namespace {

struct OpenTextFile {
    HANDLE handle;
    std::string path;
    FileMode mode;
    std::string unread;  // read from the disk, not yet asked for
    std::size_t next = 0;
    bool drained = false;
};

std::map<int, OpenTextFile>& openFiles() {
    static std::map<int, OpenTextFile> files;
    return files;
}

struct CodeRow {
    DWORD code;
    int number;
};

constexpr DWORD kDiskFull = 112;

constexpr std::array kPathFailures{
    CodeRow{ERROR_FILE_NOT_FOUND, 53},
    CodeRow{ERROR_PATH_NOT_FOUND, 76},
    CodeRow{ERROR_INVALID_DRIVE, 76},
    CodeRow{ERROR_BAD_NETPATH, 76},
    CodeRow{ERROR_BAD_NET_NAME, 76},
    CodeRow{ERROR_INVALID_NAME, 52},
    CodeRow{ERROR_BAD_PATHNAME, 52},
    CodeRow{ERROR_SHARING_VIOLATION, 70},
    CodeRow{ERROR_WRITE_PROTECT, 70},
    CodeRow{ERROR_HANDLE_DISK_FULL, 61},
    CodeRow{kDiskFull, 61},
};

constexpr std::array kWriteFailures{
    CodeRow{ERROR_HANDLE_DISK_FULL, 61},
    CodeRow{kDiskFull, 61},
};

template <std::size_t Size>
[[noreturn]] void raiseFor(DWORD code, const std::array<CodeRow, Size>& rows, int otherwise) {
    for (const CodeRow& row : rows) {
        if (row.code == code) raise(row.number);
    }
    raise(otherwise);
}

OpenTextFile& fileOf(int number) {
    const auto found = openFiles().find(number);
    if (found == openFiles().end()) raise(52);
    return found->second;
}

// Reads on until a line end and the byte behind it are there, or the file is at its end: CR and CR LF are
// told apart by that byte.
bool lineIsComplete(const OpenTextFile& file) {
    const std::size_t end = file.unread.find_first_of("\r\n", file.next);
    return end != std::string::npos && (file.unread[end] == '\n' || end + 1 < file.unread.size());
}

void readMore(OpenTextFile& file) {
    std::array<char, 4096> block;
    DWORD got = 0;
    if (ReadFile(file.handle, block.data(), static_cast<DWORD>(block.size()), &got, nullptr) == 0) raise(57);
    file.unread.erase(0, file.next);
    file.next = 0;
    file.unread.append(block.data(), got);
    file.drained = got == 0;
}

struct ModeRow {
    DWORD access;
    DWORD disposition;
};

constexpr ModeRow modeRow(FileMode mode) {
    switch (mode) {
        case FileMode::Input: return {GENERIC_READ, OPEN_EXISTING};
        case FileMode::Output: return {GENERIC_WRITE, CREATE_ALWAYS};
        case FileMode::Append: return {GENERIC_WRITE, OPEN_ALWAYS};
    }
    return {};
}

}  // namespace

int freeFile() {
    int number = 1;
    while (openFiles().contains(number)) ++number;
    return number;
}

void openFile(std::string_view path, FileMode mode, int number) {
    if (openFiles().contains(number)) raise(55);
    if (path.empty() || path.find_first_of("*?") != std::string_view::npos) raise(52);
    const ModeRow row = modeRow(mode);
    const HANDLE handle = CreateFileA(CText(path).get(), row.access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, row.disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) raiseFor(GetLastError(), kPathFailures, 75);
    if (mode == FileMode::Append) SetFilePointer(handle, 0, nullptr, FILE_END);
    openFiles().emplace(number, OpenTextFile{handle, std::string(path), mode, {}});
}

void writeFile(int number, std::string_view bytes) {
    OpenTextFile& file = fileOf(number);
    if (file.mode == FileMode::Input) raise(54);
    DWORD written = 0;
    if (WriteFile(file.handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0) {
        raiseFor(GetLastError(), kWriteFailures, 57);
    }
    if (written != bytes.size()) raise(61);
}

void writeWholeOrNothing(int number, std::string_view bytes) {
    const HANDLE handle = fileOf(number).handle;
    LONG high = 0;
    const DWORD low = SetFilePointer(handle, 0, &high, FILE_CURRENT);
    if (low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR) raise(57);
    try {
        writeFile(number, bytes);
    } catch (const Failure&) {
        SetFilePointer(handle, static_cast<LONG>(low), &high, FILE_BEGIN);
        SetEndOfFile(handle);
        throw;
    }
}

bool isEmptyFile(int number) {
    DWORD high = 0;
    const DWORD low = GetFileSize(fileOf(number).handle, &high);
    if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR) raise(57);
    return low == 0 && high == 0;
}

std::optional<FileStart> fileStart(std::string_view path, std::size_t count) {
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE;
    const HANDLE file = CreateFileA(CText(path).get(), GENERIC_READ, kAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return std::nullopt;
        raiseFor(error, kPathFailures, 75);
    }
    DWORD high = 0;
    const DWORD low = GetFileSize(file, &high);
    FileStart start{std::string(count, '\0'), (std::uint64_t{high} << 32) | low};
    DWORD got = 0;
    const bool read = (low != INVALID_FILE_SIZE || GetLastError() == NO_ERROR) &&
                      ReadFile(file, start.bytes.data(), static_cast<DWORD>(count), &got, nullptr) != 0;
    CloseHandle(file);
    if (!read) raise(57);
    start.bytes.resize(got);
    return start;
}

void writeLine(int number, std::string_view text) {
    std::string line;
    line.reserve(text.size() + 2);
    writeFile(number, line.append(text).append("\r\n"));
}

bool endOfFile(int number) {
    OpenTextFile& file = fileOf(number);
    while (file.next == file.unread.size() && !file.drained) readMore(file);
    return file.next == file.unread.size();
}

std::string readLine(int number) {
    if (endOfFile(number)) raise(62);
    OpenTextFile& file = fileOf(number);
    while (!file.drained && !lineIsComplete(file)) readMore(file);
    const std::size_t end = file.unread.find_first_of("\r\n", file.next);
    std::string line = file.unread.substr(file.next, end == std::string::npos ? end : end - file.next);
    if (end == std::string::npos) {
        file.next = file.unread.size();
    } else {
        const bool pair = file.unread.compare(end, 2, "\r\n") == 0;
        file.next = end + (pair ? 2 : 1);
    }
    return line;
}

void closeFile(int number) {
    const auto found = openFiles().find(number);
    if (found == openFiles().end()) return;
    CloseHandle(found->second.handle);
    openFiles().erase(found);
}

int openFileCount() {
    return static_cast<int>(openFiles().size());
}

void makeFolder(std::string_view path) {
    if (CreateDirectoryA(CText(path).get(), nullptr) == 0) raiseFor(GetLastError(), kPathFailures, 75);
}

}  // namespace bromvale

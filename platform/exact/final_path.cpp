#include "platform/exact/final_path.h"

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

// The longest path of all, in UTF-16 units with its NUL.
constexpr DWORD kLongestPath = 32768;

// Kinds of paths that the system is asked for.
constexpr DWORD kByDriveLetter = 0;
constexpr DWORD kByDevice = 2;

std::u16string nameOf(HANDLE file, DWORD kind) {
    std::u16string path(MAX_PATH, u'\0');
    for (;;) {
        const auto size = static_cast<DWORD>(path.size());
        const DWORD length = wide()->finalPathName(file, reinterpret_cast<WCHAR*>(path.data()), size, kind);
        if (length < size) return path.substr(0, length);
        // Too small: the length that it asks for, with the NUL.
        if (size == kLongestPath) return {};
        path.assign(length > size && length < kLongestPath ? length : kLongestPath, u'\0');
    }
}

}  // namespace

bool tellsFinalPaths() {
    return wide() != nullptr && wide()->finalPathName != nullptr;
}

std::u16string finalPath(const std::string& path, Links links) {
    if (!tellsFinalPaths()) return {};
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const DWORD itself = links == Links::Open ? static_cast<DWORD>(FILE_FLAG_OPEN_REPARSE_POINT) : 0;
    const std::u16string sought = wideText(path);
    // Asks for the attributes alone, which is allowed for a file that another program has locked, too.
    const HANDLE file =
        wide()->createFile(reinterpret_cast<const WCHAR*>(sought.c_str()), FILE_READ_ATTRIBUTES, kAll,
                           nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | itself, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    // Drives that the system's list of volumes doesn't know, such as those in memory, have no path of the
    // first kind.
    std::u16string result = nameOf(file, kByDriveLetter);
    if (result.empty()) result = nameOf(file, kByDevice);
    CloseHandle(file);
    return result;
}

}  // namespace bromvale

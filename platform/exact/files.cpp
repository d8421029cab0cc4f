#include "platform/exact/files.h"

#include <cstring>

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

template <std::size_t size>
std::string textOf(const char (&name)[size]) {
    return {name, strnlen(name, size)};
}
template <std::size_t size>
std::string textOf(const WCHAR (&name)[size]) {
    const std::u16string_view all(reinterpret_cast<const char16_t*>(name), size);
    return exactText(all.substr(0, all.find(u'\0')));
}

template <class Data>
void take(const Data& found, FoundEntry& entry) {
    entry.name = textOf(found.cFileName);
    entry.shortName = textOf(found.cAlternateFileName);
    entry.attributes = found.dwFileAttributes;
    // Some systems tell the attribute alone, and leave here what was here before.
    entry.reparseTag =
        (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? found.dwReserved0 : DWORD{0};
    entry.size = (std::uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
    entry.written = found.ftLastWriteTime;
}

// The longest path of all, in UTF-16 units with its NUL.
constexpr DWORD kLongestPath = 32768;

// Kinds of paths that the system is asked for.
constexpr DWORD kByDriveLetter = 0;
constexpr DWORD kByDevice = 2;

std::u16string nameOf(HANDLE file, DWORD kind) {
    std::u16string path(MAX_PATH, u'\0');
    for (;;) {
        const auto size = static_cast<DWORD>(path.size());
        const DWORD length = wide()->finalPathName(file, units(path.data()), size, kind);
        if (length < size) return path.substr(0, length);
        // Too small: the length that it asks for, with the NUL.
        if (size == kLongestPath) return {};
        path.assign(length > size && length < kLongestPath ? length : kLongestPath, u'\0');
    }
}

}  // namespace

FolderSearch::FolderSearch(const std::string& sought) {
    begin(sought);
    if (search_ == INVALID_HANDLE_VALUE && error_ == 0) error_ = GetLastError();
}

FolderSearch::~FolderSearch() {
    if (search_ != INVALID_HANDLE_VALUE) FindClose(search_);
}

void FolderSearch::begin(const std::string& sought) {
    if (wide() != nullptr) {
        WIN32_FIND_DATAW data{};
        const std::u16string path = wideText(sought);
        search_ = wide()->findFirstFile(units(path.c_str()), &data);
        ready_ = search_ != INVALID_HANDLE_VALUE;
        if (ready_) take(data, found_);
    } else if (!isExact(sought)) {
        error_ = ERROR_INVALID_NAME;
    } else {
        WIN32_FIND_DATAA data{};
        search_ = FindFirstFileA(sought.c_str(), &data);
        ready_ = search_ != INVALID_HANDLE_VALUE;
        if (ready_) take(data, found_);
    }
}

bool FolderSearch::read() {
    if (wide() != nullptr) {
        WIN32_FIND_DATAW data{};
        if (wide()->findNextFile(search_, &data) == 0) return false;
        take(data, found_);
    } else {
        WIN32_FIND_DATAA data{};
        if (FindNextFileA(search_, &data) == 0) return false;
        take(data, found_);
    }
    return true;
}

bool FolderSearch::next(FoundEntry& entry) {
    if (search_ == INVALID_HANDLE_VALUE || error_ != 0) return false;
    if (!ready_ && !read()) {
        const DWORD error = GetLastError();
        error_ = error == ERROR_NO_MORE_FILES ? 0 : error;
        return false;
    }
    ready_ = false;
    entry = found_;
    return true;
}

bool walkFolder(const std::string& sought, FunctionRef<bool(const FoundEntry&)> visit) {
    FolderSearch search(sought);
    FoundEntry entry;
    while (search.next(entry)) {
        const bool ofTheFolderItself = entry.name == "." || entry.name == "..";
        if (!ofTheFolderItself && !visit(entry)) return false;
    }
    return search.error() == 0;
}

DWORD findEntry(const std::string& path, FoundEntry& entry) {
    FolderSearch search(path);
    return search.next(entry) ? DWORD{0} : search.error();
}

bool fitsPath(const std::string& path) {
    return (isExact(path) ? path.size() : wideText(path).size()) < MAX_PATH;
}

bool tellsFinalPaths() {
    return wide() != nullptr && wide()->finalPathName != nullptr;
}

std::u16string finalPath(const std::string& path, Links links) {
    if (!tellsFinalPaths()) return {};
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const DWORD itself = links == Links::Open ? static_cast<DWORD>(FILE_FLAG_OPEN_REPARSE_POINT) : 0;
    const std::u16string sought = wideText(path);
    // Asks for the attributes alone, which is allowed for a file that another program has locked, too.
    const HANDLE file = wide()->createFile(units(sought.c_str()), FILE_READ_ATTRIBUTES, kAll, nullptr,
                                           OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | itself, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    // Drives that the system's list of volumes doesn't know, such as those in memory, have no path of the
    // first kind.
    std::u16string result = nameOf(file, kByDriveLetter);
    if (result.empty()) result = nameOf(file, kByDevice);
    CloseHandle(file);
    return result;
}

}  // namespace bromvale

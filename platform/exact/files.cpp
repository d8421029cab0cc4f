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
        search_ = wide()->findFirstFile(reinterpret_cast<const WCHAR*>(path.c_str()), &data);
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

}  // namespace bromvale

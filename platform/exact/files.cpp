#include "platform/exact/files.h"

#include <cstring>

#include "platform/exact/text.h"
#include "platform/wide.h"

namespace bromvale {
namespace {

std::u16string_view beforeNul(const WCHAR* text, std::size_t size) {
    const auto* const units = reinterpret_cast<const char16_t*>(text);
    const std::u16string_view all(units, size);
    return all.substr(0, all.find(u'\0'));
}

std::string nameOf(const WIN32_FIND_DATAA& found) {
    return {found.cFileName, strnlen(found.cFileName, sizeof found.cFileName)};
}
std::string nameOf(const WIN32_FIND_DATAW& found) {
    return exactText(beforeNul(found.cFileName, std::size(found.cFileName)));
}
std::string shortNameOf(const WIN32_FIND_DATAA& found) {
    return {found.cAlternateFileName, strnlen(found.cAlternateFileName, sizeof found.cAlternateFileName)};
}
std::string shortNameOf(const WIN32_FIND_DATAW& found) {
    return exactText(beforeNul(found.cAlternateFileName, std::size(found.cAlternateFileName)));
}

template <class Data>
void take(const Data& found, FoundEntry& entry) {
    entry.name = nameOf(found);
    entry.shortName = shortNameOf(found);
    entry.attributes = found.dwFileAttributes;
    // Some systems tell the attribute alone, and leave here what was here before.
    entry.reparseTag =
        (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? found.dwReserved0 : DWORD{0};
    entry.size = (std::uint64_t{found.nFileSizeHigh} << 32) | found.nFileSizeLow;
    entry.written = found.ftLastWriteTime;
}

const WCHAR* windowsText(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
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
        search_ = wide()->findFirstFile(windowsText(wideText(sought)), &data);
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

DWORD findEntry(const std::string& path, FoundEntry& entry) {
    FolderSearch search(path);
    return search.next(entry) ? DWORD{0} : search.error();
}

bool fitsPath(const std::string& path) {
    return (isExact(path) ? path.size() : wideText(path).size()) < MAX_PATH;
}

}  // namespace bromvale

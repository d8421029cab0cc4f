// FindFirstFileA and its followers.
#include <algorithm>

#include "platform/offline/files/api.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

using namespace bromvale::offline;

namespace {

// False for a name that takes more bytes than the record holds, as it can with several bytes a character.
template <class Char, std::size_t Size>
bool copyName(std::string_view stored, Char (&buffer)[Size]) {
    const auto text = textFor<Char>(stored);
    const std::basic_string_view<Char> name = text;
    buffer[name.copy(buffer, Size - 1)] = Char{};
    return name.size() < Size;
}

// False and the last error where the name doesn't fit.
template <class Data>
bool fill(Data& data, const FileInfo& info) {
    const FILETIME time = toFileTime(info.written);
    data.dwFileAttributes = info.attributes;
    data.ftCreationTime = data.ftLastAccessTime = data.ftLastWriteTime = time;
    data.nFileSizeHigh = static_cast<DWORD>(info.size >> 32);
    data.nFileSizeLow = static_cast<DWORD>(info.size);
    const bool link = (info.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    data.dwReserved0 = link ? IO_REPARSE_TAG_SYMLINK : 0;
    data.dwReserved1 = 0;
    (void)copyName(info.shortName, data.cAlternateFileName);
    return copyName(info.name, data.cFileName) || failed(ERROR_MORE_DATA);
}

HANDLE fail(DWORD error) {
    return failed(error, INVALID_HANDLE_VALUE);
}

template <class Data>
HANDLE findElsewhere(std::string_view path, Data& data) {
    ++machine().drives.soughtElsewhere;
    FileInfo info;
    info.name = path.substr(path.find_last_of("\\/:") + 1);
    return fill(data, info) ? machine().searches.open({}) : INVALID_HANDLE_VALUE;
}

template <class Data>
HANDLE findOne(std::string_view path, Data& data) {
    Location location;
    if (const DWORD error = machine().drives.locateStored(path, location)) return fail(error);
    FileInfo info;
    // A root has no entry of its own that could be found.
    if (location.count == 0) return fail(ERROR_FILE_NOT_FOUND);
    const DWORD error = location.volume->find(location.all(), &info);
    if (error == ERROR_CANT_ACCESS_FILE && machine().drives.othersAreElsewhere)
        return findElsewhere(path, data);
    if (error != 0) return fail(error);
    return fill(data, info) ? machine().searches.open({}) : INVALID_HANDLE_VALUE;
}

template <class Data>
HANDLE findMany(std::string_view folder, std::string_view mask, Data& data) {
    if (mask.find_first_of("|:") != std::string_view::npos) return fail(ERROR_INVALID_NAME);
    Location location;
    const std::string_view where = folder.empty() ? std::string_view(".") : folder;
    if (const DWORD error = machine().drives.locateStored(where, location)) return fail(error);
    Search search;
    const DWORD error = location.volume->list(location.all(), search.entries);
    if (error != 0) return fail(error == ERROR_FILE_NOT_FOUND ? ERROR_PATH_NOT_FOUND : error);
    std::erase_if(search.entries, [mask](const FileInfo& info) {
        return !matchesMask(mask, info.name) &&
               (info.shortName.empty() || !matchesMask(mask, info.shortName));
    });
    std::sort(search.entries.begin(), search.entries.end(), [](const FileInfo& left, const FileInfo& right) {
        return compareStored(left.name, right.name) < 0;
    });
    if (location.count > 0) {
        FileInfo self;
        (void)location.volume->find(location.all(), &self);
        self.shortName.clear();
        for (const char* name : {"..", "."}) {
            if (!matchesMask(mask, name)) continue;
            self.name = name;
            search.entries.insert(search.entries.begin(), self);
        }
    }
    if (search.entries.empty()) return fail(ERROR_FILE_NOT_FOUND);
    if (!fill(data, search.entries[0])) return INVALID_HANDLE_VALUE;
    search.next = 1;
    return machine().searches.open(std::move(search));
}

// `whole` is in the stored form.
template <class Data>
HANDLE findFirst(std::string_view whole, Data& data) {
    if (whole.empty()) return fail(ERROR_PATH_NOT_FOUND);
    if (machine().drives.isElsewhere(whole)) return findElsewhere(whole, data);
    const std::size_t slash = whole.find_last_of("\\/");
    std::size_t start = slash == std::string_view::npos ? 0 : slash + 1;
    if (start == 0 && whole.size() >= 2 && whole[1] == ':') start = 2;
    const std::string_view mask = whole.substr(start);
    if (slash != std::string_view::npos && mask.empty()) {
        Location location;
        const DWORD error = machine().drives.locateStored(whole, location);
        return fail(error != 0 ? error : ERROR_FILE_NOT_FOUND);
    }
    if (mask.find_first_of("*?") == std::string_view::npos) return findOne(whole, data);
    return findMany(whole.substr(0, start), mask, data);
}

template <class Data>
BOOL findNext(HANDLE find, Data& data) {
    if (failsHere("FindNextFileA")) return FALSE;
    Search* search = machine().searches.find(find);
    if (search == nullptr) return failed(ERROR_INVALID_HANDLE);
    if (search->next >= search->entries.size()) return failed(ERROR_NO_MORE_FILES);
    return fill(data, search->entries[search->next++]) ? TRUE : FALSE;
}

}  // namespace

HANDLE FindFirstFileA(LPCSTR path, LPWIN32_FIND_DATAA data) {
    return failsHere("FindFirstFileA") ? INVALID_HANDLE_VALUE : findFirst(StoredText(path).view(), *data);
}

HANDLE FindFirstFileW(LPCWSTR path, LPWIN32_FIND_DATAW data) {
    if (refusesWide() || failsHere("FindFirstFileA")) return INVALID_HANDLE_VALUE;
    return findFirst(StoredText(path).view(), *data);
}

BOOL FindNextFileA(HANDLE find, LPWIN32_FIND_DATAA data) {
    return findNext(find, *data);
}

BOOL FindNextFileW(HANDLE find, LPWIN32_FIND_DATAW data) {
    return refusesWide() ? FALSE : findNext(find, *data);
}

BOOL FindClose(HANDLE find) {
    if (failsHere("FindClose")) return FALSE;
    return machine().searches.close(find) ? TRUE : failed(ERROR_INVALID_HANDLE);
}

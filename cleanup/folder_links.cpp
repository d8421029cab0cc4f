#include "cleanup/folder_links.h"

#include <utility>

#include "cleanup/entry_names.h"
#include "core/runtime.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/final_path.h"
#include "platform/text_case.h"

namespace bromvale {
namespace {

bool isFolder(const WIN32_FIND_DATAA& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The two entries that every folder has of itself and of the one above; they have no short names, while an
// entry whose wide dots are merely listed as dots may have one.
bool isDots(const WIN32_FIND_DATAA& found) {
    const std::string_view name = found.cFileName;
    return (name == "." || name == "..") && !isPlainName(found.cAlternateFileName);
}

// A link to a folder, or a folder where another volume is mounted. Some systems tell the attribute alone; and
// folders of other kinds (kept by a network service, say) carry it too, with a tag that lacks this bit.
bool isFolderLink(const WIN32_FIND_DATAA& found) {
    constexpr DWORD kStandsForAnotherName = 0x20000000;
    return isFolder(found) && (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == 0 || (found.dwReserved0 & kStandsForAnotherName) != 0);
}

}  // namespace

EmptiedFolder::EmptiedFolder(std::string path)
    : path_(std::move(path)), finalPath_(finalPath(path_, Links::Follow)) {
    if (!finalPath_.empty()) finalPath_ = withBackslash(finalPath_);
}

bool EmptiedFolder::holds(const std::string& name, const std::string& listed) const {
    if (finalPath_.empty()) return true;
    const std::string entry = finalPath(path_ + name, Links::Open);
    return entry.empty() || compareWithoutCase(entry, finalPath_ + listed) == 0;
}

bool EmptiedFolder::takeLinksOut(const std::string& name) const {
    return takeLinksOut(name, true);
}

bool EmptiedFolder::takeLink(const WIN32_FIND_DATAA& found, bool entries,
                             std::vector<std::string>& folders) const {
    if (isDots(found)) return true;
    const std::string name = reachableName(found);
    // A file that has no usable name goes with its folder, for which nobody need name it. A folder that has
    // none can't be looked into.
    if (name.empty()) return !isFolder(found);
    if (!holds(name, found.cFileName)) return false;
    if (isFolderLink(found)) return RemoveDirectoryA((path_ + name).c_str()) != 0 && !entries;
    if (isFolder(found)) folders.push_back(name);
    return true;
}

bool EmptiedFolder::takeLinksOut(const std::string& pattern, bool entries) const {
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA((path_ + pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const bool vanished = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return vanished && !entries;
    }
    bool clean = true;
    std::vector<std::string> folders;
    do {
        ServeWindows();
        clean = takeLink(found, entries, folders) && clean;
    } while (FindNextFileA(search, &found) != 0);
    clean = clean && GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    for (const std::string& name : folders) {
        clean = EmptiedFolder(path_ + name + "\\").takeLinksOut("*", false) && clean;
    }
    return clean;
}

}  // namespace bromvale

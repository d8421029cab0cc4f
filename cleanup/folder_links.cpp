#include "cleanup/folder_links.h"

#include <utility>
#include <vector>

#include "core/runtime.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/final_path.h"
#include "platform/text_case.h"

namespace bromvale {
namespace {

// A link to a folder, or a folder where another volume is mounted. Some systems tell the attribute alone; and
// folders of other kinds (kept by a network service, say) carry it too, with a tag that lacks this bit.
bool isFolderLink(const WIN32_FIND_DATAA& found) {
    constexpr DWORD kStandsForAnotherName = 0x20000000;
    return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == 0 || (found.dwReserved0 & kStandsForAnotherName) != 0);
}

}  // namespace

EmptiedFolder::EmptiedFolder(std::string path)
    : path_(std::move(path)), finalPath_(finalPath(path_, Links::Follow)) {
    if (!finalPath_.empty()) finalPath_ = withBackslash(finalPath_);
}

bool EmptiedFolder::holds(const std::string& name) const {
    if (finalPath_.empty()) return true;
    const std::string entry = finalPath(path_ + name, Links::Open);
    return entry.empty() || compareWithoutCase(entry, finalPath_ + name) == 0;
}

bool EmptiedFolder::takeLinksOut(const std::string& name) const {
    return takeLinksOut(name, true);
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
        const std::string name = found.cFileName;
        ServeWindows();
        if (name == "." || name == "..") continue;
        if (!holds(name)) {
            clean = false;
        } else if (isFolderLink(found)) {
            const bool removed = RemoveDirectoryA((path_ + name).c_str()) != 0;
            clean = clean && removed && !entries;
        } else if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            folders.push_back(name);
        }
    } while (FindNextFileA(search, &found) != 0);
    clean = clean && GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    for (const std::string& name : folders) {
        clean = EmptiedFolder(path_ + name + "\\").takeLinksOut("*", false) && clean;
    }
    return clean;
}

}  // namespace bromvale

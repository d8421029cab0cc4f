#include "cleanup/folder_links.h"

#include <utility>

#include "cleanup/entry_names.h"
#include "platform/events.h"
#include "platform/exact/files.h"
#include "platform/exact/text.h"

namespace bromvale {
namespace {

// A link to a folder, or a folder where another volume is mounted. Some systems tell the attribute alone; and
// folders of other kinds (kept by a network service, say) carry it too, with a tag that lacks this bit.
bool isFolderLink(const FoundEntry& found) {
    constexpr DWORD kStandsForAnotherName = 0x20000000;
    return found.isFolder() && (found.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.reparseTag == 0 || (found.reparseTag & kStandsForAnotherName) != 0);
}

bool removeLink(const std::string& path) {
    return isExact(path) && RemoveDirectoryA(path.c_str()) != 0;
}

}  // namespace

EmptiedFolder::EmptiedFolder(std::string path)
    : path_(std::move(path)), finalPath_(finalPath(path_, Links::Follow)) {
    if (!finalPath_.empty() && finalPath_.back() != u'\\') finalPath_ += u'\\';
}

EmptiedFolder::EmptiedFolder(std::string path, std::u16string finalPath)
    : path_(std::move(path)), finalPath_(std::move(finalPath)) {}

// Its final path isn't asked for anew: where a link was put in its place by now, what lies below is found to
// be elsewhere.
EmptiedFolder EmptiedFolder::sub(const SubFolder& folder) const {
    const std::u16string below = tellsFinalPaths() ? finalPath_ + wideText(folder.listed) + u'\\' : u"";
    return {path_ + folder.name + "\\", below};
}

bool EmptiedFolder::holds(const std::string& name, const std::string& listed) const {
    const std::string path = path_ + name;
    if (!fitsPath(path)) return false;
    if (!tellsFinalPaths()) return true;
    return !finalPath_.empty() && finalPath(path, Links::Open) == finalPath_ + wideText(listed);
}

EmptiedFolder::Finding EmptiedFolder::takeLinksOut(const std::string& name, const std::string& listed) const {
    FoundEntry found;
    if (findEntry(path_ + name, found) != 0) return hasVanished(listed) ? Finding::Gone : Finding::Unsure;
    if (found.name != listed || !holds(name, listed)) return Finding::Unsure;
    if (isFolderLink(found)) return removeLink(path_ + name) ? Finding::Gone : Finding::Unsure;
    if (!found.isFolder()) return Finding::Clear;
    return sub({name, listed}).takeAllLinksOut() && isStillFolder(name, listed) ? Finding::Clear
                                                                                : Finding::Unsure;
}

// Looking through a folder takes its time, and a link may stand in its place by now.
bool EmptiedFolder::isStillFolder(const std::string& name, const std::string& listed) const {
    FoundEntry found;
    return findEntry(path_ + name, found) == 0 && found.name == listed && found.isFolder() &&
           !isFolderLink(found) && holds(name, listed);
}

// An entry that the ANSI functions don't reach is looked at under its true name, and goes with its folder.
bool EmptiedFolder::takeLink(const FoundEntry& found, std::vector<SubFolder>& folders) const {
    const std::string reachable = reachableName(path_, found);
    const std::string& name = reachable.empty() ? found.name : reachable;
    if (!isSoundName(name) || !holds(name, found.name)) return false;
    if (isFolderLink(found)) return removeLink(path_ + name);
    if (found.isFolder()) folders.push_back({name, found.name});
    return true;
}

bool EmptiedFolder::takeAllLinksOut() const {
    if (!fitsPath(path_ + "*")) return false;
    std::vector<SubFolder> folders;
    const auto look = [&](const FoundEntry& found) {
        ServeWindows();
        return takeLink(found, folders) || hasVanished(found.name);
    };
    if (!walkFolder(path_ + "*", look)) return false;
    for (const SubFolder& folder : folders) {
        if (!sub(folder).takeAllLinksOut() && !hasVanished(folder.listed)) return false;
    }
    return true;
}

// No error tells that: a path that is too long looks like a missing one. Only a folder that is listed to its
// end without the entry has lost it.
bool EmptiedFolder::hasVanished(const std::string& listed) const {
    return walkFolder(path_ + "*", [&](const FoundEntry& found) { return found.name != listed; });
}

}  // namespace bromvale

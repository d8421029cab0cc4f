#include "platform/offline/files/inside.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr int kMostLinks = 40;
constexpr std::size_t kMostSteps = 4096;

// Both separators: a link may tell Windows' path as it is. No name on a disk of Windows holds either.
void addNames(std::vector<std::string>& pending, std::string_view path) {
    const std::size_t before = pending.size();
    while (!path.empty()) {
        const std::string_view name = path.substr(0, path.find_first_of("/\\"));
        path.remove_prefix(std::min(path.size(), name.size() + 1));
        if (!name.empty() && name != ".") pending.emplace_back(name);
    }
    std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(before), pending.end());
}

bool hasDrive(std::string_view path) {
    const auto first = static_cast<unsigned char>(path.empty() ? '\0' : path[0] | 0x20);
    return path.size() >= 2 && path[1] == ':' && first >= 'a' && first <= 'z';
}

std::string linkTarget(const std::string& link) {
    std::string target(4096, '\0');
    const ssize_t size = ::readlink(link.c_str(), target.data(), target.size());
    target.resize(
        size < 0 || static_cast<std::size_t>(size) == target.size() ? 0 : static_cast<std::size_t>(size));
    return target;
}

}  // namespace

bool isPlainName(std::string_view name) {
    constexpr std::string_view kSeparators("/\0", 2);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(kSeparators) == std::string_view::npos;
}

// On the way: folders that are no links, and the names that are left, the next one last.
struct InsideFolder::Walk {
    std::vector<std::string> folders;  // below the root, whole paths
    std::vector<std::string> pending;  // names of the host, or stored ones: of equal form but for odd bytes
    int links = 0;
    std::size_t steps = 0;
    InsidePath result;
};

InsideFolder::InsideFolder(const std::string& root, char letter) : letter_(letter) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(root.c_str(), nullptr), std::free);
    if (real != nullptr) root_ = real.get();
    if (root_ == "/") root_ = "/.";
}

std::vector<std::string> InsideFolder::entries(const std::string& folder) {
    std::vector<std::string> names;
    int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOATIME);
    if (handle < 0) handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return names;
    DIR* const stream = ::fdopendir(handle);
    if (stream == nullptr) {
        ::close(handle);
        return names;
    }
    while (const dirent* entry = ::readdir(stream)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    ::closedir(stream);
    std::ranges::sort(names);
    return names;
}

std::optional<std::string> InsideFolder::entryOf(const std::string& folder, std::string_view name) const {
    std::string written = utf8FromStored(name);
    if (!isPlainName(written)) return std::nullopt;
    struct stat status {};
    if (::lstat((folder + "/" + written).c_str(), &status) == 0) return written;
    auto known = known_.find(folder);
    if (known == known_.end()) {
        known = known_.emplace(folder, std::map<std::string, std::string>()).first;
        for (const std::string& entry : entries(folder))
            known->second.emplace(upperStored(storedFromUtf8(entry)), entry);
    }
    const auto found = known->second.find(upperStored(name));
    if (found == known->second.end()) return std::nullopt;
    return found->second;
}

bool InsideFolder::takeLink(Walk& walk, const std::string& link) const {
    std::string_view target;
    const std::string whole = linkTarget(link);
    target = whole;
    const auto refused = [&](InsidePath::State state) {
        walk.result.state = state;
        return false;
    };
    if (++walk.links > kMostLinks) return refused(InsidePath::State::Circle);
    if (target.empty() || target.starts_with("unsupported reparse"))
        return refused(InsidePath::State::Outside);
    const std::size_t size = target.size();
    // The mounting program's own folder of drives.
    if (const std::size_t own = target.find(".NTFS-3G/"); own != std::string_view::npos)
        target.remove_prefix(own + 9);
    for (const std::string_view prefix : {"\\??\\", "\\\\?\\",
                                          "/?"
                                          "?/"})
        if (target.starts_with(prefix)) target.remove_prefix(prefix.size());
    // Behind these stands a drive, or a volume that has no letter.
    if (target.size() != size && !hasDrive(target)) return refused(InsidePath::State::Outside);
    if (hasDrive(target)) {
        if ((target[0] | 0x20) != (letter_ | 0x20)) return refused(InsidePath::State::Outside);
        target.remove_prefix(2);
        walk.folders.clear();
    } else if (target.starts_with(root_) && (target.size() == root_.size() || target[root_.size()] == '/')) {
        target.remove_prefix(root_.size());
        walk.folders.clear();
    } else if (target.starts_with('/') || target.starts_with('\\')) {
        return refused(InsidePath::State::Outside);
    }
    addNames(walk.pending, target);
    return true;
}

// One name further; false where the walk ends, with its state.
bool InsideFolder::take(Walk& walk, const std::string& name) const {
    const std::string& folder = walk.folders.empty() ? root_ : walk.folders.back();
    if (++walk.steps > kMostSteps) {
        walk.result.state = InsidePath::State::Circle;
        return false;
    }
    if (name == "..") {
        walk.result.state = InsidePath::State::Outside;
        if (walk.folders.empty()) return false;
        walk.folders.pop_back();
        return true;
    }
    const std::optional<std::string> entry = entryOf(folder, storedFromUtf8(name));
    const bool last = walk.pending.empty();
    walk.result.state = last ? InsidePath::State::Missing : InsidePath::State::NoFolder;
    const std::string path = folder + "/" + entry.value_or("");
    if (!entry || ::lstat(path.c_str(), &walk.result.status) != 0) return false;
    if (S_ISLNK(walk.result.status.st_mode)) return takeLink(walk, path);
    if (!last && !S_ISDIR(walk.result.status.st_mode)) return false;
    walk.folders.push_back(path);
    return true;
}

InsidePath InsideFolder::find(const std::string& folder, std::span<const std::string_view> names) const {
    Walk walk;
    if (root_.empty() || !folder.starts_with(root_)) return walk.result;
    std::vector<std::string> above;
    addNames(above, std::string_view(folder).substr(root_.size()));
    std::string path = root_;
    for (auto name = above.rbegin(); name != above.rend(); ++name) {
        path += "/" + *name;
        walk.folders.push_back(path);
    }
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        if (!name->empty() && *name != ".") walk.pending.push_back(utf8FromStored(*name));
    while (!walk.pending.empty()) {
        const std::string next = std::move(walk.pending.back());
        walk.pending.pop_back();
        if (!take(walk, next)) return walk.result;
    }
    walk.result.path = walk.folders.empty() ? root_ : walk.folders.back();
    const bool there = ::lstat(walk.result.path.c_str(), &walk.result.status) == 0;
    walk.result.state = there ? InsidePath::State::Found : InsidePath::State::Missing;
    if (!there) walk.result.path.clear();
    return walk.result;
}

InsidePath InsideFolder::find(const std::string& folder, std::string_view path) const {
    std::vector<std::string_view> names;
    while (!path.empty()) {
        names.push_back(path.substr(0, path.find_first_of("\\/")));
        path.remove_prefix(std::min(path.size(), names.back().size() + 1));
    }
    return find(folder, names);
}

InsidePath InsideFolder::follow(const std::string& folder, const std::string& link) const {
    const std::string stored = storedFromUtf8(link);
    const std::string_view name = stored;
    return find(folder, std::span(&name, 1));
}

std::optional<std::string> hostPathInside(const std::string& root, std::u16string_view windowsPath) {
    std::string stored = storedFromWide(windowsPath);
    std::string_view path = stored;
    if (hasDrive(path)) path.remove_prefix(2);
    const InsideFolder folder(root);
    InsidePath found = folder.find(folder.root(), path);
    if (!found.found()) return std::nullopt;
    return std::move(found.path);
}

}  // namespace bromvale::offline

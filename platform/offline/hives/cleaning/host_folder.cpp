#include "platform/offline/hives/cleaning/host_folder.h"

#include <algorithm>
#include <cerrno>
#include <set>

#include "platform/offline/hives/replay.h"

namespace bromvale::offline {
namespace {

// ntfs-3g gives these without having them in its list.
constexpr const char* kUnlistedAttributes[] = {"system.ntfs_acl", "system.ntfs_attrib"};

}  // namespace

FilePrint printOf(std::string_view bytes) {
    return {bytes.size(), marvin32(bytes)};
}

HostFolder::HostFolder(HostFiles& files, const std::string& path)
    : files_(files), path_(path), handle_(files.openFolder(path)) {}

std::string HostFolder::pathOf(const std::string& name) const {
    return path_.ends_with('/') ? path_ + name : path_ + "/" + name;
}

std::optional<struct stat> HostFolder::state(const std::string& name) const {
    return files_.state(handle_, name);
}

dev_t HostFolder::device() const {
    const std::optional<struct stat> own = state(".");
    return own ? own->st_dev : dev_t{};
}

std::string HostFolder::read(const std::string& name) const {
    const std::optional<struct stat> state = files_.state(handle_, name);
    if (!state) throw HostFailure("read", pathOf(name), ENOENT);
    if (!S_ISREG(state->st_mode)) throw HostFailure("read", pathOf(name), EINVAL);
    const HostHandle file = files_.openFile(handle_, name);
    // A byte more than there should be: a file that has grown meanwhile is read on.
    std::string bytes(static_cast<std::size_t>(state->st_size) + 1, '\0');
    std::size_t have = 0;
    for (;;) {
        const std::size_t count = files_.read(file, name, bytes.data() + have, bytes.size() - have);
        have += count;
        if (count == 0) break;
        if (have == bytes.size()) bytes.resize(2 * have);
    }
    bytes.resize(have);
    return bytes;
}

bool HostFolder::holds(const std::string& name, const FilePrint& print) const {
    const std::optional<struct stat> state = files_.state(handle_, name);
    return state && S_ISREG(state->st_mode) && static_cast<std::uint64_t>(state->st_size) == print.size &&
           printOf(read(name)) == print;
}

void HostFolder::create(const std::string& name, std::string_view bytes, const std::string& like,
                        bool times) {
    const HostHandle file = files_.create(handle_, name);
    files_.write(file, name, bytes);
    if (!like.empty()) makeLike(file, name, like, times);
    files_.sync(file, name);
}

void HostFolder::makeLike(const HostHandle& file, const std::string& name, const std::string& like,
                          bool times) {
    const std::optional<struct stat> model = files_.state(handle_, like);
    if (!model) throw HostFailure("look at", pathOf(like), ENOENT);
    const std::optional<struct stat> own = files_.state(handle_, name);
    // The owner first: giving a file away may take bits of its mode and some attributes.
    if (own && (own->st_uid != model->st_uid || own->st_gid != model->st_gid))
        files_.setOwner(file, name, model->st_uid, model->st_gid);
    if (own && (own->st_mode & 07777) != (model->st_mode & 07777)) files_.setMode(file, name, model->st_mode);
    const HostHandle modelFile = files_.openFile(handle_, like);
    std::vector<std::string> listed = files_.attributes(modelFile);
    std::set<std::string> attributes(listed.begin(), listed.end());
    attributes.insert(std::begin(kUnlistedAttributes), std::end(kUnlistedAttributes));
    for (const std::string& attribute : attributes) {
        const std::optional<std::string> value = files_.attribute(modelFile, attribute);
        if (value && value != files_.attribute(file, attribute)) files_.setAttribute(file, attribute, *value);
    }
    if (times) files_.setTimes(file, name, *model);
}

void HostFolder::keepAs(const std::string& name, const std::string& second) {
    try {
        files_.link(handle_, name, second);
        return;
    } catch (const HostFailure& failure) {
        if (failure.number == EEXIST) throw;
    }
    // Half a copy must not pass for a whole one.
    const std::string half = second + ".half";
    remove(half);
    create(half, read(name), name, true);
    rename(half, second);
}

void HostFolder::remove(const std::string& name) {
    if (has(name)) files_.remove(handle_, name);
}

void HostFolder::sync() {
    try {
        files_.sync(handle_, path_);
    } catch (const HostFailure& failure) {
        // So say file systems that have nothing to write for a folder.
        if (failure.number != EINVAL) throw;
    }
}

HostFolder& HostFolders::at(const std::string& path) {
    const auto known = std::ranges::find(paths_, path, &std::pair<std::string, HostFolder*>::first);
    if (known != paths_.end()) return *known->second;
    auto folder = std::make_unique<HostFolder>(files_, path);
    // The same folder by another path.
    const auto identity = [](const HostFolder& one) {
        const std::optional<struct stat> state = one.state(".");
        return state ? std::pair(state->st_dev, state->st_ino) : std::pair<dev_t, ino_t>();
    };
    const auto same = std::ranges::find_if(
        folders_, [&](const auto& other) { return identity(*other) == identity(*folder); });
    if (same == folders_.end()) {
        folders_.push_back(std::move(folder));
        paths_.emplace_back(path, folders_.back().get());
    } else {
        paths_.emplace_back(path, same->get());
    }
    return *paths_.back().second;
}

const HostFolder* HostFolders::lockAll() {
    for (const auto& folder : folders_) {
        if (!folder->lock()) return folder.get();
    }
    return nullptr;
}

}  // namespace bromvale::offline

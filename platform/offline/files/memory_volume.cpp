#include <unordered_map>

#include "platform/offline/files/drives.h"
#include "platform/offline/files/short_names.h"
#include "platform/offline/files/volume.h"
#include "platform/offline/locale/clock.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

struct NoCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
        std::uint64_t hash = 1469598103934665603ull;
        while (!name.empty()) hash = (hash ^ upperUnit(takeUnit(name))) * 1099511628211ull;
        return static_cast<std::size_t>(hash ^ (hash >> 29));
    }
};
struct NoCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const { return sameStored(left, right); }
};

struct Node {
    std::string name;
    DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
    Milliseconds written = 0;
    std::string bytes;
    std::string target;  // of a link to a folder: a whole path
    std::unordered_map<std::string, std::shared_ptr<Node>, NoCaseHash, NoCaseEqual> children;
    ShortNames shortNames;

    [[nodiscard]] bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    [[nodiscard]] FileInfo info() const { return {name, attributes, bytes.size(), written, {}, target}; }
};

class MemoryFile : public OpenedFile {
  public:
    MemoryFile(const Clock& clock, std::shared_ptr<Node> node) : clock_(clock), node_(std::move(node)) {}

    DWORD read(std::uint64_t position, void* buffer, DWORD size, DWORD& done) override {
        const std::string& bytes = node_->bytes;
        done = 0;
        if (position >= bytes.size()) return 0;
        done = static_cast<DWORD>(bytes.copy(static_cast<char*>(buffer), size, position));
        return 0;
    }
    DWORD write(std::uint64_t position, const void* bytes, DWORD size) override {
        std::string& all = node_->bytes;
        if (all.size() < position + size) all.resize(position + size);
        all.replace(position, size, static_cast<const char*>(bytes), size);
        node_->written = clock_.universalNow();
        return 0;
    }
    DWORD truncate(std::uint64_t size) override {
        node_->bytes.resize(size);
        node_->written = clock_.universalNow();
        return 0;
    }
    std::uint64_t size() override { return node_->bytes.size(); }
    Milliseconds written() override { return node_->written; }
    void setWritten(Milliseconds time) override { node_->written = time; }

  private:
    const Clock& clock_;
    std::shared_ptr<Node> node_;
};

class MemoryVolume : public Volume {
  public:
    explicit MemoryVolume(const Drives& drives) : drives_(drives) {
        root_->attributes = FILE_ATTRIBUTE_DIRECTORY;
    }

    DWORD find(PathNames names, FileInfo* info) override {
        Found found;
        const DWORD error = walk(names, found);
        if (error == 0 && info != nullptr) *info = infoOf(found);
        return error;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        std::shared_ptr<Node> node;
        if (const DWORD error = walkInto(folder, node)) return error;
        if (!node->isFolder()) return ERROR_DIRECTORY;
        for (const auto& [name, child] : node->children) entries.push_back(infoOf({node, child}));
        return 0;
    }

    DWORD open(PathNames names, bool create, std::unique_ptr<OpenedFile>& file) override {
        Found found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        DWORD error = walk(names, found);
        if (error == ERROR_FILE_NOT_FOUND && create) {
            found.node = add(found.folder, names.back(), FILE_ATTRIBUTE_ARCHIVE);
            error = 0;
        }
        if (error != 0) return error;
        if (found.node->isFolder()) return ERROR_ACCESS_DENIED;
        file = std::make_unique<MemoryFile>(drives_.clock, found.node);
        return 0;
    }

    DWORD makeFolder(PathNames names) override {
        Found found;
        const DWORD error = walk(names, found);
        if (error == 0) return ERROR_ALREADY_EXISTS;
        if (error != ERROR_FILE_NOT_FOUND) return error;
        add(found.folder, names.back(), FILE_ATTRIBUTE_DIRECTORY);
        return 0;
    }

    DWORD linkFolder(PathNames names, std::string_view target) override {
        if (const DWORD error = makeFolder(names)) return error;
        Found found;
        (void)walk(names, found);
        found.node->attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
        found.node->target = target;
        return 0;
    }

    DWORD remove(PathNames names) override {
        Found found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = walk(names, found)) return error;
        if (!found.node->children.empty()) return ERROR_DIR_NOT_EMPTY;
        take(found);
        return 0;
    }

    DWORD move(PathNames from, PathNames to) override {
        Found found;
        Found target;
        if (const DWORD error = walk(from, found)) return error;
        const DWORD missing = walk(to, target);
        if (missing != ERROR_FILE_NOT_FOUND) return missing == 0 ? ERROR_ALREADY_EXISTS : missing;
        take(found);
        found.node->name = to.back();
        target.folder->children.emplace(found.node->name, found.node);
        return 0;
    }

    DWORD recycle(PathNames names, std::string& stored) override {
        Found found;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = walk(names, found)) return error;
        stored = freeName(found.node->name, [this](const std::string& name) { return bin_.contains(name); });
        take(found);
        bin_[stored] = found.node;
        return 0;
    }

    DWORD setAttributes(PathNames names, DWORD attributes) override {
        Found found;
        if (const DWORD error = walk(names, found)) return error;
        constexpr DWORD kKept = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
        found.node->attributes =
            (attributes & ~(FILE_ATTRIBUTE_NORMAL | kKept)) | (found.node->attributes & kKept);
        return 0;
    }

  private:
    struct Found {
        std::shared_ptr<Node> folder;  // the one that holds it, also where it is missing
        std::shared_ptr<Node> node;
    };
    static constexpr int kMostLinks = 16;

    [[nodiscard]] bool keepsShortNames() const { return drives_.shortNames.value_or(false); }

    static const std::string& shortNameOf(Node& folder, std::string_view name) {
        return folder.shortNames.of(
            name, [&folder](std::string_view candidate) { return folder.children.contains(candidate); });
    }

    [[nodiscard]] FileInfo infoOf(const Found& found) const {
        FileInfo info = found.node->info();
        if (keepsShortNames() && found.folder != nullptr)
            info.shortName = shortNameOf(*found.folder, info.name);
        return info;
    }

    [[nodiscard]] std::shared_ptr<Node> childOf(Node& folder, std::string_view name) const {
        auto child = folder.children.find(name);
        if (child == folder.children.end() && keepsShortNames() && name.find('~') != std::string_view::npos) {
            for (const auto& [longName, each] : folder.children) (void)shortNameOf(folder, each->name);
            child = folder.children.find(folder.shortNames.longNameOf(name));
        }
        return child == folder.children.end() ? nullptr : child->second;
    }

    // To the entry itself: a link at the end is not followed, those on the way are.
    DWORD walk(PathNames names, Found& found, int links = 0) const {
        found = {nullptr, root_};
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (const DWORD error = follow(found.node, links)) return error;
            const bool last = i + 1 == names.size();
            found = {found.node, found.node->isFolder() ? childOf(*found.node, names[i]) : nullptr};
            if (found.node == nullptr)
                return last && found.folder->isFolder() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
        }
        return 0;
    }

    DWORD walkInto(PathNames names, std::shared_ptr<Node>& node, int links = 0) const {
        Found found;
        if (const DWORD error = walk(names, found, links)) return error;
        node = found.node;
        return follow(node, links);
    }

    // From a link to what it leads to, on any drive that lives in memory.
    DWORD follow(std::shared_ptr<Node>& node, int links) const {
        if (node->target.empty()) return 0;
        if (links == kMostLinks) return ERROR_CANT_RESOLVE_FILENAME;
        Location location;
        if (const DWORD error = drives_.locateReal(node->target, location)) return error;
        const auto* volume = dynamic_cast<const MemoryVolume*>(location.volume);
        return volume != nullptr ? volume->walkInto(location.all(), node, links + 1) : ERROR_PATH_NOT_FOUND;
    }

    std::shared_ptr<Node> add(const std::shared_ptr<Node>& folder, std::string_view name, DWORD attributes) {
        auto made = std::make_shared<Node>();
        made->name = name;
        made->attributes = attributes;
        made->written = drives_.clock.universalNow();
        folder->children.emplace(made->name, made);
        if (keepsShortNames()) (void)shortNameOf(*folder, name);
        return made;
    }

    static void take(const Found& found) {
        found.folder->shortNames.forget(found.node->name);
        found.folder->children.erase(found.node->name);
    }

    const Drives& drives_;
    std::shared_ptr<Node> root_ = std::make_shared<Node>();
    std::unordered_map<std::string, std::shared_ptr<Node>, NoCaseHash, NoCaseEqual> bin_;
};

}  // namespace

std::unique_ptr<Volume> makeMemoryVolume(const Drives& drives) {
    return std::make_unique<MemoryVolume>(drives);
}

}  // namespace bromvale::offline

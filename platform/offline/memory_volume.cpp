#include <unordered_map>

#include "platform/offline/clock.h"
#include "platform/offline/code_page.h"
#include "platform/offline/volume.h"

namespace bromvale::offline {
namespace {

struct NoCaseHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const {
        std::uint64_t hash = 1469598103934665603ull;
        for (const char c : name) hash = (hash ^ static_cast<unsigned char>(upper(c))) * 1099511628211ull;
        return static_cast<std::size_t>(hash ^ (hash >> 29));
    }
};
struct NoCaseEqual {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const { return equalNoCase(left, right); }
};

struct Node {
    std::string name;
    DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
    Milliseconds written = 0;
    std::string bytes;
    std::unordered_map<std::string, std::shared_ptr<Node>, NoCaseHash, NoCaseEqual> children;

    [[nodiscard]] bool isFolder() const { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    [[nodiscard]] FileInfo info() const { return {name, attributes, bytes.size(), written}; }
};

Milliseconds universalNow() {
    return currentClock().now() + currentClock().bias;
}

class MemoryFile : public OpenedFile {
  public:
    explicit MemoryFile(std::shared_ptr<Node> node) : node_(std::move(node)) {}

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
        node_->written = universalNow();
        return 0;
    }
    DWORD truncate(std::uint64_t size) override {
        node_->bytes.resize(size);
        node_->written = universalNow();
        return 0;
    }
    std::uint64_t size() override { return node_->bytes.size(); }
    Milliseconds written() override { return node_->written; }
    void setWritten(Milliseconds time) override { node_->written = time; }

  private:
    std::shared_ptr<Node> node_;
};

class MemoryVolume : public Volume {
  public:
    MemoryVolume() { root_.attributes = FILE_ATTRIBUTE_DIRECTORY; }

    DWORD find(PathNames names, FileInfo* info) override {
        const Node* node = nullptr;
        const DWORD error = walk(names, node);
        if (error == 0 && info != nullptr) *info = node->info();
        return error;
    }

    DWORD list(PathNames folder, std::vector<FileInfo>& entries) override {
        const Node* node = nullptr;
        if (const DWORD error = walk(folder, node)) return error;
        if (!node->isFolder()) return ERROR_DIRECTORY;
        for (const auto& [name, child] : node->children) entries.push_back(child->info());
        return 0;
    }

    DWORD open(PathNames names, bool create, std::unique_ptr<OpenedFile>& file) override {
        std::shared_ptr<Node> node;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        DWORD error = walkShared(names, node);
        if (error == ERROR_FILE_NOT_FOUND && create) error = add(names, FILE_ATTRIBUTE_ARCHIVE, node);
        if (error != 0) return error;
        if (node->isFolder()) return ERROR_ACCESS_DENIED;
        file = std::make_unique<MemoryFile>(std::move(node));
        return 0;
    }

    DWORD makeFolder(PathNames names) override {
        const Node* node = nullptr;
        const DWORD error = walk(names, node);
        if (error == 0) return ERROR_ALREADY_EXISTS;
        if (error != ERROR_FILE_NOT_FOUND) return error;
        std::shared_ptr<Node> made;
        return add(names, FILE_ATTRIBUTE_DIRECTORY, made);
    }

    DWORD remove(PathNames names) override {
        const Node* node = nullptr;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = walk(names, node)) return error;
        if (!node->children.empty()) return ERROR_DIR_NOT_EMPTY;
        take(names);
        return 0;
    }

    DWORD move(PathNames from, PathNames to) override {
        const Node* target = nullptr;
        std::shared_ptr<Node> node;
        if (const DWORD error = walkShared(from, node)) return error;
        const DWORD missing = walk(to, target);
        if (missing != ERROR_FILE_NOT_FOUND) return missing == 0 ? ERROR_ALREADY_EXISTS : missing;
        std::shared_ptr<Node> made;
        if (const DWORD error = add(to, node->attributes, made)) return error;
        take(from);
        node->name = made->name;
        *made = std::move(*node);
        return 0;
    }

    DWORD recycle(PathNames names, std::string& stored) override {
        const Node* node = nullptr;
        if (names.empty()) return ERROR_ACCESS_DENIED;
        if (const DWORD error = walk(names, node)) return error;
        stored = freeName(node->name, [this](const std::string& name) { return bin_.contains(name); });
        bin_[stored] = take(names);
        return 0;
    }

    DWORD setAttributes(PathNames names, DWORD attributes) override {
        const Node* node = nullptr;
        if (const DWORD error = walk(names, node)) return error;
        const DWORD kept = node->attributes & FILE_ATTRIBUTE_DIRECTORY;
        const_cast<Node*>(node)->attributes = (attributes & ~FILE_ATTRIBUTE_NORMAL) | kept;
        return 0;
    }

  private:
    DWORD walk(PathNames names, const Node*& found) const {
        const Node* node = &root_;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const auto child = node->children.find(names[i]);
            if (child == node->children.end()) {
                return i + 1 == names.size() && node->isFolder() ? ERROR_FILE_NOT_FOUND
                                                                 : ERROR_PATH_NOT_FOUND;
            }
            node = child->second.get();
        }
        found = node;
        return 0;
    }

    DWORD walkShared(PathNames names, std::shared_ptr<Node>& found) {
        const Node* parent = nullptr;
        const Node* node = nullptr;
        if (const DWORD error = walk(names, node)) return error;
        (void)walk(names.first(names.size() - 1), parent);
        found = parent->children.find(names.back())->second;
        return 0;
    }

    DWORD add(PathNames names, DWORD attributes, std::shared_ptr<Node>& made) {
        const Node* parent = nullptr;
        if (const DWORD error = walk(names.first(names.size() - 1), parent)) return error;
        made = std::make_shared<Node>();
        made->name = names.back();
        made->attributes = attributes;
        made->written = universalNow();
        const_cast<Node*>(parent)->children.emplace(made->name, made);
        return 0;
    }

    std::shared_ptr<Node> take(PathNames names) {
        const Node* parent = nullptr;
        (void)walk(names.first(names.size() - 1), parent);
        auto& children = const_cast<Node*>(parent)->children;
        const auto child = children.find(names.back());
        std::shared_ptr<Node> node = child->second;
        children.erase(child);
        return node;
    }

    Node root_;
    std::unordered_map<std::string, std::shared_ptr<Node>, NoCaseHash, NoCaseEqual> bin_;
};

}  // namespace

std::unique_ptr<Volume> makeMemoryVolume() {
    return std::make_unique<MemoryVolume>();
}

}  // namespace bromvale::offline

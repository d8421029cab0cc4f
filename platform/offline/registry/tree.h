// The tree of keys and values behind the offline registry, without handles, hives' names or access rules.
// Built for hundreds of thousands of nodes: a node is one block of memory, and nothing in here recurses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/offline/registry/name_table.h"
#include "platform/offline/registry/path_memo.h"

namespace bromvale::offline {

class RegistryKey;
class RegistryTree;

// The data of a value. Texts that Windows-1252 holds exactly take one byte a character (`narrow`), which is
// nearly all of them and half of the memory; everything else is kept as Windows has it.
struct RegistryData {
    std::string_view bytes;
    bool narrow = false;
};

// Where keys come from that nobody has looked at yet: a raw hive that was mounted in the tree. A key takes
// its values and the names of its sub keys from there at the first look at it, so that a scan touches only
// what it reads.
class KeySource {
  public:
    virtual ~KeySource() = default;
    // Gives the key at `place` of the source what it holds, by RegistryTree::takeValue and takeSubKey. Never
    // throws: what can't be read is left out, and the source remembers that.
    virtual void fill(RegistryTree& tree, RegistryKey* key, std::uint32_t place) = 0;
};

// Where a key was taken from; no source for one of the tree's own.
struct KeyOrigin {
    const KeySource* source = nullptr;
    std::uint32_t place = 0;
};

// A value: header, name (in the stored form of stored_text.h) and data in one block. Immutable; replacing a
// value makes a new block.
class RegistryValueNode {
  public:
    struct Free {
        void operator()(RegistryValueNode* node) const;
    };
    using Pointer = std::unique_ptr<RegistryValueNode, Free>;

    static Pointer make(const RegistryKey* owner, std::string_view name, std::uint32_t type,
                        const RegistryData& data);

    [[nodiscard]] const RegistryKey* owner() const { return owner_; }
    [[nodiscard]] std::string_view name() const { return {text(), nameSize_}; }
    [[nodiscard]] RegistryData data() const { return {{text() + nameSize_, dataSize_}, narrow_}; }
    [[nodiscard]] std::uint32_t type() const { return type_; }

  private:
    RegistryValueNode() = default;
    [[nodiscard]] const char* text() const { return reinterpret_cast<const char*>(this + 1); }

    const RegistryKey* owner_ = nullptr;
    std::uint32_t type_ = 0;
    std::uint32_t nameSize_ = 0;
    std::uint32_t dataSize_ = 0;
    bool narrow_ = false;
};
static_assert(sizeof(RegistryValueNode) == sizeof(void*) + 16);

// A key with its name behind it in the same block. Only the tree changes its links.
class RegistryKey {
  public:
    [[nodiscard]] const RegistryKey* owner() const { return parent_; }
    [[nodiscard]] std::string_view name() const {
        return {reinterpret_cast<const char*>(this + 1), nameSize_};
    }
    [[nodiscard]] bool deleted() const { return deleted_; }
    [[nodiscard]] std::size_t subKeyCount() const { return children_.size(); }
    [[nodiscard]] std::size_t valueCount() const { return values_.size(); }
    [[nodiscard]] const RegistryValueNode& value(std::size_t index) const { return *values_[index]; }

    std::uint32_t openHandles = 0;  // a deleted key lives on, empty, until its last handle is closed
    bool denied = false;            // a test's restriction: opening gives ERROR_ACCESS_DENIED

  private:
    friend class RegistryTree;
    RegistryKey(RegistryKey* parent, std::uint32_t nameSize) : parent_(parent), nameSize_(nameSize) {}

    bool deleted_ = false;
    bool indexed_ = false;      // its values stand in the tree's value table
    std::uint8_t source_ = 0;   // of the tree's, from 1; with 0 it has none
    bool unseen_ = false;       // still to be filled by its source
    std::uint32_t place_ = 0;   // in the source
    std::uint32_t sorted_ = 0;  // so many of children_ stand in order, the rest behind them as they came
    std::vector<RegistryKey*> children_;
    std::vector<RegistryValueNode::Pointer> values_;
    // What a look-up reads stands beside the name, in the same cache line if possible.
    RegistryKey* parent_;
    std::uint32_t nameSize_;
    mutable std::uint32_t lastFound_ =
        0;  // the child that the last look-up led to: a walk asks for its neighbour
};

class RegistryTree {
  public:
    RegistryTree() = default;
    RegistryTree(const RegistryTree&) = delete;
    RegistryTree& operator=(const RegistryTree&) = delete;

    // A key without parent; the caller destroys it.
    RegistryKey* makeRoot(std::string_view name) { return make(nullptr, name); }
    void destroyRoot(RegistryKey* root);

    // `path`: names separated by backslashes; doubled and trailing ones count as one. Null when there is
    // none.
    [[nodiscard]] RegistryKey* find(RegistryKey* from, std::string_view path) const;
    // As find, and makes what is missing; `created` tells whether the last key was.
    RegistryKey* findOrMake(RegistryKey* from, std::string_view path, bool& created);
    // Takes the key and all below it out of the tree. Keys with open handles stay as deleted ones.
    void remove(RegistryKey* key);
    // Frees a deleted key whose last handle was closed.
    void release(RegistryKey* key);

    // In alphabetical order of the upper-cased names.
    [[nodiscard]] RegistryKey* subKey(RegistryKey* key, std::size_t index) const;

    [[nodiscard]] const RegistryValueNode* value(const RegistryKey* key, std::string_view name) const;
    // Replacing keeps the value's place and the name that it was made with.
    void setValue(RegistryKey* key, std::string_view name, std::uint32_t type, const RegistryData& data);
    bool removeValue(RegistryKey* key, std::string_view name);

    // Mounting raw hives -----------------------------------------------------------------

    // From now on the key holds what stands at `place` of the source, beside what it has already; what both
    // have is the tree's own. Throws std::length_error for the 256th source.
    void mount(RegistryKey* key, std::shared_ptr<KeySource> source, std::uint32_t place);
    // For sources, about the key that is being filled. A value that is there already stays; a sub key takes
    // the source's beside what it has.
    void takeValue(RegistryKey* key, std::string_view name, std::uint32_t type, const RegistryData& data);
    void takeSubKey(RegistryKey* key, std::string_view name, std::uint32_t place);
    // The keys that remove() took which came from this source, the topmost of each removal, in the order of
    // their removal: what would have to be done to the hive.
    [[nodiscard]] std::vector<std::uint32_t> removedFrom(const KeySource& source) const;
    // The whole paths of all topmost keys that remove() took, from a source or not, in the stored form.
    [[nodiscard]] std::vector<std::string> removedPaths() const;
    // From here on it is remembered which keys remove() takes; what was before was the machine's own setting
    // up.
    void forgetRemovals() {
        removed_.clear();
        keepsRemovals_ = true;
    }
    [[nodiscard]] KeyOrigin originOf(const RegistryKey* key) const;

    [[nodiscard]] std::size_t keyCount() const { return keyCount_; }
    [[nodiscard]] std::size_t valueCount() const { return valueCount_; }

  private:
    RegistryKey* make(RegistryKey* parent, std::string_view name);
    void drop(RegistryKey* key);
    static void freeBlock(RegistryKey* key);
    template <class Missing>
    RegistryKey* walk(RegistryKey* from, std::string_view path, const Missing& missing) const;
    [[nodiscard]] RegistryKey* child(const RegistryKey* key, std::string_view name) const;
    void unlinkFromParent(RegistryKey* key);
    void clearValues(RegistryKey* key);
    void indexValues(RegistryKey* key);
    // Whoever gets a key from the tree gets a filled one.
    RegistryKey* seen(RegistryKey* key) const {
        if (key != nullptr && key->unseen_) fill(key);
        return key;
    }
    void fill(RegistryKey* key) const;
    [[nodiscard]] std::size_t position(const RegistryKey* key, const RegistryValueNode* value) const;

    NameTable<RegistryKey> keys_;
    mutable RegistryPathMemo memo_;
    NameTable<RegistryValueNode> values_;  // of keys with many values only
    std::size_t keyCount_ = 0;             // without the roots
    std::size_t valueCount_ = 0;
    std::vector<std::shared_ptr<KeySource>> sources_;
    struct Removed {
        std::uint8_t source;
        std::uint32_t place;
        std::string path;
    };
    std::vector<Removed> removed_;
    bool keepsRemovals_ = false;
};

// With its hive, in the stored form.
[[nodiscard]] std::string pathOf(const RegistryKey& key);

// Cuts the next name off a path; empty when there is none left.
std::string_view nextPathName(std::string_view& path);

}  // namespace bromvale::offline

#include "platform/offline/registry/tree.h"

#include <algorithm>
#include <new>

namespace bromvale::offline {

namespace {

bool nameLess(const RegistryKey* left, const RegistryKey* right) {
    return compareStored(left->name(), right->name()) < 0;
}

}  // namespace

std::string pathOf(const RegistryKey& key) {
    std::string path(key.name());
    for (const RegistryKey* above = key.owner(); above != nullptr; above = above->owner())
        path = std::string(above->name()).append("\\").append(path);
    return path;
}

std::string_view nextPathName(std::string_view& path) {
    std::size_t start = 0;
    while (start < path.size() && path[start] == '\\') ++start;
    path.remove_prefix(start);
    const std::string_view name = path.substr(0, path.find('\\'));
    path.remove_prefix(name.size());
    return name;
}

RegistryKey* RegistryTree::make(RegistryKey* parent, std::string_view name) {
    void* memory = ::operator new(sizeof(RegistryKey) + name.size());
    auto* key = new (memory) RegistryKey(parent, static_cast<std::uint32_t>(name.size()));
    name.copy(static_cast<char*>(memory) + sizeof(RegistryKey), name.size());
    if (parent == nullptr) return key;

    auto& siblings = parent->children_;
    const bool inOrder =
        parent->sorted_ == siblings.size() && (siblings.empty() || nameLess(siblings.back(), key));
    siblings.push_back(key);
    if (inOrder) ++parent->sorted_;
    keys_.insert(key);
    ++keyCount_;
    return key;
}

void RegistryTree::freeBlock(RegistryKey* key) {
    key->~RegistryKey();
    ::operator delete(key);
}

void RegistryTree::destroyRoot(RegistryKey* root) {
    memo_.clear();
    removed_.clear();
    keepsRemovals_ = false;
    while (!root->children_.empty()) remove(root->children_.back());
    clearValues(root);
    freeBlock(root);
}

// Walks visit neighbours one after the other: the next one is tried before the table, which lies far away in
// memory.
RegistryKey* RegistryTree::child(const RegistryKey* key, std::string_view name) const {
    const auto& children = key->children_;
    // Registry files add keys in order: a name behind the last one is a new one.
    if (key->sorted_ == children.size() &&
        (children.empty() || compareStored(children.back()->name(), name) < 0)) {
        return nullptr;
    }
    const std::uint32_t next = key->lastFound_ + 1;
    if (next < children.size() && sameName(children[next]->name(), name)) {
        key->lastFound_ = next;
        return seen(children[next]);
    }
    if (!children.empty() && sameName(children.front()->name(), name)) {
        key->lastFound_ = 0;
        return seen(children.front());
    }
    return seen(keys_.find(key, name));
}

// From where the memo knows the path. `missing` gives what stands for a key that is not there: null ends the
// walk.
template <class Missing>
RegistryKey* RegistryTree::walk(RegistryKey* from, std::string_view path, const Missing& missing) const {
    std::size_t covered = 0;
    RegistryKey* key = memo_.resume(from, path, covered);
    std::string_view rest = path.substr(covered);
    for (auto name = nextPathName(rest); !name.empty(); name = nextPathName(rest)) {
        RegistryKey* const next = child(key, name);
        key = next != nullptr ? next : missing(key, name);
        if (key == nullptr) return nullptr;
        memo_.add(path.size() - rest.size(), key);
    }
    return key;
}

RegistryKey* RegistryTree::find(RegistryKey* from, std::string_view path) const {
    return walk(from, path, [](RegistryKey*, std::string_view) -> RegistryKey* { return nullptr; });
}

RegistryKey* RegistryTree::findOrMake(RegistryKey* from, std::string_view path, bool& created) {
    created = false;
    return walk(from, path, [&](RegistryKey* key, std::string_view name) {
        created = true;
        return make(key, name);
    });
}

void RegistryTree::remove(RegistryKey* key) {
    memo_.clear();
    if (keepsRemovals_) removed_.push_back({key->source_, key->place_, pathOf(*key)});
    unlinkFromParent(key);
    std::vector<RegistryKey*> pending{key};
    while (!pending.empty()) {
        RegistryKey* next = pending.back();
        pending.pop_back();
        pending.insert(pending.end(), next->children_.begin(), next->children_.end());
        drop(next);
    }
}

void RegistryTree::drop(RegistryKey* key) {
    keys_.erase(key);
    --keyCount_;
    clearValues(key);
    if (key->openHandles == 0) {
        freeBlock(key);
        return;
    }
    key->deleted_ = true;
    key->parent_ = nullptr;
    key->children_.clear();
    key->sorted_ = 0;
}

void RegistryTree::release(RegistryKey* key) {
    if (key->deleted_ && key->openHandles == 0) freeBlock(key);
}

void RegistryTree::unlinkFromParent(RegistryKey* key) {
    RegistryKey& parent = *key->parent_;
    auto& siblings = parent.children_;
    const auto sortedEnd = siblings.begin() + parent.sorted_;
    auto found = std::lower_bound(siblings.begin(), sortedEnd, key, nameLess);
    if (found != sortedEnd && *found == key) {
        --parent.sorted_;
    } else {
        found = std::find(sortedEnd, siblings.end(), key);
    }
    siblings.erase(found);
}

// Sorting waits for the first enumeration: keys that come in any order cost one sort, not one move each.
RegistryKey* RegistryTree::subKey(RegistryKey* key, std::size_t index) const {
    auto& children = key->children_;
    if (index >= children.size()) return nullptr;
    if (key->sorted_ < children.size()) std::ranges::sort(children, nameLess);
    key->sorted_ = static_cast<std::uint32_t>(children.size());
    return seen(children[index]);
}

}  // namespace bromvale::offline

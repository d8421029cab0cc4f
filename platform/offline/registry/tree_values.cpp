// The values of the tree's keys.
#include <algorithm>
#include <new>
#include <utility>

#include "platform/offline/registry/tree.h"

namespace bromvale::offline {

namespace {

// Up to here a walk along the values beats the table.
constexpr std::size_t kIndexedFrom = 16;

}  // namespace

void RegistryValueNode::Free::operator()(RegistryValueNode* node) const {
    node->~RegistryValueNode();
    ::operator delete(node);
}

RegistryValueNode::Pointer RegistryValueNode::make(const RegistryKey* owner, std::string_view name,
                                                   std::uint32_t type, const RegistryData& data) {
    const std::string_view bytes = data.bytes;
    void* memory = ::operator new(sizeof(RegistryValueNode) + name.size() + bytes.size());
    Pointer node(new (memory) RegistryValueNode);
    node->owner_ = owner;
    node->type_ = type;
    node->nameSize_ = static_cast<std::uint32_t>(name.size());
    node->dataSize_ = static_cast<std::uint32_t>(bytes.size());
    node->narrow_ = data.narrow;
    char* text = static_cast<char*>(memory) + sizeof(RegistryValueNode);
    name.copy(text, name.size());
    bytes.copy(text + name.size(), bytes.size());
    return node;
}

const RegistryValueNode* RegistryTree::value(const RegistryKey* key, std::string_view name) const {
    if (key->indexed_) return values_.find(key, name);
    for (const auto& value : key->values_) {
        if (sameName(value->name(), name)) return value.get();
    }
    return nullptr;
}

std::size_t RegistryTree::position(const RegistryKey* key, const RegistryValueNode* value) const {
    const auto found = std::find_if(key->values_.begin(), key->values_.end(),
                                    [&](const auto& each) { return each.get() == value; });
    return static_cast<std::size_t>(found - key->values_.begin());
}

void RegistryTree::setValue(RegistryKey* key, std::string_view name, std::uint32_t type,
                            const RegistryData& data) {
    if (const RegistryValueNode* old = value(key, name)) {
        auto& place = key->values_[position(key, old)];
        auto changed = RegistryValueNode::make(key, old->name(), type, data);
        if (key->indexed_) {
            values_.erase(old);
            values_.insert(changed.get());
        }
        place = std::move(changed);
        return;
    }
    key->values_.push_back(RegistryValueNode::make(key, name, type, data));
    ++valueCount_;
    if (key->indexed_) {
        values_.insert(key->values_.back().get());
    } else if (key->values_.size() > kIndexedFrom) {
        indexValues(key);
    }
}

void RegistryTree::indexValues(RegistryKey* key) {
    for (const auto& value : key->values_) values_.insert(value.get());
    key->indexed_ = true;
}

bool RegistryTree::removeValue(RegistryKey* key, std::string_view name) {
    const RegistryValueNode* found = value(key, name);
    if (found == nullptr) return false;
    if (key->indexed_) values_.erase(found);
    key->values_.erase(key->values_.begin() + static_cast<std::ptrdiff_t>(position(key, found)));
    --valueCount_;
    return true;
}

void RegistryTree::clearValues(RegistryKey* key) {
    if (key->indexed_) {
        for (const auto& value : key->values_) values_.erase(value.get());
        key->indexed_ = false;
    }
    valueCount_ -= key->values_.size();
    key->values_.clear();
}

}  // namespace bromvale::offline

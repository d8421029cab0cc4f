// Keys that come from raw hives at the first look at them.
#include <algorithm>
#include <stdexcept>

#include "platform/offline/registry/tree.h"

namespace bromvale::offline {

void RegistryTree::mount(RegistryKey* key, std::shared_ptr<KeySource> source, std::uint32_t place) {
    auto found = std::ranges::find(sources_, source);
    if (found == sources_.end()) {
        if (sources_.size() == 0xFF) throw std::length_error("too many hives");
        found = sources_.insert(found, std::move(source));
    }
    seen(key);
    key->source_ = static_cast<std::uint8_t>(found - sources_.begin() + 1);
    key->place_ = place;
    key->unseen_ = true;
    memo_.clear();
    fill(key);
}

// A look changes what the tree holds in memory and nothing that it is: to its readers the key was full all
// along.
void RegistryTree::fill(RegistryKey* key) const {
    key->unseen_ = false;
    sources_[key->source_ - 1U]->fill(const_cast<RegistryTree&>(*this), key, key->place_);
}

void RegistryTree::takeValue(RegistryKey* key, std::string_view name, std::uint32_t type,
                             const RegistryData& data) {
    if (value(key, name) == nullptr) setValue(key, name, type, data);
}

void RegistryTree::takeSubKey(RegistryKey* key, std::string_view name, std::uint32_t place) {
    if (name.empty()) return;
    RegistryKey* made = child(key, name);
    if (made == nullptr) {
        made = make(key, name);
    } else if (made->source_ != 0) {
        return;
    } else {
        memo_.clear();  // it is filled at the next look, which must not go by the path's memory
    }
    made->source_ = key->source_;
    made->place_ = place;
    made->unseen_ = true;
}

std::vector<std::string> RegistryTree::removedPaths() const {
    std::vector<std::string> paths;
    for (const Removed& removed : removed_) paths.push_back(removed.path);
    return paths;
}

KeyOrigin RegistryTree::originOf(const RegistryKey* key) const {
    if (key == nullptr || key->source_ == 0) return {};
    return {sources_[key->source_ - 1U].get(), key->place_};
}

std::vector<std::uint32_t> RegistryTree::removedFrom(const KeySource& source) const {
    std::vector<std::uint32_t> places;
    for (const Removed& removed : removed_) {
        if (removed.source != 0 && sources_[removed.source - 1U].get() == &source)
            places.push_back(removed.place);
    }
    return places;
}

}  // namespace bromvale::offline

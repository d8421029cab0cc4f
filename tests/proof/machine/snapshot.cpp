#include "tests/proof/machine/snapshot.h"

namespace bromvale::proof {
namespace {

constexpr std::size_t kMostTold = 12;

std::string told(const StoredKey& key, const StoredData& value) {
    return "[" + readable(key.path) + "] \"" + readable(value.name) + "\" type " +
           std::to_string(value.type) + " " + readable(std::string_view(value.bytes));
}

void compareValues(const StoredKey& before, const StoredKey& after, std::vector<std::string>& lines) {
    for (const auto& [name, value] : before.values) {
        const auto other = after.values.find(name);
        if (other == after.values.end()) {
            lines.push_back("value lost: " + told(before, value));
        } else if (other->second != value) {
            lines.push_back("value changed: " + told(before, value) + " -> " + told(after, other->second));
        }
    }
    for (const auto& [name, value] : after.values) {
        if (!before.values.contains(name)) lines.push_back("value added: " + told(after, value));
    }
}

}  // namespace

std::vector<std::string> differences(const RegistrySnapshot& before, const RegistrySnapshot& after) {
    std::vector<std::string> lines;
    for (const auto& [path, key] : before) {
        const auto other = after.find(path);
        if (other == after.end()) {
            lines.push_back("key lost: " + readable(key.path));
            continue;
        }
        if (other->second.path != key.path)
            lines.push_back("key renamed: " + readable(key.path) + " -> " + readable(other->second.path));
        compareValues(key, other->second, lines);
    }
    for (const auto& [path, key] : after) {
        if (!before.contains(path)) lines.push_back("key added: " + readable(key.path));
    }
    if (lines.size() > kMostTold) {
        const std::size_t more = lines.size() - kMostTold;
        lines.resize(kMostTold);
        lines.push_back("and " + std::to_string(more) + " more");
    }
    return lines;
}

RegistrySnapshot subTree(const RegistrySnapshot& registry, View path) {
    RegistrySnapshot result;
    const Text whole = lower(path);
    for (auto at = registry.lower_bound(whole); at != registry.end() && at->first.starts_with(whole); ++at) {
        if (at->first.size() == whole.size() || at->first[whole.size()] == u'\\') result.insert(*at);
    }
    return result;
}

}  // namespace bromvale::proof

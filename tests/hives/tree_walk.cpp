#include "tests/hives/tree_walk.h"

#include <utility>

#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

std::string_view descriptorOf(const Hive& hive, const HiveKey& key) {
    const HiveBytes node = hive.cell(key.security);
    return node.text(security_node::kDescriptor, node.u32(security_node::kDescriptorSize));
}

bool sameKey(const Hive& before, const HiveKey& left, const Hive& after, const HiveKey& right) {
    return left.nameBytes == right.nameBytes && left.flags == right.flags &&
           left.lastWritten == right.lastWritten &&
           before.classNameBytes(left) == after.classNameBytes(right) &&
           descriptorOf(before, left) == descriptorOf(after, right);
}

bool sameValues(const Hive& before, const HiveKey& left, const Hive& after, const HiveKey& right) {
    const std::vector<Cell> old = before.values(left);
    const std::vector<Cell> now = after.values(right);
    if (old.size() != now.size()) return false;
    for (std::size_t i = 0; i < old.size(); ++i) {
        const HiveValue a = before.value(old[i]);
        const HiveValue b = after.value(now[i]);
        if (a.nameBytes != b.nameBytes || a.type != b.type || a.flags != b.flags || a.size != b.size ||
            before.data(a) != after.data(b))
            return false;
    }
    return true;
}

}  // namespace

std::vector<HiveKey> treeOf(const Hive& hive, Cell top) {
    std::vector<HiveKey> keys{hive.key(top)};
    for (std::size_t i = 0; i < keys.size(); ++i) {
        for (const Cell subKey : hive.subKeys(HiveKey(keys[i]))) keys.push_back(hive.key(subKey));
    }
    return keys;
}

CellSet treesOf(const Hive& hive, const std::vector<Cell>& tops) {
    CellSet cells;
    for (const Cell top : tops) {
        if (cells.contains(top)) continue;
        for (const HiveKey& key : treeOf(hive, top)) cells.insert(key.cell);
    }
    return cells;
}

std::string differenceWithout(const Hive& before, const Hive& after, const CellSet& gone) {
    std::vector<std::pair<HiveKey, HiveKey>> pending{{before.root(), after.root()}};
    while (!pending.empty()) {
        const auto [left, right] = pending.back();
        pending.pop_back();
        const std::string name = utf8FromStored(storedFromWide(left.name()));
        if (!sameKey(before, left, after, right)) return name + ": another key";
        if (!sameValues(before, left, after, right)) return name + ": other values";
        std::vector<Cell> old = before.subKeys(left);
        std::erase_if(old, [&gone](Cell cell) { return gone.contains(cell); });
        const std::vector<Cell> now = after.subKeys(right);
        if (old.size() != now.size()) return name + ": other sub keys";
        for (std::size_t i = 0; i < old.size(); ++i)
            pending.emplace_back(before.key(old[i]), after.key(now[i]));
    }
    return "";
}

}  // namespace bromvale::offline

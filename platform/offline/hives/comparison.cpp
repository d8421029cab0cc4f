#include "platform/offline/hives/comparison.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "platform/offline/hives/expected_tree.h"

namespace bromvale::offline {
namespace {

std::string_view descriptorOf(const Hive& hive, Cell security) {
    if (security == kNil) return {};
    const HiveBytes node = hive.cell(security);
    if (node.text(0, 2) != security_node::kSignature)
        throw HiveDamage(node.place(), "an offset leads to no security");
    return node.text(security_node::kDescriptor, node.u32(security_node::kDescriptorSize));
}

// Both trees are walked beside each other; a pair of keys waits until its turn.
class TreeComparison {
  public:
    TreeComparison(const Hive& before, const Hive& after, std::span<const Cell> gone)
        : expected_(before, gone), before_(before), after_(after) {}

    std::optional<std::string> firstDifference() {
        if (expected_.isGone(before_.base().root)) return "\\: the root itself is to go";
        waiting_.emplace_back(before_.base().root, after_.base().root);
        while (!waiting_.empty()) {
            const auto [cell, other] = waiting_.back();
            waiting_.pop_back();
            if (auto difference = differenceOfKeys(before_.key(cell), after_.key(other))) return difference;
        }
        return std::nullopt;
    }

  private:
    std::optional<std::string> differenceOfKeys(const HiveKey& key, const HiveKey& other) {
        if (key.flags != other.flags || key.nameBytes != other.nameBytes) return aboutFlagsOrName(key, other);
        if (before_.cell(key.cell).u32(key_node::kAccess) != after_.cell(other.cell).u32(key_node::kAccess))
            return expected_.about(key, "other flags of access or layers");
        if (key.lastWritten != other.lastWritten) return expected_.about(key, "another time");
        if (before_.classNameBytes(key) != after_.classNameBytes(other))
            return expected_.about(key, "another class name");
        if (!sameSecurity(key.security, other.security)) return expected_.about(key, "another security");
        if (auto difference = differenceOfValues(key, other)) return difference;
        return differenceOfSubKeys(key, other);
    }

    std::string aboutFlagsOrName(const HiveKey& key, const HiveKey& other) const {
        if (key.name() == other.name()) return expected_.about(key, "other flags");
        if (key.cell == before_.base().root) return expected_.about(key, "another name");
        return subKeysDiffer(before_.key(key.parent), after_.key(other.parent));
    }

    std::string subKeysDiffer(const HiveKey& key, const HiveKey& other) const {
        std::vector<std::string> found;
        for (const Cell cell : after_.subKeys(other)) found.push_back(utf8Name(after_.key(cell).name()));
        return expected_.aboutSubKeys(key, found, utf8Name);
    }

    std::optional<std::string> differenceOfSubKeys(const HiveKey& key, const HiveKey& other) {
        const std::vector<Cell> subKeys = expected_.subKeys(key);
        const std::vector<Cell> others = after_.subKeys(other);
        if (subKeys.size() != others.size()) return subKeysDiffer(key, other);
        for (std::size_t i = subKeys.size(); i-- > 0;) waiting_.emplace_back(subKeys[i], others[i]);
        return std::nullopt;
    }

    std::optional<std::string> differenceOfValues(const HiveKey& key, const HiveKey& other) const {
        const std::vector<Cell> values = before_.values(key);
        const std::vector<Cell> others = after_.values(other);
        if (values.size() != others.size()) return valuesDiffer(key, other);
        for (std::size_t i = 0; i < values.size(); ++i) {
            const HiveValue value = before_.value(values[i]);
            const HiveValue found = after_.value(others[i]);
            if (value.nameBytes != found.nameBytes && value.name() != found.name())
                return valuesDiffer(key, other);
            if (const char* what = differenceOfContent(value, found))
                return expected_.aboutValue(key, value, what);
        }
        return std::nullopt;
    }

    std::string valuesDiffer(const HiveKey& key, const HiveKey& other) const {
        std::vector<std::string> found;
        for (const Cell cell : after_.values(other)) found.push_back(utf8Name(after_.value(cell).name()));
        return expected_.aboutValues(key, found, utf8Name);
    }

    const char* differenceOfContent(const HiveValue& value, const HiveValue& found) const {
        if (value.flags != found.flags || value.nameBytes != found.nameBytes) return "other flags";
        if (value.type != found.type) return "another type";
        if (value.size != found.size) return "data of another length";
        return before_.data(value) == after_.data(found) ? nullptr : "other data";
    }

    // Thousands of keys share one.
    bool sameSecurity(Cell security, Cell other) {
        const std::uint64_t both = std::uint64_t{security} << 32 | other;
        if (sameSecurities_.contains(both)) return true;
        if ((security == kNil) != (other == kNil)) return false;
        if (descriptorOf(before_, security) != descriptorOf(after_, other)) return false;
        sameSecurities_.insert(both);
        return true;
    }

    ExpectedTree expected_;
    const Hive& before_;
    const Hive& after_;
    std::vector<std::pair<Cell, Cell>> waiting_;
    std::unordered_set<std::uint64_t> sameSecurities_;
};

}  // namespace

std::optional<std::string> differenceOfTrees(const Hive& before, const Hive& after,
                                             std::span<const Cell> gone) {
    return TreeComparison(before, after, gone).firstDifference();
}

}  // namespace bromvale::offline

#include "platform/offline/hives/key_checker.h"

#include <algorithm>

#include "platform/offline/hives/key_names.h"

namespace bromvale::offline {
namespace {

constexpr std::uint32_t kHashesFromMinorVersion = 5;

}  // namespace

KeyChecker::KeyChecker(CellMap& cells, HiveCheck& check, const BaseBlock& base)
    : cells_(cells), check_(check), base_(base), security_(cells, check), values_(cells, check, base.minor) {}

void KeyChecker::walk() {
    pending_.push_back({base_.root, kNil});
    while (!pending_.empty()) {
        const Pending next = pending_.back();
        pending_.pop_back();
        checkKey(next);
    }
    // What hangs below something that could not be followed is neither lost nor counted.
    if (!cells_.complete()) return;
    security_.compareCounts();
    cells_.reportLost();
}

void KeyChecker::checkKey(const Pending& pending) {
    const auto node = cells_.claim(pending.cell, "a key");
    if (!node) return;
    try {
        checkNode(pending, *node);
    } catch (const HiveDamage& damage) {
        addFault(check_, damage.place, damage.what());
        cells_.setIncomplete();
    }
}

void KeyChecker::checkNode(const Pending& pending, HiveBytes node) {
    namespace at = key_node;
    if (node.text(0, 2) != at::kSignature) {
        addFault(check_, node.place(), "an offset leads to no key");
        return cells_.setIncomplete();
    }
    ++check_.keys;
    checkFields(pending, node);
    const Cell security = node.u32(at::kSecurity);
    if (pending.parent == kNil) security_.walkRing(security);
    security_.use(security, node.place());
    checkClassName(node);
    values_.checkValues(node);
    checkSubKeys(pending.cell, node);
}

void KeyChecker::checkFields(const Pending& pending, HiveBytes node) {
    namespace at = key_node;
    const std::uint16_t flags = node.u16(at::kFlags);
    const std::uint16_t nameSize = node.u16(at::kNameSize);
    const bool root = pending.parent == kNil;
    static_cast<void>(node.text(at::kName, nameSize));
    if (((flags & at::kFlagRoot) != 0) != root)
        addFault(check_, node.place(), root ? "the root is not marked as such" : "a key is marked as root");
    if (!root && node.u32(at::kParent) != pending.parent)
        addFault(check_, node.place(), "a key names another parent than the one that lists it");
    if (!root && nameSize == 0) addFault(check_, node.place(), "a key has no name");
    if ((flags & at::kFlagOneByteName) == 0 && nameSize % 2 != 0)
        addFault(check_, node.place(), "a key's name in UTF-16 has an odd number of bytes");
}

void KeyChecker::checkClassName(HiveBytes node) {
    namespace at = key_node;
    const std::uint16_t size = node.u16(at::kClassNameSize);
    const Cell offset = node.u32(at::kClassName);
    if (size == 0) {
        if (offset != kNil) addFault(check_, node.place(), "a key without a class name has a cell for it");
        return;
    }
    const auto name = cells_.claim(offset, "a class name");
    if (name && !name->holds(0, size))
        addFault(check_, name->place(), "a class name is longer than its cell");
}

void KeyChecker::checkSubKeys(Cell cell, HiveBytes node) {
    namespace at = key_node;
    const std::uint32_t count = node.u32(at::kSubKeyCount);
    const Cell offset = node.u32(at::kSubKeys);
    if (count == 0) {
        if (offset != kNil) addFault(check_, node.place(), "a key without sub keys has a list of them");
        return;
    }
    const auto list = cells_.claim(offset, "a list of sub keys");
    if (!list) return;
    SubKeys subKeys{cell};
    previousName_.clear();
    checkList(*list, subKeys, true);
    if (!cells_.complete()) return;
    if (subKeys.count != count)
        addFault(check_, node.place(), "a key counts other sub keys than its list holds");
    if (subKeys.longestName > node.u16(at::kLongestSubKeyName))
        addFault(check_, node.place(), "a sub key's name is longer than its parent's longest");
}

void KeyChecker::checkList(HiveBytes list, SubKeys& subKeys, bool listsAllowed) {
    const std::string_view signature = list.text(0, 2);
    const std::size_t count = list.u16(key_list::kCount);
    if (count == 0) addFault(check_, list.place(), "a list of sub keys is empty");
    if (signature == key_list::kLists && listsAllowed) return checkParts(list, count, subKeys);
    if (signature == key_list::kOffsets || signature == key_list::kNames || signature == key_list::kHashes)
        return checkEntries(list, count, subKeys);
    addFault(check_, list.place(),
             signature == key_list::kLists ? "a list of lists of sub keys holds another one"
                                           : "a list of sub keys has an unknown signature");
    cells_.setIncomplete();
}

void KeyChecker::checkParts(HiveBytes list, std::size_t count, SubKeys& subKeys) {
    static_cast<void>(list.part(key_list::kEntries, count * 4));
    for (std::size_t i = 0; i < count; ++i) {
        const auto part = cells_.claim(list.u32(key_list::kEntries + i * 4), "a part of a list of sub keys");
        if (part) checkList(*part, subKeys, false);
    }
}

void KeyChecker::checkEntries(HiveBytes list, std::size_t count, SubKeys& subKeys) {
    const std::string_view signature = list.text(0, 2);
    if (signature == key_list::kHashes && base_.minor < kHashesFromMinorVersion)
        addFault(check_, list.place(), "a list of sub keys has hashes, which this version does not know");
    const std::size_t entrySize = signature == key_list::kOffsets ? 4 : 8;
    static_cast<void>(list.part(key_list::kEntries, count * entrySize));
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = key_list::kEntries + i * entrySize;
        pending_.push_back({list.u32(at), subKeys.parent});
        ++subKeys.count;
        checkEntry(list, at, subKeys);
    }
}

// The key itself has its turn later, with what is wrong in it.
void KeyChecker::checkEntry(HiveBytes list, std::size_t at, SubKeys& subKeys) {
    const auto node = cells_.content(list.u32(at));
    if (!node || !node->holds(0, key_node::kName) || node->text(0, 2) != key_node::kSignature) return;
    const std::uint16_t nameSize = node->u16(key_node::kNameSize);
    if (!node->holds(key_node::kName, nameSize)) return;
    const bool oneByte = (node->u16(key_node::kFlags) & key_node::kFlagOneByteName) != 0;
    const std::string_view nameBytes = node->text(key_node::kName, nameSize);
    upperCasedName(nameBytes, oneByte, name_);
    subKeys.longestName = std::max(subKeys.longestName, name_.size() * 2);
    if (subKeys.count > 1 && name_ <= previousName_)
        addFault(check_, list.place() + at, "sub keys are not sorted by their names");
    checkHint(list, at + 4, nameBytes, oneByte);
    name_.swap(previousName_);
}

void KeyChecker::checkHint(HiveBytes list, std::size_t at, std::string_view nameBytes, bool oneByte) {
    const std::string_view signature = list.text(0, 2);
    if (signature == key_list::kHashes && list.u32(at) != nameHash(name_))
        addFault(check_, list.place() + at, "a hash in a list of sub keys is not that of the name");
    if (signature != key_list::kNames || !oneByte) return;
    std::string first(nameBytes.substr(0, 4));
    first.resize(4);
    if (list.text(at, 4) != first)
        addFault(check_, list.place() + at, "a list of sub keys has not the first characters of the name");
}

}  // namespace bromvale::offline

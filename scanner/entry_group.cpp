#include "scanner/entry_group.h"

#include <algorithm>

#include "base/failure.h"
#include "platform/exact/text.h"

namespace bromvale {

EntryGroup& entryGroup() {
    static EntryGroup group;
    return group;
}

Entry EntryGroup::at(int index, std::string_view hiveName) const {
    const Kept& entry = kept(index);
    return {entry.hive, hiveName, entry.key, entry.name, entry.value};
}

const EntryGroup::Kept& EntryGroup::kept(int index) const {
    if (index < 1 || index > count()) raise(9);
    return entries_[static_cast<std::size_t>(index - 1)];
}

void EntryGroup::append(const Entry& entry, std::string_view lowerKey) {
    const bool wasLeftAlone = std::exchange(leftAlone_, true);
    if (count_ == entries_.size()) entries_.emplace_back();
    Kept& kept = entries_[count_];
    kept.key.assign(entry.key);
    kept.lowerKey.assign(lowerKey);
    kept.name.assign(entry.name);
    kept.value.assign(entry.value);
    kept.hive = entry.hive;
    ++count_;
    leftAlone_ = wasLeftAlone || !isExact(entry.key);
}

void EntryGroup::remove(int index) {
    static_cast<void>(kept(index));
    const auto first = entries_.begin() + (index - 1);
    std::rotate(first, first + 1, entries_.begin() + count());
    if (--count_ == 0) clear();
}

void EntryGroup::clear() {
    count_ = 0;
    leftAlone_ = false;
    listed_.clear();
}

}  // namespace bromvale

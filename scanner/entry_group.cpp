#include "scanner/entry_group.h"

#include <algorithm>

#include "base/failure.h"
#include "platform/exact/text.h"

namespace bromvale {

const EntryGroup::Entry& EntryGroup::at(int index) const {
    if (index < 1 || index > count()) raise(9);
    return entries_[static_cast<std::size_t>(index - 1)];
}

void EntryGroup::append(std::string_view key, std::string_view lowerKey, std::string_view name,
                        std::string_view value, std::int32_t hive) {
    const bool wasLeftAlone = std::exchange(leftAlone_, true);
    if (count_ == entries_.size()) entries_.emplace_back();
    Entry& entry = entries_[count_];
    entry.key.assign(key);
    entry.lowerKey.assign(lowerKey);
    entry.name.assign(name);
    entry.value.assign(value);
    entry.hive = hive;
    ++count_;
    leftAlone_ = wasLeftAlone || !isExact(key);
}

void EntryGroup::remove(int index) {
    static_cast<void>(at(index));
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

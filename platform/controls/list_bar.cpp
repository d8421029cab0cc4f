#include "platform/controls/list_bar.h"

#include <utility>

#include "base/failure.h"
#include "platform/events.h"

namespace bromvale {

void ListBar::setImageList(const ImageList* images) {
    if (images_ == images) return;
    images_ = images;
    notify(Property::Items);
}

int ListBar::addBar(std::string_view caption) {
    bars_.push_back({std::string(caption), {}});
    notify(Property::Items);
    return static_cast<int>(bars_.size());
}

void ListBar::addItem(Item item) {
    constexpr int kInvalidArgument = 5;
    if (bars_.empty()) raise(kInvalidArgument);
    bars_.back().items.push_back(std::move(item));
    notify(Property::Items);
}

void ListBar::setOpenBar(int bar) {
    if (openBar_ == bar || bar < 0 || bar >= static_cast<int>(bars_.size())) return;
    openBar_ = bar;
    notify(Property::Selection);
}

bool ListBar::userItemClick(std::string_view caption) {
    if (!reachable()) return false;
    for (std::size_t bar = 0; bar < bars_.size(); ++bar) {
        for (const Item& candidate : bars_[bar].items) {
            if (candidate.caption != caption) continue;
            setOpenBar(static_cast<int>(bar));
            dispatchUserEvent(onItemClick, Item(candidate));
            return true;
        }
    }
    return false;
}

}  // namespace bromvale

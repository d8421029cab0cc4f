#include "platform/controls/list_bar.h"

#include <algorithm>
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
    part_ = {bar, 0};
    notify(Property::Selection);
}

bool ListBar::userItemClick(std::string_view caption) {
    if (!reachable()) return false;
    for (int bar = 0; bar < static_cast<int>(bars_.size()); ++bar) {
        const auto found = std::ranges::find(items(bar), caption, &Item::caption);
        if (found == items(bar).end()) continue;
        userPart({bar, static_cast<int>(found - items(bar).begin())}, keyboardShown_);
        // A copy: the handler may do away with the bar.
        dispatchUserEvent(onItemClick, Item(*found));
        return true;
    }
    return false;
}

}  // namespace bromvale

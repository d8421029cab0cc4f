#include <algorithm>

#include "base/text_order.h"
#include "platform/controls/list_view.h"

namespace bromvale {

void ListView::setSortKey(int key) {
    if (sorted_ && sortKey_ == key) return;
    sortKey_ = key;
    sortAnew();
}

void ListView::setSortOrder(SortOrder order) {
    if (sorted_ && sortOrder_ == order) return;
    sortOrder_ = order;
    sortAnew();
}

void ListView::setSorted(bool on) {
    if (sorted_ == on) return;
    if (on) {
        sortAnew();
    } else {
        sortNow();
        sorted_ = false;
    }
}

void ListView::sortAnew() {
    sorted_ = true;
    sortDue_ = true;
    notify(Property::Items);
}

void ListView::textChanged(int column) {
    if (sorted_ && column == sortKey_) sortDue_ = true;
    notify(Property::Items);
}

// Sorting waits until somebody looks at the order: a scan adds thousands of rows between two looks.
void ListView::sortNow() const {
    if (!sortDue_) return;
    sortDue_ = false;
    const auto before = [this](const std::unique_ptr<ListItem>& a, const std::unique_ptr<ListItem>& b) {
        const int order = compareTexts(a->column(sortKey_), b->column(sortKey_));
        return sortOrder_ == SortOrder::Ascending ? order < 0 : order > 0;
    };
    std::stable_sort(rows_.begin(), rows_.end(), before);
}

}  // namespace bromvale

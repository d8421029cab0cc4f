#include "platform/controls/list_view.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/failure.h"
#include "base/text_order.h"
#include "platform/events.h"

namespace bromvale {
namespace {

const std::string kNoText;

}  // namespace

ListItem::ListItem(ListView& list, std::string_view text, int smallIcon)
    : list_(&list), texts_{std::string(text)}, smallIcon_(smallIcon) {}

const std::string& ListItem::column(int index) const {
    if (index < 0 || index >= static_cast<int>(texts_.size())) return kNoText;
    return texts_[static_cast<std::size_t>(index)];
}

void ListItem::setColumn(int index, std::string_view text) {
    if (index < 0) raise(Failure::kIndexOutOfBounds);
    if (column(index) == text) return;
    const auto position = static_cast<std::size_t>(index);
    if (position >= texts_.size()) texts_.resize(position + 1);
    texts_[position].assign(text);
    list_->textChanged(index);
}

void ListItem::setSelected(bool selected) {
    if (selected_ == selected) return;
    if (selected && !list_->multiSelect()) list_->markOnly(nullptr);
    selected_ = selected;
    list_->notify(Property::Selection);
}

void ListView::setColumns(std::vector<Column> columns) {
    columns_ = std::move(columns);
    notify(Property::Columns);
}

std::size_t ListView::position(int row) const {
    if (row < 1 || row > count()) raise(Failure::kIndexOutOfBounds);
    sortNow();
    return static_cast<std::size_t>(row - 1);
}

ListItem& ListView::item(int row) {
    return *rows_[position(row)];
}
const ListItem& ListView::item(int row) const {
    return *rows_[position(row)];
}

ListItem& ListView::append(std::unique_ptr<ListItem> added) {
    ListItem& row = *added;
    rows_.closed().push_back(std::move(added));
    sortDue_ = sorted_;
    notify(Property::Items);
    return row;
}

ListItem& ListView::add(std::string_view text, int smallIcon) {
    return append(std::make_unique<ListItem>(*this, text, smallIcon));
}

ListItem& ListView::add(std::initializer_list<std::string_view> columns, int smallIcon) {
    auto added = std::make_unique<ListItem>(*this, std::string_view(), smallIcon);
    added->texts_.assign(columns.begin(), columns.end());
    if (added->texts_.empty()) added->texts_.emplace_back();
    return append(std::move(added));
}

void ListView::remove(int row) {
    const std::size_t at = position(row);
    const bool hadFocus = rows_[at].get() == focused_;
    rows_.erase(at);
    // As in the system's own list, the focus stays at its place: the row that moved up has it, behind the end
    // the last.
    if (hadFocus) focused_ = rows_.empty() ? nullptr : rows_[std::min(at, rows_.size() - 1)].get();
    notify(Property::Items);
}

void ListView::clear() {
    focused_ = nullptr;
    sortDue_ = false;
    if (rows_.empty()) return;
    rows_.clear();
    notify(Property::Items);
}

int ListView::selectedItem() const {
    if (!focused_) return 0;
    sortNow();
    const auto& rows = rows_.closed();
    const auto has = [this](const std::unique_ptr<ListItem>& row) { return row.get() == focused_; };
    return static_cast<int>(std::find_if(rows.begin(), rows.end(), has) - rows.begin()) + 1;
}

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

// Sorting waits until somebody looks at the order: a scan adds thousands of rows between two looks. Keys are
// made once a row; without the memory for them the texts are compared themselves.
void ListView::sortNow() const {
    if (!sortDue_) return;
    sortDue_ = false;
    const bool ascending = sortOrder_ == SortOrder::Ascending;
    try {
        sortByKeys(ascending);
    } catch (const std::bad_alloc&) {
        const auto before = [&](const std::unique_ptr<ListItem>& a, const std::unique_ptr<ListItem>& b) {
            const int order = compareTexts(a->column(sortKey_), b->column(sortKey_));
            return ascending ? order < 0 : order > 0;
        };
        auto& rows = rows_.closed();
        std::stable_sort(rows.begin(), rows.end(), before);
    }
}

// The rows are touched once nothing can fail any more.
void ListView::sortByKeys(bool ascending) const {
    struct Keyed {
        std::string key;
        std::size_t place;
    };
    auto& rows = rows_.closed();
    std::vector<Keyed> keys;
    keys.reserve(rows.size());
    for (const auto& row : rows) keys.push_back({orderKey(row->column(sortKey_)), keys.size()});
    std::vector<std::unique_ptr<ListItem>> sorted;
    sorted.reserve(rows.size());
    const auto before = [&](const Keyed& a, const Keyed& b) {
        const int order = a.key.compare(b.key);
        return ascending ? order < 0 : order > 0;
    };
    std::stable_sort(keys.begin(), keys.end(), before);
    for (const Keyed& keyed : keys) sorted.push_back(std::move(rows[keyed.place]));
    rows.swap(sorted);
}

void ListView::markOnly(const ListItem* only) {
    for (const auto& row : rows_.closed()) row->selected_ = row.get() == only;
}

void ListView::userSelect(const std::vector<int>& rows) {
    if (!reachable()) return;
    markOnly(nullptr);
    for (const int row : rows) {
        ListItem& chosen = item(row);
        if (!multiSelect_) markOnly(nullptr);
        chosen.selected_ = true;
        focused_ = &chosen;
    }
    notify(Property::Selection);
}

void ListView::userSetSelected(int row, bool selected) {
    ListItem& chosen = item(row);
    if (selected && !multiSelect_) markOnly(nullptr);
    chosen.selected_ = selected;
}

void ListView::userSetFocused(int row) {
    focused_ = row == 0 ? nullptr : &item(row);
}

void ListView::userColumnClick(int column) {
    const bool exists = column >= 1 && column <= static_cast<int>(columns_.size());
    // A hidden column has no header to click on.
    if (!reachable() || !exists || columns_[static_cast<std::size_t>(column - 1)].width == 0) return;
    dispatchUserEvent(onColumnClick, column);
}

void ListView::userKeyDown(int keyCode) {
    if (reachable()) dispatchUserEvent(onKeyDown, keyCode);
}

void ListView::userMouseUp(int button) {
    if (reachable()) dispatchUserEvent(onMouseUp, button);
}

void ListView::userContextMenu() {
    if (reachable()) dispatchUserEvent(onContextMenu);
}

void ListView::userDoubleClick() {
    if (reachable()) dispatchUserEvent(onDblClick);
}

}  // namespace bromvale

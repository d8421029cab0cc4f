#pragma once
#include <initializer_list>
#include <memory>
#include <vector>

#include "platform/controls/control_of.h"
#include "platform/controls/gap_vector.h"

namespace bromvale {

class ImageList;
class ListView;

// One row. Its address stays the same however the list is sorted, until the row is removed.
class ListItem {
  public:
    ListItem(ListView& list, std::string_view text, int smallIcon);
    [[nodiscard]] const std::string& text() const { return texts_[0]; }
    void setText(std::string_view text) { setColumn(0, text); }
    // Sub-items count from 1; empty beyond those that were set.
    [[nodiscard]] const std::string& subItem(int index) const { return column(index); }
    void setSubItem(int index, std::string_view text) { setColumn(index, text); }
    // Column 0 is the row's text.
    [[nodiscard]] const std::string& column(int index) const;
    [[nodiscard]] int smallIcon() const { return smallIcon_; }
    [[nodiscard]] bool selected() const { return selected_; }
    void setSelected(bool selected);
    // What the row's owner keeps with it; never shown, nor sorted by.
    [[nodiscard]] const std::string& tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }

  private:
    friend class ListView;
    void setColumn(int index, std::string_view text);
    ListView* list_;
    std::vector<std::string> texts_;
    std::string tag_;
    int smallIcon_;
    bool selected_ = false;
};

enum class SortOrder { Ascending = 0, Descending = 1 };

// Report list. Rows stand in the order of insertion until a sort key or order is assigned (or sorting is
// switched on); from then on they are kept sorted by the text of the sort column, without case, equal rows as
// they were.
class ListView : public ControlOf<ListView, ControlKind::ListView> {
  public:
    struct Column {
        std::string heading;
        int width;  // twips; 0 hides the column
    };

    using ControlOf::ControlOf;

    // The column header's index counts from 1.
    std::function<void(int column)> onColumnClick;
    std::function<void(int keyCode)> onKeyDown;
    // Button 1 left, 2 right, 4 middle.
    std::function<void(int button)> onMouseUp;
    std::function<void()> onDblClick;
    std::function<void()> onContextMenu;  // by the keyboard; the right button is a mouse button

    void setColumns(std::vector<Column> columns);
    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    void setSmallIcons(const ImageList* images) { images_ = images; }
    [[nodiscard]] const ImageList* smallIcons() const { return images_; }
    [[nodiscard]] bool multiSelect() const { return multiSelect_; }
    void setMultiSelect(bool on) { multiSelect_ = on; }

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    // Rows count from 1 in the order that the list shows; Failure 35600 out of range.
    [[nodiscard]] ListItem& item(int row);
    [[nodiscard]] const ListItem& item(int row) const;
    // Adds a row behind the last one (or where sorting puts it).
    ListItem& add(std::string_view text, int smallIcon);
    ListItem& add(std::initializer_list<std::string_view> columns, int smallIcon);
    void remove(int row);
    void clear();
    // The row that has the list's focus, counted from 1; 0 for none.
    [[nodiscard]] int selectedItem() const;

    [[nodiscard]] int sortKey() const { return sortKey_; }
    [[nodiscard]] SortOrder sortOrder() const { return sortOrder_; }
    [[nodiscard]] bool sorted() const { return sorted_; }
    void setSortKey(int key);
    void setSortOrder(SortOrder order);
    void setSorted(bool on);

    // What the user did. `userSelect` marks exactly the given rows (none: empty), the last one gets the
    // focus; `userSetSelected` is one row's change, which the window shows already.
    void userSelect(const std::vector<int>& rows);
    void userSetSelected(int row, bool selected);
    void userSetFocused(int row);
    void userColumnClick(int column);
    void userKeyDown(int keyCode);
    void userMouseUp(int button);
    void userDoubleClick();
    void userContextMenu() override;
    [[nodiscard]] bool hasContextMenu() const override { return static_cast<bool>(onContextMenu); }
    [[nodiscard]] bool takesFocus() const override { return true; }

  private:
    friend class ListItem;
    [[nodiscard]] std::size_t position(int row) const;
    ListItem& append(std::unique_ptr<ListItem> added);
    void markOnly(const ListItem* only);
    void textChanged(int column);
    void sortAnew();
    void sortNow() const;
    void sortByKeys(bool ascending) const;

    std::vector<Column> columns_;
    mutable GapVector<std::unique_ptr<ListItem>> rows_;  // a removal of marked rows takes them out one by one
    const ListItem* focused_ = nullptr;
    const ImageList* images_ = nullptr;
    int sortKey_ = 0;
    SortOrder sortOrder_ = SortOrder::Ascending;
    bool sorted_ = false;
    bool multiSelect_ = false;
    mutable bool sortDue_ = false;
};

}  // namespace bromvale

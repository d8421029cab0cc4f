#pragma once
#include <vector>

#include "platform/controls/control_of.h"

namespace bromvale {

class ImageList;

// The navigation bar: groups ("bars") of icons with captions, of which one group is open at a time and slides
// open when its header is clicked.
class ListBar : public ControlOf<ListBar, ControlKind::ListBar> {
  public:
    struct Item {
        std::string key;
        std::string caption;
        int iconIndex;  // from 0, into the image list
        std::string toolTip;
    };
    struct Bar {
        std::string caption;
        std::vector<Item> items;
    };

    // A bar's header (item -1) or an item; both count from 0.
    struct Part {
        int bar;
        int item;
        [[nodiscard]] bool isHeader() const { return item < 0; }
        bool operator==(const Part&) const = default;
    };

    using ControlOf::ControlOf;
    std::function<void(const Item&)> onItemClick;

    void setImageList(const ImageList* images);
    [[nodiscard]] const ImageList* imageList() const { return images_; }
    // Returns the number of bars that exist now.
    int addBar(std::string_view caption);
    // Adds to the last bar.
    void addItem(Item item);
    [[nodiscard]] const std::vector<Bar>& bars() const { return bars_; }
    // The items of a bar, and one of them; both count from 0.
    [[nodiscard]] const std::vector<Item>& items(int bar) const {
        return bars_[static_cast<std::size_t>(bar)].items;
    }
    [[nodiscard]] const Item& item(int bar, int index) const {
        return items(bar)[static_cast<std::size_t>(index)];
    }
    // The open bar, from 0.
    [[nodiscard]] int openBar() const { return openBar_; }
    void setOpenBar(int bar);

    // The user clicks the item with this caption; opens its bar first, and the keyboard comes there. False
    // where there is none.
    bool userItemClick(std::string_view caption);

    // The part that the keyboard is at: a header, or an item of the open bar. An opened bar has it at its
    // first item.
    [[nodiscard]] Part keyboardPart() const { return part_; }
    // The keyboard was used in the bar, so its part is shown and takes Return; before that, and behind a
    // mouse click, Return belongs to the form's default button.
    [[nodiscard]] bool keyboardShown() const { return keyboardShown_; }
    void showKeyboard(bool on);
    // Brings the keyboard to a part; for an item of a closed bar that is opened. `shown` as keyboardShown
    // tells.
    void userPart(Part part, bool shown = true);
    // A part is pressed: a header opens its bar, an item is clicked. The bar may be gone when this returns.
    void userPress(Part part);
    // Up and Down go through the headers and the items of the open bar, Home and End through its items; Ctrl
    // with Up and Down, Page Up and Page Down open the bar before and behind; Return and the space bar press
    // the part that is shown. `held` for the repetitions of a key that is held down, which press nothing.
    // True when the key was used up.
    bool userKey(int key, bool control, bool held);
    [[nodiscard]] bool takesFocus() const override { return true; }

  private:
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] bool exists(Part part) const;
    [[nodiscard]] std::vector<Part> reachableParts() const;
    void openByKey(int bar);
    void moveBy(int step);
    bool pressByKey(bool held);

    std::vector<Bar> bars_;
    const ImageList* images_ = nullptr;
    int openBar_ = 0;
    Part part_{0, 0};
    bool keyboardShown_ = false;
};

}  // namespace bromvale

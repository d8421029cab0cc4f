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

    // The user clicks the item with this caption; opens its bar first. False where there is none.
    bool userItemClick(std::string_view caption);
    [[nodiscard]] bool takesFocus() const override { return true; }

  private:
    std::vector<Bar> bars_;
    const ImageList* images_ = nullptr;
    int openBar_ = 0;
};

}  // namespace bromvale

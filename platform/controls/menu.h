#pragma once
#include <vector>

#include "platform/controls/control_of.h"
#include "platform/events.h"

namespace bromvale {

// An entry of a pop-up menu, or with children such a menu, which has one level. The caption "-" is a
// separator line.
class MenuItem : public ControlOf<MenuItem, ControlKind::Menu> {
  public:
    using ControlOf::ControlOf;
    std::function<void()> onClick;
    void add(MenuItem& child) { children_.push_back(&child); }
    [[nodiscard]] const std::vector<MenuItem*>& children() const { return children_; }
    // The user chooses the entry.
    void userChoose() {
        if (enabled() && visible()) dispatchUserEvent(onClick);
    }
    [[nodiscard]] bool hasAccessKey() const override { return false; }

  private:
    std::vector<MenuItem*> children_;
};

class ListView;

// Opens `menu` from the window of `owner`, `defaultItem` (or null) in bold, and runs the handler of the
// chosen entry before it returns: at the mouse position or, where the keyboard asked for it, at the selected
// row of `list`, which is brought into sight. Offline the menu is recorded; the machine's script chooses.
void showPopupMenu(Form& owner, MenuItem& menu, const MenuItem* defaultItem, const ListView* list = nullptr);

}  // namespace bromvale

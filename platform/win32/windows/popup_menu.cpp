#include <vector>

#include "platform/controls/form.h"
#include "platform/controls/menu.h"
#include "platform/win32/system/windows.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

class Popup {
  public:
    Popup() : menu_(CreatePopupMenu()) {}
    ~Popup() { DestroyMenu(menu_); }
    Popup(const Popup&) = delete;
    Popup& operator=(const Popup&) = delete;

    void fill(const MenuItem& menu, const MenuItem* defaultItem) { fill(menu_, menu, defaultItem); }

    MenuItem* choose(HWND owner) {
        POINT at{};
        GetCursorPos(&at);
        const int chosen = static_cast<int>(
            TrackPopupMenu(menu_, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_RIGHTBUTTON, at.x, at.y,
                           0, owner, nullptr));
        return chosen > 0 ? items_[static_cast<std::size_t>(chosen) - 1] : nullptr;
    }

  private:
    // Numbers count from 1 over all levels; 0 stands for "nothing chosen".
    void fill(HMENU into, const MenuItem& menu, const MenuItem* defaultItem) {
        for (MenuItem* item : menu.children()) {
            if (!item->visible()) continue;
            items_.push_back(item);
            UINT_PTR id = items_.size();
            UINT flags = item->enabled() ? MF_STRING : MF_STRING | MF_GRAYED;
            if (item->caption() == "-") flags = MF_SEPARATOR;
            if (!item->children().empty()) {
                const HMENU below = CreatePopupMenu();
                fill(below, *item, defaultItem);
                flags |= MF_POPUP;
                id = reinterpret_cast<UINT_PTR>(below);
            }
            AppendMenuA(into, flags, id, item->caption().c_str());
            if (item == defaultItem) SetMenuDefaultItem(into, static_cast<UINT>(id), FALSE);
        }
    }

    HMENU menu_;
    std::vector<MenuItem*> items_;
};

}  // namespace

void showPopupMenu(Form& owner, MenuItem& menu, const MenuItem* defaultItem) {
    owner.load();
    flushPaints();
    MenuItem* chosen = nullptr;
    {
        Popup popup;
        popup.fill(menu, defaultItem);
        chosen = popup.choose(owner.window());
    }
    // Without a message behind it a menu of the notification area doesn't close at the next click beside it.
    PostMessageA(owner.window(), WM_NULL, 0, 0);
    if (chosen != nullptr) chosen->userChoose();
}

}  // namespace bromvale

#include <algorithm>
#include <vector>

#include "platform/controls/form.h"
#include "platform/controls/list_view.h"
#include "platform/controls/menu.h"
#include "platform/win32/windows/common_controls.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

namespace {

// The entries that are shown, in one level.
class Popup {
  public:
    Popup(const MenuItem& menu, const MenuItem* defaultItem) : menu_(CreatePopupMenu()) {
        for (MenuItem* item : menu.children()) {
            if (item->visible()) append(*item, item == defaultItem);
        }
    }
    ~Popup() { DestroyMenu(menu_); }
    Popup(const Popup&) = delete;
    Popup& operator=(const Popup&) = delete;

    MenuItem* choose(HWND owner, POINT at) {
        const int chosen = static_cast<int>(
            TrackPopupMenu(menu_, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_RIGHTBUTTON, at.x, at.y,
                           0, owner, nullptr));
        return chosen > 0 ? items_[static_cast<std::size_t>(chosen) - 1] : nullptr;
    }

  private:
    // Numbers count from 1; 0 stands for "nothing chosen".
    void append(MenuItem& item, bool isDefault) {
        items_.push_back(&item);
        const auto id = static_cast<UINT>(items_.size());
        UINT flags = item.enabled() ? MF_STRING : MF_STRING | MF_GRAYED;
        if (item.caption() == "-") flags = MF_SEPARATOR;
        AppendMenuA(menu_, flags, id, item.caption().c_str());
        if (isDefault) SetMenuDefaultItem(menu_, id, FALSE);
    }

    HMENU menu_;
    std::vector<MenuItem*> items_;
};

POINT mousePlace() {
    POINT at{};
    GetCursorPos(&at);
    return at;
}

// Below the text of the marked row that has the focus, or of the first marked one; without any, at the upper
// edge of the rows.
POINT selectedPlace(HWND list) {
    const auto next = [list](LPARAM states) {
        return SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), states);
    };
    LRESULT row = next(LVNI_SELECTED | LVNI_FOCUSED);
    if (row < 0) row = next(LVNI_SELECTED);
    RECT place{};
    if (row >= 0) {
        SendMessageA(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
        place.left = LVIR_LABEL;
        SendMessageA(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    } else {
        const auto header = reinterpret_cast<HWND>(SendMessageA(list, LVM_GETHEADER, 0, 0));
        if (header != nullptr) GetClientRect(header, &place);
    }
    POINT at{std::max<LONG>(place.left, 0), place.bottom};
    ClientToScreen(list, &at);
    return at;
}

}  // namespace

void showPopupMenu(Form& owner, MenuItem& menu, const MenuItem* defaultItem, const ListView* list) {
    owner.load();
    flushPaints();
    MenuItem* chosen = nullptr;
    {
        Popup popup(menu, defaultItem);
        const HWND window = list != nullptr && list->peer() != nullptr ? list->peer()->window() : nullptr;
        chosen = popup.choose(owner.window(), window != nullptr ? selectedPlace(window) : mousePlace());
    }
    // Without a message behind it a menu of the notification area doesn't close at the next click beside it.
    PostMessageA(owner.window(), WM_NULL, 0, 0);
    if (chosen != nullptr) chosen->userChoose();
}

}  // namespace bromvale

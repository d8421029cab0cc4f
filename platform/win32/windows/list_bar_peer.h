#pragma once
#include <vector>

#include "platform/win32/windows/list_bar_layout.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

// What the mouse and the keyboard do to a list bar at the moment.
struct ListBarState {
    ListBarHit hot;
    ListBarHit pressed;
    int focusedItem = -1;  // of the open bar, with a frame around its caption; -1 for none
};

void paintListBar(HDC dc, const RECT& client, const ListBar& bar, const ListBarLayout& layout,
                  const ListBarState& state, const Scale& scale);

// The tool-tips of a list bar: one per item of the open bar.
class ListBarTips {
  public:
    ListBarTips() = default;
    ~ListBarTips();
    ListBarTips(const ListBarTips&) = delete;
    ListBarTips& operator=(const ListBarTips&) = delete;

    // Brings the tips to where the items are now.
    void place(HWND owner, const ListBar& bar, const ListBarLayout& layout, const Scale& scale);
    // They are made anew at the next place, with the fonts of the window's scaling then.
    void drop();

  private:
    HWND window_ = nullptr;
    unsigned count_ = 0;
};

// The navigation bar: a control of its own, since Windows has none of this kind.
class ListBarPeer : public WindowPeer {
  public:
    explicit ListBarPeer(ListBar& bar);
    LRESULT userMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void rescaled(const Scale& before) override;
    // Return belongs to the item that wears the focus frame; without one the default button has the frame.
    [[nodiscard]] bool keepsKey(WPARAM key, HWND focus) const override {
        return key == VK_RETURN && focus == window() && focusShown();
    }

  protected:
    void apply(Property property) override;
    [[nodiscard]] bool immediate(Property property) const override { return property == Property::Selection; }

  private:
    void refresh();
    void slide();
    void slideOn();
    void ticked(UINT_PTR timer);
    [[nodiscard]] RECT clientRect() const;
    void scrollBy(int pixels);
    void bringIntoView(int index);

    void paint();
    void setHot(const ListBarHit& hit);
    void mouseMoved(POINT at);
    void pressed(POINT at);
    void released(POINT at);
    void forgetPress();
    bool scrollByButton(ListBarHit::Part part);
    bool mouseMessage(UINT message, WPARAM wParam, POINT at);
    void openByUser(int bar);
    bool keyPressed(WPARAM key, bool held);
    [[nodiscard]] bool focusShown() const { return state_.focusedItem >= 0; }
    void clickFocused();
    void moveFocus(int index);
    [[nodiscard]] int itemCount() const;
    [[nodiscard]] LRESULT itemCentre(int number) const;
    [[nodiscard]] LRESULT headerCentre(int number) const;
    [[nodiscard]] LRESULT onScreen(const RECT& rect, const RECT& visible) const;

    static constexpr UINT_PTR kScrollTimer = 2;

    ListBar& bar_;
    ListBarTips tips_;
    ListBarLayout layout_;
    ListBarState state_;
    std::vector<int> tops_;       // where the headers are now
    std::vector<int> slideFrom_;  // and where they were when the slide began
    DWORD slideBegan_ = 0;
    int scroll_ = 0;
    int focusItem_ = 0;
    bool sliding_ = false;
    bool keyboard_ = false;  // the last input came from it, so the focus is shown
    bool tracking_ = false;
};

}  // namespace bromvale

#pragma once
#include <vector>

#include "platform/win32/windows/accessible_parts.h"
#include "platform/win32/windows/list_bar_layout.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {

// What the mouse and the keyboard do to a list bar at the moment.
struct ListBarState {
    ListBarHit hot;
    ListBarHit pressed;
    // The part with a frame around its caption; none before the keyboard was used.
    ListBar::Part focused{-1, -1};
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
class ListBarPeer : public WindowPeer, private AccessibleParts {
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
    [[nodiscard]] bool immediate(Property property) const override {
        return property == Property::Selection || property == Property::Focus;
    }

    LRESULT accessible(WPARAM wParam, LPARAM lParam) override {
        flush();
        return accessible_.answer(window(), *this, wParam, lParam);
    }

  private:
    [[nodiscard]] int count() const override;
    [[nodiscard]] AccessiblePart part(int number) const override;
    [[nodiscard]] int focusedPart() const override;
    [[nodiscard]] int selectedPart() const override;
    void pressSoon(int number) override;
    bool choosePart(int number, bool focus) override;

    [[nodiscard]] ListBar::Part partOf(int number) const;
    [[nodiscard]] int numberOf(ListBar::Part part) const;
    [[nodiscard]] AccessiblePart wholeBar() const;
    [[nodiscard]] AccessiblePart headerPart(int bar) const;
    [[nodiscard]] AccessiblePart itemPart(ListBar::Part part) const;
    // Posted with a part's number.
    [[nodiscard]] static UINT pressMessage();
    void tellFocus();
    void tellSelection();
    void tellOpened(int before);

    void refresh();
    void slide();
    void slideOn();
    void ticked(UINT_PTR timer);
    [[nodiscard]] RECT clientRect() const;
    void scrollBy(int pixels);
    void bringIntoView(ListBar::Part part);

    void paint();
    void setHot(const ListBarHit& hit);
    void mouseMoved(POINT at);
    void pressed(POINT at);
    void released(POINT at);
    void forgetPress();
    bool scrollByButton(ListBarHit::Part part);
    bool mouseMessage(UINT message, WPARAM wParam, POINT at);
    [[nodiscard]] bool focusShown() const { return state_.focused.bar >= 0; }
    [[nodiscard]] LRESULT itemCentre(int number) const;
    [[nodiscard]] LRESULT headerCentre(int number) const;
    [[nodiscard]] LRESULT onScreen(const RECT& rect, const RECT& visible) const;

    static constexpr UINT_PTR kScrollTimer = 2;

    ListBar& bar_;
    AccessibleWindow accessible_;
    ListBarTips tips_;
    ListBarLayout layout_;
    ListBarState state_;
    std::vector<int> tops_;       // where the headers are now
    std::vector<int> slideFrom_;  // and where they were when the slide began
    DWORD slideBegan_ = 0;
    int scroll_ = 0;
    int shownBar_ = 0;  // open in the window
    int toldFocus_ = -1;
    int toldSelection_ = -1;
    bool sliding_ = false;
    bool tracking_ = false;
};

}  // namespace bromvale

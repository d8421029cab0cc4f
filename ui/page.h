#pragma once
#include "ui/main_window.h"
#include "ui/rows.h"

namespace bromvale {

// A page of the main window: its controls, its table, and its handlers, which are defined in the folder that
// the page belongs to. Every page lies on the same spot.
class Page {
  public:
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    void show() { window.showPage(*this); }
    [[nodiscard]] Frame& frame() const { return frame_; }
    // Puts the controls into their design state.
    virtual void design() = 0;
    // The window's inner size is another one.
    virtual void resize() = 0;

    MainWindow& window;

  protected:
    // The frame is the page's own, which is made behind this.
    Page(MainWindow& ofWindow, Frame& frame) : window(ofWindow), frame_(frame) {
        window.pages_.push_back(this);
    }
    ~Page() = default;
    // What no row says.
    virtual void designRest() {}
    // The frame keeps to the window, and scrolls where what it holds has more room than that.
    void fitFrame();

  private:
    Frame& frame_;
};

// A page by its table: Self has rows(), a span of its Row<Self>.
template <class Self, class Base = Page>
class PageOf : public Base {
  public:
    void design() override {
        designRows(static_cast<Self&>(*this), Self::rows());
        this->designRest();
    }
    void resize() override {
        this->fitFrame();
        resizeRows(static_cast<Self&>(*this), Self::rows(), this->window.roomyInnerSize());
    }

  protected:
    using Base::Base;
    ~PageOf() = default;
    void connect() { connectRows(static_cast<Self&>(*this), Self::rows()); }
};

inline constexpr Place kPagePlace{1920, 120, 8295, 6650};
// A page fills the window right of the bar, its list grows with both sides, and the buttons below stay at the
// bottom edge.
inline constexpr Follows kPageFollows{.height = 620, .width = 2100};
inline constexpr Follows kListFollows{.height = 1700, .width = 2550};
inline constexpr Follows kButtonFollows{.top = 1200};

}  // namespace bromvale

// A window that comes to a screen of another scaling, and a page that is larger than the window.
#include "base/scale.h"
#include "resources/resource_ids.h"
#include "tests/win32/sample_form.h"

namespace bromvale::testing {
namespace {

constexpr UINT kDpiChanged = 0x02E0;

class Scaling : public RealWindows {
  protected:
    void SetUp() override {
        form.imgIcons.add("Muster", BROMVALE_ICON_LIST_FIRST);
        form.lvwRows.setSmallIcons(&form.imgIcons);
        RealWindows::SetUp();
        ASSERT_EQ(systemScale().dpi(), 96);
    }

    static RECT screenRect(HWND window) {
        RECT rect{};
        GetWindowRect(window, &rect);
        return rect;
    }
    static std::string text(const RECT& rect) {
        return std::to_string(rect.left) + " " + std::to_string(rect.top) + " " + std::to_string(rect.right) +
               " " + std::to_string(rect.bottom);
    }
    static SIZE sizeOf(const Control& control) {
        const RECT rect = screenRect(windowOf(control));
        return {rect.right - rect.left, rect.bottom - rect.top};
    }
    POINT inFrame(const Control& control) const {
        const RECT rect = screenRect(windowOf(control));
        POINT at{rect.left, rect.top};
        ScreenToClient(windowOf(form.fraPage), &at);
        return at;
    }
    static LONG fontOf(const Control& control) {
        LOGFONTA font{};
        GetObjectA(reinterpret_cast<HFONT>(send(control, WM_GETFONT)), sizeof font, &font);
        return font.lfHeight;
    }
    static LRESULT columnWidth(const Control& list, int column) {
        return send(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column));
    }
    // The system's message, with the place that it suggests.
    void drag(int dpi, RECT suggested) const {
        SendMessageA(form.window(), kDpiChanged, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
    }
    // The window's place on a screen of that scaling, at the same corner.
    RECT suggestedAt(int dpi) const {
        const Scale scale(dpi);
        const RECT now = screenRect(form.window());
        return {now.left, now.top, now.left + scale.pixels(form.width()),
                now.top + scale.pixels(form.height())};
    }
};

TEST_F(Scaling, TheWindowTakesTheSuggestedPlaceAndKeepsItsSizeInTwips) {
    const int width = form.width();
    const int height = form.height();
    const RECT suggested = suggestedAt(168);
    drag(168, suggested);
    const RECT now = screenRect(form.window());
    EXPECT_EQ(now.right, suggested.right);
    EXPECT_EQ(now.bottom, suggested.bottom);
    EXPECT_EQ(form.width(), width);
    EXPECT_EQ(form.height(), height);
}

TEST_F(Scaling, PlacesAndFontsFollow) {
    EXPECT_EQ(fontOf(form.cmdOk), -11);
    drag(168, suggestedAt(168));
    // 240, 6300 and 1095 x 375 twips.
    EXPECT_EQ(inFrame(form.cmdOk).x, 28);
    EXPECT_EQ(inFrame(form.cmdOk).y, 735);
    EXPECT_EQ(sizeOf(form.cmdOk).cx, 128);
    EXPECT_EQ(sizeOf(form.cmdOk).cy, 44);
    for (const Control* control : std::initializer_list<Control*>{
             &form.cmdOk, &form.chbMark, &form.txtName, &form.lvwRows, &form.cboKind, &form.fraPage}) {
        EXPECT_EQ(fontOf(*control), -19) << control->name();
    }
    EXPECT_EQ(sizeOf(form.Status).cy, 30);
}

TEST_F(Scaling, ColumnsGrowFromWhatTheUserMadeOfThem) {
    ASSERT_EQ(columnWidth(form.lvwRows, 0), 133);
    send(form.lvwRows, LVM_SETCOLUMNWIDTH, 1, 50);
    drag(192, suggestedAt(192));
    EXPECT_EQ(columnWidth(form.lvwRows, 0), 266);
    EXPECT_EQ(columnWidth(form.lvwRows, 1), 100);
    EXPECT_EQ(columnWidth(form.lvwRows, 2), 0);
}

TEST_F(Scaling, PicturesOfAListGetTheirSize) {
    const auto edge = [this] {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(send(form.lvwRows, LVM_GETIMAGELIST, LVSIL_SMALL)),
                              &width, &height);
        return width;
    };
    EXPECT_EQ(edge(), 16);
    drag(168, suggestedAt(168));
    EXPECT_EQ(edge(), 28);
    drag(240, suggestedAt(240));
    EXPECT_EQ(edge(), 40);
}

TEST_F(Scaling, BackOnTheFirstScreenEverythingIsAsItWas) {
    std::vector<std::string> before;
    for (const Control* control : form.controls()) {
        if (control->peer() != nullptr && control->peer()->window() != nullptr)
            before.push_back(text(screenRect(windowOf(*control))));
    }
    for (const int dpi : {216, 120, 96}) drag(dpi, suggestedAt(dpi));
    std::size_t at = 0;
    for (const Control* control : form.controls()) {
        if (control->peer() == nullptr || control->peer()->window() == nullptr) continue;
        EXPECT_EQ(text(screenRect(windowOf(*control))), before[at++]) << control->name();
    }
    EXPECT_EQ(columnWidth(form.lvwRows, 0), 133);
    EXPECT_EQ(fontOf(form.cmdOk), -11);
}

TEST_F(Scaling, ASizeOfNoWholePixelsStaysAsItWasGiven) {
    form.setWidth(9007);
    EXPECT_EQ(form.width(), 9007);
    EXPECT_EQ(screenRect(form.window()).right - screenRect(form.window()).left, 600);
}

class Scrolling : public Scaling {
  protected:
    void SetUp() override {
        Scaling::SetUp();
        form.fraPage.setContentSize(6900, 6900);
        form.fraPage.setHeight(3000);
        ASSERT_TRUE(bar(WS_VSCROLL));
    }
    [[nodiscard]] bool bar(LONG style) const {
        return (GetWindowLongA(windowOf(form.fraPage), GWL_STYLE) & style) != 0;
    }
    [[nodiscard]] bool inView(const Control& control) const {
        RECT seen{};
        GetClientRect(windowOf(form.fraPage), &seen);
        const POINT at = inFrame(control);
        const SIZE size = sizeOf(control);
        return at.x >= 0 && at.y >= 0 && at.x + size.cx <= seen.right && at.y + size.cy <= seen.bottom;
    }
    static void altKey(const Control& control, WPARAM key) {
        PostMessageA(windowOf(control), WM_SYSKEYDOWN, key, 0x20000001);
        DoEvents();
    }
};

TEST_F(Scrolling, AControlThatGetsTheKeyboardComesIntoView) {
    EXPECT_FALSE(inView(form.cmdOk));
    SetFocus(windowOf(form.cmdOk));
    EXPECT_TRUE(inView(form.cmdOk));
    EXPECT_EQ(form.cmdOk.place(), (Place{240, 6300, 1095, 375}));
    SetFocus(windowOf(form.lvwRows));
    EXPECT_EQ(inFrame(form.lvwRows).y, 0) << "a control that fits comes in by the shortest way";
}

TEST_F(Scrolling, AKeyScrollsWhereNothingTakesTheKeyboard) {
    for (int i = 0; i < 5; ++i) altKey(form.Bar, VK_NEXT);
    EXPECT_TRUE(inView(form.cmdOk));
    for (int i = 0; i < 5; ++i) altKey(form.Bar, VK_PRIOR);
    EXPECT_EQ(inFrame(form.cmdOk).y, 420);
}

TEST_F(Scrolling, AnArrowScrollsToTheSide) {
    form.fraPage.setWidth(3000);
    const POINT before = inFrame(form.lvwRows);
    altKey(form.Bar, VK_RIGHT);
    EXPECT_LT(inFrame(form.lvwRows).x, before.x);
    EXPECT_EQ(inFrame(form.lvwRows).y, before.y);
    altKey(form.Bar, VK_LEFT);
    EXPECT_EQ(inFrame(form.lvwRows).x, before.x);
}

TEST_F(Scrolling, TheWheelAndTheBarScroll) {
    send(form.fraPage, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
    EXPECT_EQ(inFrame(form.cmdOk).y, 324);
    SendMessageA(form.window(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(inFrame(form.cmdOk).y, 420);
    send(form.fraPage, WM_VSCROLL, SB_BOTTOM);
    EXPECT_TRUE(inView(form.cmdOk));
    send(form.fraPage, WM_VSCROLL, SB_TOP);
    EXPECT_EQ(inFrame(form.cmdOk).y, 420);
}

TEST_F(Scrolling, AMovedControlStaysWithTheOthers) {
    send(form.fraPage, WM_VSCROLL, SB_BOTTOM);
    const POINT before = inFrame(form.cmdOk);
    form.cmdOk.setTop(form.cmdOk.top() - 150);
    EXPECT_EQ(inFrame(form.cmdOk).y, before.y - 10);
}

TEST_F(Scrolling, WithRoomAgainNothingIsScrolled) {
    send(form.fraPage, WM_VSCROLL, SB_BOTTOM);
    form.fraPage.setHeight(6900);
    EXPECT_FALSE(bar(WS_VSCROLL));
    EXPECT_EQ(inFrame(form.cmdOk).y, 420);
    send(form.fraPage, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
    EXPECT_EQ(inFrame(form.cmdOk).y, 420);
}

}  // namespace
}  // namespace bromvale::testing

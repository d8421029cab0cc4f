// The report list and the navigation bar as windows.
#include "tests/win32/sample_form.h"

namespace bromvale::testing {

class RealLists : public RealWindows {
  protected:
    void SetUp() override {
        RealWindows::SetUp();
        form.lvwRows.add({"Berta", "2", "x"}, 0);
        form.lvwRows.add({"anton", "3", "y"}, 0);
        form.lvwRows.add({"Cäsar", "1", "z"}, 0);
        idle();
    }

    std::string cell(int row, int column) const {
        char text[200] = {};
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        send(form.lvwRows, LVM_GETITEMTEXTA, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&item));
        return text;
    }
    bool marked(int row) const {
        return send(form.lvwRows, LVM_GETITEMSTATE, static_cast<WPARAM>(row - 1), LVIS_SELECTED) != 0;
    }
    void mark(int row, bool on) const {
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED;
        item.state = on ? LVIS_SELECTED : 0u;
        send(form.lvwRows, LVM_SETITEMSTATE, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&item));
    }
    LPARAM middleOf(int row) const {
        RECT rect{};
        rect.left = LVIR_LABEL;
        send(form.lvwRows, LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), reinterpret_cast<LPARAM>(&rect));
        return MAKELPARAM(rect.left + 5, (rect.top + rect.bottom) / 2);
    }
};

TEST_F(RealLists, TheWindowShowsTheRowsOfTheControl) {
    EXPECT_EQ(send(form.lvwRows, LVM_GETITEMCOUNT), 3);
    EXPECT_EQ(cell(1, 0), "Berta");
    EXPECT_EQ(cell(3, 0), "Cäsar");
    EXPECT_EQ(cell(3, 2), "z");
    form.lvwRows.remove(1);
    form.lvwRows.item(1).setSubItem(1, "neu");
    idle();
    EXPECT_EQ(send(form.lvwRows, LVM_GETITEMCOUNT), 2);
    EXPECT_EQ(cell(1, 0), "anton");
    EXPECT_EQ(cell(1, 1), "neu");
}

TEST_F(RealLists, ARowThatIsGoneIsEmptyUntilTheWindowKnows) {
    form.lvwRows.clear();
    EXPECT_EQ(cell(3, 0), "");
    idle();
    EXPECT_EQ(send(form.lvwRows, LVM_GETITEMCOUNT), 0);
}

TEST_F(RealLists, MarksGoBothWays) {
    form.lvwRows.item(2).setSelected(true);
    idle();
    EXPECT_FALSE(marked(1));
    EXPECT_TRUE(marked(2));
    mark(3, true);
    EXPECT_TRUE(form.lvwRows.item(3).selected());
    mark(2, false);
    EXPECT_FALSE(form.lvwRows.item(2).selected());
}

TEST_F(RealLists, SortingTakesTheMarksAlong) {
    form.lvwRows.item(1).setSelected(true);  // Berta
    form.lvwRows.setSortKey(0);
    form.lvwRows.setSorted(true);
    idle();
    EXPECT_EQ(cell(1, 0), "anton");
    EXPECT_EQ(cell(2, 0), "Berta");
    EXPECT_FALSE(marked(1));
    EXPECT_TRUE(marked(2));
    EXPECT_TRUE(form.lvwRows.item(2).selected());
}

TEST_F(RealLists, EachPressOfAButtonHasOneRelease) {
    std::vector<int> buttons;
    form.lvwRows.onMouseUp = [&](int button) { buttons.push_back(button); };
    for (const LPARAM at : {middleOf(2), static_cast<LPARAM>(MAKELPARAM(20, 150))}) {
        PostMessageA(windowOf(form.lvwRows), WM_LBUTTONDOWN, MK_LBUTTON, at);
        PostMessageA(windowOf(form.lvwRows), WM_LBUTTONUP, 0, at);
        DoEvents();
        PostMessageA(windowOf(form.lvwRows), WM_RBUTTONDOWN, MK_RBUTTON, at);
        PostMessageA(windowOf(form.lvwRows), WM_RBUTTONUP, 0, at);
        DoEvents();
    }
    EXPECT_EQ(buttons, (std::vector<int>{1, 2, 1, 2}));
}

TEST_F(RealLists, TheMarksAreKnownWhenTheReleaseIsTold) {
    int selected = 0;
    form.lvwRows.onMouseUp = [&](int) {
        for (int row = 1; row <= 3; ++row) selected += form.lvwRows.item(row).selected() ? 1 : 0;
    };
    const LPARAM at = middleOf(2);
    PostMessageA(windowOf(form.lvwRows), WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(windowOf(form.lvwRows), WM_LBUTTONUP, 0, at);
    DoEvents();
    EXPECT_EQ(selected, 1);
    EXPECT_TRUE(form.lvwRows.item(2).selected());
}

// A window that believed the focus to be on that place already would not tell of the click.
TEST_F(RealLists, AClickOnThePlaceOfARowThatIsGoneFocusesTheRowThatCameAfterIt) {
    const auto click = [&](int row) {
        PostMessageA(windowOf(form.lvwRows), WM_LBUTTONDOWN, MK_LBUTTON, middleOf(row));
        PostMessageA(windowOf(form.lvwRows), WM_LBUTTONUP, 0, middleOf(row));
        DoEvents();
    };
    click(2);
    EXPECT_EQ(form.lvwRows.selectedItem(), 2);
    for (int refill = 1; refill <= 2; ++refill) {
        form.lvwRows.clear();
        for (const char* name : {"eins", "zwei"}) form.lvwRows.add(name, 0);
        idle();
        EXPECT_EQ(form.lvwRows.selectedItem(), 0);
        EXPECT_EQ(send(form.lvwRows, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), -1);
        click(2);
        EXPECT_EQ(form.lvwRows.selectedItem(), 2);
        EXPECT_TRUE(form.lvwRows.item(2).selected());
    }
}

TEST_F(RealLists, FunctionKeysReachTheHandler) {
    std::vector<int> keys;
    form.lvwRows.onKeyDown = [&](int key) { keys.push_back(key); };
    form.lvwRows.setFocus();
    press(form.lvwRows, VK_F4);
    press(form.lvwRows, VK_F7);
    EXPECT_EQ(keys, (std::vector<int>{115, 118}));
}

TEST_F(RealLists, AColumnWithoutWidthCannotBeDraggedOpen) {
    const auto header = reinterpret_cast<HWND>(send(form.lvwRows, LVM_GETHEADER));
    NMHEADERA drag{};
    drag.hdr.hwndFrom = header;
    drag.hdr.code = HDN_BEGINTRACKA;
    drag.iItem = 2;
    EXPECT_EQ(send(form.lvwRows, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drag)), TRUE);
    EXPECT_EQ(send(form.lvwRows, LVM_GETCOLUMNWIDTH, 2), 0);
}

class RealBar : public RealWindows {
  protected:
    LPARAM itemAt(int number) const {
        return inBar(RegisterWindowMessageA("BromvaleListBarItemRect"), number);
    }
    LPARAM headerAt(int number) const {
        return inBar(RegisterWindowMessageA("BromvaleListBarHeaderRect"), number);
    }

    void click(LPARAM at) const {
        PostMessageA(windowOf(form.Bar), WM_LBUTTONDOWN, MK_LBUTTON, at);
        PostMessageA(windowOf(form.Bar), WM_LBUTTONUP, 0, at);
        DoEvents();
    }
    void waitUntilOpen(int item) const {
        for (int i = 0; i < 200 && itemAt(item) == 0; ++i) {
            WaitForEvents(10);
            DoEvents();
        }
    }

  private:
    LPARAM inBar(UINT message, int number) const {
        const auto packed = static_cast<DWORD>(send(form.Bar, message, static_cast<WPARAM>(number)));
        if (packed == 0) return 0;
        POINT at{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))};
        ScreenToClient(windowOf(form.Bar), &at);
        return MAKELPARAM(at.x, at.y);
    }
};

TEST_F(RealBar, AnItemIsClickedWhereTheBarSaysItIs) {
    std::vector<std::string> clicked;
    form.Bar.onItemClick = [&](const ListBar::Item& item) { clicked.push_back(item.caption); };
    ASSERT_NE(itemAt(2), 0);
    EXPECT_EQ(itemAt(3), 0) << "its bar is closed";
    click(itemAt(2));
    click(itemAt(1));
    EXPECT_EQ(clicked, (std::vector<std::string>{"Hilfe", "Backup"}));
}

TEST_F(RealBar, AHeaderOpensItsBarWithoutBlocking) {
    int clicks = 0;
    form.Bar.onItemClick = [&](const ListBar::Item&) { ++clicks; };
    click(headerAt(2));
    EXPECT_EQ(form.Bar.openBar(), 1);
    waitUntilOpen(3);
    EXPECT_NE(itemAt(3), 0);
    EXPECT_EQ(itemAt(1), 0);
    EXPECT_EQ(clicks, 0);
}

TEST_F(RealBar, WithoutAFocusFrameReturnReachesTheDefaultButtonAndSpaceNobody) {
    int items = 0;
    int defaults = 0;
    form.Bar.onItemClick = [&](const ListBar::Item&) { ++items; };
    form.cmdOk.onClick = [&] { ++defaults; };
    form.Bar.setFocus();
    press(form.Bar, VK_RETURN);
    press(form.Bar, VK_SPACE);
    EXPECT_EQ(items, 0);
    EXPECT_EQ(defaults, 1);
    press(form.Bar, VK_DOWN);
    click(itemAt(1));
    press(form.Bar, VK_RETURN);
    EXPECT_EQ(items, 1) << "the click's own";
    EXPECT_EQ(defaults, 2);
}

TEST_F(RealBar, AKeyThatIsHeldDownIsOneOrder) {
    constexpr LPARAM kRepeated = LPARAM{1} << 30;
    int items = 0;
    int defaults = 0;
    form.Bar.onItemClick = [&](const ListBar::Item&) { ++items; };
    form.cmdOk.onClick = [&] { ++defaults; };
    const auto hold = [&](WPARAM key) {
        press(form.Bar, key);
        for (int i = 0; i < 5; ++i) PostMessageA(windowOf(form.Bar), WM_KEYDOWN, key, kRepeated);
        DoEvents();
    };
    form.Bar.setFocus();
    hold(VK_RETURN);
    EXPECT_EQ(defaults, 1);
    press(form.Bar, VK_DOWN);
    hold(VK_RETURN);
    EXPECT_EQ(items, 1);
    hold(VK_SPACE);
    EXPECT_EQ(items, 2);
    EXPECT_EQ(defaults, 1);
}

TEST_F(RealBar, TheKeyboardMovesAndClicks) {
    std::vector<std::string> clicked;
    form.Bar.onItemClick = [&](const ListBar::Item& item) { clicked.push_back(item.caption); };
    int defaults = 0;
    form.cmdOk.onClick = [&] { ++defaults; };
    form.Bar.setFocus();
    press(form.Bar, VK_DOWN);
    press(form.Bar, VK_RETURN);
    press(form.Bar, VK_UP);
    press(form.Bar, VK_SPACE);
    press(form.Bar, VK_NEXT);
    press(form.Bar, VK_SPACE);
    EXPECT_EQ(clicked, (std::vector<std::string>{"Hilfe", "Backup", "Homepage"}));
    EXPECT_EQ(defaults, 0);
}

// A bar that shows one or two of its five items, the third to the seventh.
class LowBar : public RealBar {
  protected:
    void SetUp() override {
        RealBar::SetUp();
        for (const char* key : {"4", "5", "6", "7"}) form.Bar.addItem({key, key, 2, ""});
        form.Bar.setHeight(2100);
        form.Bar.setOpenBar(1);
        waitUntilOpen(3);
        ASSERT_NE(itemAt(3), 0);
        ASSERT_EQ(itemAt(7), 0);
    }
};

TEST_F(LowBar, TheKeyboardBringsAnItemIntoView) {
    form.Bar.setFocus();
    for (int i = 0; i < 6; ++i) press(form.Bar, VK_DOWN);
    EXPECT_NE(itemAt(7), 0);
    EXPECT_EQ(itemAt(3), 0);
    for (int i = 0; i < 6; ++i) press(form.Bar, VK_UP);
    EXPECT_NE(itemAt(3), 0);
}

TEST_F(LowBar, TheWheelScrollsItAndStopsAtItsEnds) {
    const auto turn = [&](int notches) {
        send(form.Bar, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-notches * WHEEL_DELTA)));
    };
    turn(100);
    EXPECT_NE(itemAt(7), 0);
    turn(-1);
    turn(1);
    EXPECT_NE(itemAt(7), 0) << "it was at its end";
    turn(-100);
    EXPECT_NE(itemAt(3), 0);
    EXPECT_EQ(itemAt(7), 0);
}

}  // namespace bromvale::testing

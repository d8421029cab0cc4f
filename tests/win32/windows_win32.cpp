// Windows and the state behind them: names, texts, marks, places.
#include <stdexcept>

#include "tests/win32/sample_form.h"

namespace bromvale::testing {

TEST_F(RealWindows, EveryWindowIsFoundByTheNameOfItsControl) {
    EXPECT_NE(GetPropA(form.window(), "BromvaleName:frmSample"), nullptr);
    EXPECT_NE(GetPropA(windowOf(form.fraPage), "BromvaleName:fraPage"), nullptr);
    EXPECT_NE(GetPropA(windowOf(form.cmdÜbernehmen), "BromvaleName:cmdÜbernehmen"), nullptr);
    EXPECT_NE(GetPropA(windowOf(form.lvwRows), "BromvaleName:lvwRows"), nullptr);
    EXPECT_NE(GetPropA(windowOf(form.Bar), "BromvaleName:Bar"), nullptr);
    EXPECT_EQ(GetPropA(windowOf(form.Bar), "BromvaleName:lvwRows"), nullptr);
}

TEST_F(RealWindows, AnUnloadedFormHasNoWindowAnyMore) {
    const HWND top = form.window();
    const HWND button = windowOf(form.cmdOk);
    form.unload();
    EXPECT_FALSE(IsWindow(top));
    EXPECT_FALSE(IsWindow(button));
    EXPECT_EQ(form.window(), nullptr);
    form.show();
    EXPECT_TRUE(IsWindow(form.window()));
}

TEST_F(RealWindows, AWindowStandsAtItsPlaceInPixels) {
    RECT rect{};
    GetWindowRect(windowOf(form.cmdOk), &rect);
    MapWindowPoints(nullptr, windowOf(form.fraPage), reinterpret_cast<POINT*>(&rect), 2);
    ASSERT_EQ(systemScale().dpi(), 96);
    EXPECT_EQ(rect.left, 16);
    EXPECT_EQ(rect.top, 420);
    EXPECT_EQ(rect.right - rect.left, 73);
    EXPECT_EQ(rect.bottom - rect.top, 25);
}

TEST_F(RealWindows, ControlsThatTouchInTwipsDoNotOverlapInPixels) {
    form.rdoOne.setPlace({240, 5600, 1007, 255});
    form.rdoTwo.setPlace({1247, 5600, 1007, 255});
    RECT one{};
    RECT two{};
    GetWindowRect(windowOf(form.rdoOne), &one);
    GetWindowRect(windowOf(form.rdoTwo), &two);
    EXPECT_EQ(one.right, two.left);
}

TEST_F(RealWindows, VisibilityAndStateTakeEffectAtOnce) {
    form.fraPage.setVisible(false);
    EXPECT_FALSE(IsWindowVisible(windowOf(form.cmdOk)));
    form.fraPage.setVisible(true);
    EXPECT_TRUE(IsWindowVisible(windowOf(form.cmdOk)));
    form.cmdOk.setEnabled(false);
    EXPECT_FALSE(IsWindowEnabled(windowOf(form.cmdOk)));
}

TEST_F(RealWindows, ResizingTheWindowTellsTheFormOnce) {
    const int before = form.resizes;
    SetWindowPos(form.window(), nullptr, 30, 45, 700, 560, SWP_NOZORDER);
    EXPECT_EQ(form.resizes, before + 1);
    EXPECT_EQ(form.left(), 450);
    EXPECT_EQ(form.top(), 675);
    EXPECT_EQ(form.width(), 10500);
    EXPECT_EQ(form.height(), 8400);
    RECT inner{};
    GetClientRect(form.window(), &inner);
    EXPECT_EQ(form.scaleWidth(), inner.right * 15);
}

TEST_F(RealWindows, AnAssignedSizeIsTheWindowsSizeBeforeTheNextStatement) {
    form.setHeight(7800);
    RECT outer{};
    GetWindowRect(form.window(), &outer);
    EXPECT_EQ(outer.bottom - outer.top, 520);
    EXPECT_EQ(form.height(), 7800);
}

TEST_F(RealWindows, AMinimisedWindowKeepsItsPlaceInTheForm) {
    const Place before = form.place();
    form.setWindowState(WindowState::Minimised);
    EXPECT_TRUE(IsIconic(form.window()));
    EXPECT_EQ(form.windowState(), WindowState::Minimised);
    EXPECT_EQ(form.place(), before);
}

TEST_F(RealWindows, TheStatusBarStaysAtTheBottom) {
    form.setHeight(9000);
    RECT bar{};
    RECT inner{};
    GetWindowRect(windowOf(form.Status), &bar);
    MapWindowPoints(nullptr, form.window(), reinterpret_cast<POINT*>(&bar), 2);
    GetClientRect(form.window(), &inner);
    EXPECT_EQ(bar.bottom, inner.bottom);
    EXPECT_EQ(bar.bottom - bar.top, 17);
}

TEST_F(RealWindows, TheCloseBoxUnloadsTheForm) {
    PostMessageA(form.window(), WM_CLOSE, 0, 0);
    DoEvents();
    EXPECT_FALSE(form.loaded());
    EXPECT_EQ(form.unloads, 1);
}

TEST_F(RealWindows, AMouseMessageOfTheNotificationAreaComesAsAMouseMove) {
    SendMessageA(form.window(), WM_MOUSEMOVE, 77, WM_RBUTTONUP);
    EXPECT_EQ(form.moves, (std::vector<float>{517.0f * 15.0f}));
}

TEST_F(RealWindows, AnHourglassShowsOverAllButWhatHasAPointerOfItsOwn) {
    form.setMousePointer(MousePointer::Hourglass);
    form.cmdStop.setMousePointer(MousePointer::Arrow);
    const auto pointerOver = [](const Control& control) {
        send(control, WM_SETCURSOR, reinterpret_cast<WPARAM>(windowOf(control)),
             MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return GetCursor();
    };
    const HCURSOR wait = LoadCursorA(nullptr, IDC_WAIT);
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    EXPECT_EQ(pointerOver(form.cmdOk), wait);
    EXPECT_EQ(pointerOver(form.Bar), wait);
    EXPECT_EQ(pointerOver(form.cmdStop), arrow);
    form.fraPage.setMousePointer(MousePointer::Arrow);
    EXPECT_EQ(pointerOver(form.cmdOk), arrow);
    form.setMousePointer(MousePointer::Default);
    EXPECT_EQ(pointerOver(form.Bar), arrow);
}

TEST_F(RealWindows, AFailureInAHandlerEndsAtItsEvent) {
    std::vector<int> failures;
    setUnhandledFailure([&](const Failure& failure) { failures.push_back(failure.number); });
    form.cmdOk.onClick = [] { raise(13); };
    send(form.cmdOk, BM_CLICK);
    EXPECT_EQ(failures, (std::vector<int>{13}));
    form.cmdOk.onClick = [] { throw std::runtime_error("anything else"); };
    send(form.cmdOk, BM_CLICK);
    EXPECT_EQ(failures, (std::vector<int>{13}));
    setUnhandledFailure(nullptr);
}

TEST_F(RealWindows, AHandlerMayUnloadItsOwnWindow) {
    form.cmdOk.onClick = [this] { form.unload(); };
    send(form.cmdOk, BM_CLICK);
    DoEvents();
    EXPECT_FALSE(form.loaded());
}

TEST_F(RealWindows, ATimerTicksWhileEventsAreServed) {
    int ticks = 0;
    form.tmrTick.onTimer = [&] {
        if (++ticks == 3) form.tmrTick.setEnabled(false);
    };
    form.tmrTick.setInterval(20);
    form.tmrTick.setEnabled(true);
    for (int i = 0; i < 200 && ticks < 3; ++i) {
        WaitForEvents(20);
        DoEvents();
    }
    EXPECT_EQ(ticks, 3);
    WaitForEvents(60);
    DoEvents();
    EXPECT_EQ(ticks, 3);
}

}  // namespace bromvale::testing

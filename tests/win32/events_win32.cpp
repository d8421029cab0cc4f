// Events of users and of assignments, the keyboard, and the painting that waits.
#include "tests/win32/sample_form.h"

namespace bromvale::testing {

TEST_F(RealWindows, AClickRunsTheButtonsHandlerOnce) {
    int clicks = 0;
    form.cmdOk.onClick = [&] { ++clicks; };
    send(form.cmdOk, BM_CLICK);
    EXPECT_EQ(clicks, 1);
}

TEST_F(RealWindows, ACheckBoxRunsItsHandlerForCodeAndUserAlike) {
    std::vector<int> values;
    form.chbMark.onClick = [&] { values.push_back(form.chbMark.value()); };
    form.chbMark.setValue(1);
    EXPECT_EQ(send(form.chbMark, BM_GETCHECK), BST_CHECKED);
    form.chbMark.setValue(1);
    send(form.chbMark, BM_CLICK);
    EXPECT_EQ(send(form.chbMark, BM_GETCHECK), BST_UNCHECKED);
    EXPECT_EQ(values, (std::vector<int>{1, 0}));
}

TEST_F(RealWindows, OneOfTheOptionButtonsIsOn) {
    std::vector<std::string> clicked;
    form.rdoOne.onClick = [&] { clicked.emplace_back("one"); };
    form.rdoTwo.onClick = [&] { clicked.emplace_back("two"); };
    form.rdoOne.setValue(true);
    SetFocus(windowOf(form.rdoTwo));
    EXPECT_EQ(send(form.rdoTwo, BM_GETCHECK), BST_UNCHECKED) << "the keyboard alone chooses nothing";
    send(form.rdoTwo, BM_CLICK);
    EXPECT_EQ(send(form.rdoOne, BM_GETCHECK), BST_UNCHECKED);
    EXPECT_EQ(send(form.rdoTwo, BM_GETCHECK), BST_CHECKED);
    EXPECT_EQ(clicked, (std::vector<std::string>{"one", "two"}));
}

TEST_F(RealWindows, AnAssignedTextFiresOnceAndDoesNotComeBackAsTyped) {
    std::vector<std::string> texts;
    form.txtName.onChange = [&] { texts.push_back(form.txtName.text()); };
    form.txtName.setText("Größe");
    idle();
    EXPECT_EQ(textOf(form.txtName), "Größe");
    EXPECT_EQ(texts, (std::vector<std::string>{"Größe"}));
}

TEST_F(RealWindows, TypingFiresPerCharacter) {
    std::vector<std::string> texts;
    form.txtName.onChange = [&] { texts.push_back(form.txtName.text()); };
    send(form.txtName, WM_CHAR, 'a', 1);
    send(form.txtName, WM_CHAR, 'b', 1);
    EXPECT_EQ(texts, (std::vector<std::string>{"a", "ab"}));
}

TEST_F(RealWindows, ChoosingAnEntryOfAComboBoxSetsItsTextThenClicks) {
    form.cboKind.addItem("Windows 98");
    form.cboKind.addItem("Windows XP");
    idle();
    std::string seen;
    form.cboKind.onClick = [&] { seen = form.cboKind.text(); };
    ASSERT_EQ(send(form.cboKind, CB_GETCOUNT), 2);
    send(form.cboKind, CB_SETCURSEL, 1);
    SendMessageA(windowOf(form.fraPage), WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(windowOf(form.cboKind)));
    EXPECT_EQ(seen, "Windows XP");
    idle();
    EXPECT_EQ(textOf(form.cboKind), "Windows XP");
}

// The field of the box that the user types into.
HWND fieldOf(HWND box) {
    return FindWindowExA(box, nullptr, "EDIT", nullptr);
}

TEST_F(RealWindows, TypingIntoAComboBoxFiresPerCharacter) {
    std::vector<std::string> texts;
    form.cboKind.onChange = [&] { texts.push_back(form.cboKind.text()); };
    const HWND field = fieldOf(windowOf(form.cboKind));
    SendMessageA(field, WM_CHAR, 'X', 1);
    SendMessageA(field, WM_CHAR, 'P', 1);
    EXPECT_EQ(texts, (std::vector<std::string>{"X", "XP"}));
}

TEST_F(RealWindows, TheFocusInAComboBoxesFieldIsTheBoxes) {
    form.cmdOk.setFocus();
    SetFocus(fieldOf(windowOf(form.cboKind)));
    DoEvents();
    EXPECT_EQ(form.focused(), &form.cboKind);
}

// An open list is closed by Return and Escape, which reach the window's buttons only behind it.
TEST_F(RealWindows, ReturnAndEscapeCloseTheListOfAComboBoxFirst) {
    std::vector<std::string> clicked;
    form.cmdOk.onClick = [&] { clicked.emplace_back("ok"); };
    form.cmdStop.onClick = [&] { clicked.emplace_back("stop"); };
    form.cboKind.addItem("Windows 98");
    idle();
    form.cboKind.setFocus();
    const HWND field = fieldOf(windowOf(form.cboKind));
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        send(form.cboKind, CB_SHOWDROPDOWN, TRUE);
        ASSERT_NE(send(form.cboKind, CB_GETDROPPEDSTATE), 0);
        for (int i = 0; i < 2; ++i) {
            PostMessageA(field, WM_KEYDOWN, key, 1);
            DoEvents();
            EXPECT_EQ(send(form.cboKind, CB_GETDROPPEDSTATE), 0);
            EXPECT_EQ(clicked.size(), (key == VK_RETURN ? 0u : 1u) + static_cast<std::size_t>(i));
        }
    }
    EXPECT_EQ(clicked, (std::vector<std::string>{"ok", "stop"}));
}

// A box whose text code changes isn't marked like one that the user is in.
TEST_F(RealWindows, ATextThatCodeSetsIsNotMarked) {
    const auto marked = [&] {
        DWORD from = 0;
        DWORD to = 0;
        send(form.cboKind, CB_GETEDITSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
        return to - from;
    };
    form.cmdOk.setFocus();
    form.cboKind.setText("Windows 98");
    idle();
    EXPECT_EQ(marked(), 0u);
    form.cboKind.addItem("Windows 98");
    idle();
    EXPECT_EQ(textOf(form.cboKind), "Windows 98");
    EXPECT_EQ(marked(), 0u);
    form.cboKind.setPlace({240, 3500, 3000, 315});
    idle();
    EXPECT_EQ(marked(), 0u);
}

TEST_F(RealWindows, AGreyedComboBoxHasItsFieldGreyToo) {
    const HWND field = fieldOf(windowOf(form.cboKind));
    const HDC dc = GetDC(field);
    const auto ground = [&] {
        SetBkColor(dc, RGB(1, 2, 3));
        const LRESULT brush = send(form.cboKind, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc),
                                   reinterpret_cast<LPARAM>(field));
        return std::pair(brush, GetBkColor(dc));
    };
    const auto plain = ground();
    form.cboKind.setBackColor(BackColor::Greyed);
    const auto greyed = ground();
    EXPECT_NE(greyed.first, plain.first);
    EXPECT_EQ(greyed.first, reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_INACTIVEBORDER)));
    EXPECT_EQ(greyed.second, GetSysColor(COLOR_INACTIVEBORDER));
    ReleaseDC(field, dc);
}

TEST_F(RealWindows, TabGoesThroughTheTabOrderAndRoundItsEnd) {
    form.cmdOk.setFocus();
    EXPECT_EQ(GetFocus(), windowOf(form.cmdOk));
    press(form.cmdOk, VK_TAB);
    EXPECT_EQ(GetFocus(), windowOf(form.cmdStop));
    EXPECT_EQ(form.focused(), &form.cmdStop);
    form.lvwRows.setFocus();
    press(form.lvwRows, VK_TAB);
    EXPECT_EQ(GetFocus(), windowOf(form.Bar));
}

TEST_F(RealWindows, ReturnAndEscapeClickTheDefaultAndTheCancelButton) {
    std::vector<std::string> clicked;
    form.cmdOk.onClick = [&] { clicked.emplace_back("ok"); };
    form.cmdStop.onClick = [&] { clicked.emplace_back("stop"); };
    form.txtName.setFocus();
    press(form.txtName, VK_RETURN);
    press(form.txtName, VK_ESCAPE);
    EXPECT_EQ(clicked, (std::vector<std::string>{"ok", "stop"}));
}

TEST_F(RealWindows, ReturnMakesALineInATextOfSeveralLines) {
    int clicks = 0;
    form.cmdOk.onClick = [&] { ++clicks; };
    form.txtLines.setFocus();
    press(form.txtLines, VK_RETURN);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(form.txtLines.text(), "\r\n");
}

TEST_F(RealWindows, AnAccessKeyClicksItsButton) {
    std::vector<std::string> clicked;
    form.cmdStop.onClick = [&] { clicked.emplace_back("stop"); };
    PostMessageA(windowOf(form.txtName), WM_SYSKEYDOWN, 'A', 0x20000001);
    DoEvents();
    EXPECT_EQ(clicked, (std::vector<std::string>{"stop"}));
}

TEST_F(RealWindows, AControlThatIsDisabledHandsTheKeyboardOn) {
    form.cmdOk.setFocus();
    form.cmdOk.setEnabled(false);
    EXPECT_EQ(GetFocus(), windowOf(form.cmdStop));
}

// Counts what reaches a window.
struct Spy {
    static inline WNDPROC below = nullptr;
    static inline UINT watched = 0;
    static inline int seen = 0;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == watched) ++seen;
        return CallWindowProcA(below, window, message, wParam, lParam);
    }
    static void watch(HWND window, UINT message) {
        watched = message;
        seen = 0;
        below = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Spy::procedure)));
    }
};

TEST_F(RealWindows, ManyWritesArePaintedAtMostOnceAFrame) {
    Spy::watch(windowOf(form.Status), SB_SETTEXTA);
    const DWORD began = GetTickCount();
    for (int i = 1; i <= 20000; ++i) {
        form.Status.setPanelText(1, "Eintrag " + std::to_string(i));
        ASSERT_EQ(form.Status.panelText(1), "Eintrag " + std::to_string(i));
        DoEvents();
    }
    const DWORD frames = (GetTickCount() - began) / 16 + 2;
    EXPECT_LE(static_cast<DWORD>(Spy::seen), frames);
    WaitForEvents(0);
    EXPECT_EQ(panelText(1), "Eintrag 20000");
    SetWindowLongPtrA(windowOf(form.Status), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Spy::below));
}

TEST_F(RealWindows, AWriteWaitsAndIsThereBeforeTheProgramSleeps) {
    idle();
    form.Status.setPanelText(1, "neu");
    EXPECT_EQ(form.Status.panelText(1), "neu");
    EXPECT_EQ(panelText(1), "Status");
    WaitForEvents(0);
    EXPECT_EQ(panelText(1), "neu");
}

TEST_F(RealWindows, TextsAreRightWhileAMessageBoxIsOpen) {
    static std::string seen;
    static HWND bar;
    bar = windowOf(form.Status);
    seen.clear();
    form.Status.setPanelText(1, "fertig");
    const UINT_PTR timer =
        SetTimer(nullptr, 0, 250, [](HWND, UINT, UINT_PTR, DWORD) {  // behind the next painting
            const HWND box = FindWindowA("#32770", "Frage");
            if (box == nullptr) return;
            char text[100] = {};
            SendMessageA(bar, SB_GETTEXTA, 0, reinterpret_cast<LPARAM>(text));
            seen = text;
            PostMessageA(box, WM_COMMAND, IDOK, 0);
        });
    MessageBoxA(nullptr, "Text", "Frage", MB_OK);
    KillTimer(nullptr, timer);
    EXPECT_EQ(seen, "fertig");
}

// Who asks from outside asks more: the next look comes with the next call and not 10 ms later.
TEST_F(RealWindows, ALoopLooksAtOnceWhileAnotherThreadAsks) {
    static HWND bar;
    bar = windowOf(form.Status);
    idle();
    const auto ask = [](LPVOID) -> DWORD { return SendMessageA(bar, SB_GETPARTS, 0, 0) != 0 ? 0u : 1u; };
    const HANDLE asker = CreateThread(nullptr, 0, ask, nullptr, 0, nullptr);
    while (WaitForSingleObject(asker, 0) == WAIT_TIMEOUT) DoEventsOften();
    CloseHandle(asker);
    PostMessageA(bar, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>("gefragt"));
    DoEventsOften();
    EXPECT_EQ(panelText(1), "gefragt");
}

class ServingWindows : public RealWindows {
  protected:
    // Servings closer together than that are left out.
    static void serve() {
        Sleep(30);
        ServeWindows();
    }
    void command(WPARAM what) { PostMessageA(form.window(), WM_SYSCOMMAND, what, 0); }
};

TEST_F(ServingWindows, TheyPaintThemselves) {
    idle();
    Spy::watch(windowOf(form.cmdOk), WM_PAINT);
    InvalidateRect(windowOf(form.cmdOk), nullptr, TRUE);
    serve();
    EXPECT_EQ(Spy::seen, 1);
    SetWindowLongPtrA(windowOf(form.cmdOk), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Spy::below));
}

TEST_F(ServingWindows, ATextThatWaitedIsShown) {
    idle();
    form.Status.setPanelText(1, "neu");
    Sleep(100);
    serve();
    EXPECT_EQ(panelText(1), "neu");
}

TEST_F(ServingWindows, ClicksAndKeysWait) {
    int clicks = 0;
    form.cmdOk.onClick = [&] { ++clicks; };
    idle();
    PostMessageA(windowOf(form.cmdOk), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageA(windowOf(form.cmdOk), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    PostMessageA(windowOf(form.txtName), WM_KEYDOWN, VK_RETURN, 1);
    serve();
    EXPECT_EQ(clicks, 0);
    DoEvents();
    EXPECT_EQ(clicks, 2);
}

TEST_F(ServingWindows, TheyCanBePutAsideAndBroughtBack) {
    idle();
    command(SC_MINIMIZE);
    serve();
    EXPECT_EQ(form.windowState(), WindowState::Minimised);
    command(SC_RESTORE);
    serve();
    EXPECT_EQ(form.windowState(), WindowState::Normal);
}

TEST_F(ServingWindows, ClosingWaits) {
    idle();
    command(SC_CLOSE);
    serve();
    EXPECT_EQ(form.unloads, 0);
    DoEvents();
    EXPECT_EQ(form.unloads, 1);
}

TEST_F(ServingWindows, ClosingByADoubleClickOnTheIconWaitsToo) {
    idle();
    PostMessageA(form.window(), WM_NCLBUTTONDBLCLK, HTSYSMENU, 0);
    serve();
    EXPECT_EQ(form.unloads, 0);
    DoEvents();
    EXPECT_EQ(form.unloads, 1);
}

// What a timer does in the loop of an open menu.
struct MenuUser {
    static inline HWND owner = nullptr;
    static inline UINT defaultItem = 0;
    static inline int entries = 0;
    static inline int steps = 0;
    static void CALLBACK act(HWND, UINT, UINT_PTR, DWORD) {
        constexpr UINT kGetMenu = 0x01E1;
        const HWND open = FindWindowA("#32768", nullptr);
        if (open == nullptr) return;
        const auto menu = reinterpret_cast<HMENU>(SendMessageA(open, kGetMenu, 0, 0));
        if (menu != nullptr) {
            defaultItem = GetMenuDefaultItem(menu, FALSE, 0);
            entries = GetMenuItemCount(menu);
        }
        const WPARAM keys[] = {VK_DOWN, VK_DOWN, VK_RETURN};
        PostMessageA(owner, WM_KEYDOWN, keys[steps < 2 ? steps : 2], 1);
        ++steps;
    }
};

TEST_F(RealWindows, APopUpMenuRunsTheChosenEntryAfterItHasClosed) {
    std::string chosen;
    bool open = true;
    form.mnuFirst.onClick = [&] { chosen += "first"; };
    form.mnuSecond.onClick = [&] {
        chosen += "second";
        open = FindWindowA("#32768", nullptr) != nullptr && IsWindowVisible(FindWindowA("#32768", nullptr));
    };
    MenuUser::owner = form.window();
    const UINT_PTR timer = SetTimer(nullptr, 0, 60, MenuUser::act);
    showPopupMenu(form, form.mnuTop, &form.mnuFirst);
    KillTimer(nullptr, timer);
    EXPECT_EQ(chosen, "second");
    EXPECT_FALSE(open);
    EXPECT_EQ(MenuUser::entries, 2);
    EXPECT_EQ(MenuUser::defaultItem, 1u);
}

}  // namespace bromvale::testing

// The tray's menu as the system shows it, and a task bar that starts anew.
#include <string>
#include <vector>

#include "platform/win32/system/windows.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {
namespace {

using Texts = std::vector<std::string>;

constexpr UINT kGetMenu = 0x01E1;  // what a menu's window answers with its menu
constexpr LPARAM kRightUp = 517;
constexpr UINT kLook = 20;  // milliseconds

struct Seen {
    Texts entries;
    int defaultEntry = -2;
    int looks = 0;
    std::vector<WPARAM> keys;  // what the user presses then; nothing leaves the menu
};
Seen seen;

void read(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        char text[256] = "";
        GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
        const bool separator = (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) != 0;
        seen.entries.emplace_back(separator ? "-" : text);
    }
    seen.defaultEntry = static_cast<int>(GetMenuDefaultItem(menu, TRUE, 0));
}

// Runs inside the menu's own loop, like a user who looks and then acts.
void CALLBACK look(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND window = FindWindowA("#32768", nullptr);
    if (window == nullptr && ++seen.looks < 100) return;
    KillTimer(nullptr, timer);
    if (window == nullptr) return;
    read(reinterpret_cast<HMENU>(SendMessageA(window, kGetMenu, 0, 0)));
    if (seen.keys.empty()) EndMenu();
    GUITHREADINFO threads{};
    threads.cbSize = sizeof threads;
    GetGUIThreadInfo(GetCurrentThreadId(), &threads);
    for (const WPARAM key : seen.keys) PostMessageA(threads.hwndMenuOwner, WM_KEYDOWN, key, 0);
}

class RealTray : public MainFormTest {
  protected:
    RealTray() { frmMain().show(); }
    // The icon reports this message of the mouse.
    static void report(LPARAM message, std::vector<WPARAM> keys = {}) {
        seen = {};
        seen.keys = std::move(keys);
        const UINT_PTR timer = SetTimer(nullptr, 0, kLook, look);
        SendMessageA(frmMain().window(), WM_MOUSEMOVE, 0, message);
        KillTimer(nullptr, timer);
    }
};

TEST_F(RealTray, TheMenuHasItsEntriesItsLineAndItsBoldEntry) {
    report(kRightUp);
    EXPECT_EQ(seen.entries,
              (Texts{"&Zeige Programm", "&Scan starten", "B&ackup-Bereich", "Programme &deinstallieren",
                     "Bug-&Report", "&Live-Update", "&Optionen", "-", "&Über", "&Beenden"}));
    EXPECT_EQ(seen.defaultEntry, 0);
    EXPECT_EQ(shownPages(), "Frame1 ");
}

TEST_F(RealTray, OtherMessagesOpenNoMenu) {
    for (const LPARAM message : {512, 513, 514, 515, 516, 518}) report(message);
    EXPECT_EQ(seen.entries, Texts{});
}

TEST_F(RealTray, AnEntryIsChosenByTheKeyboard) {
    report(kRightUp, {VK_UP, VK_UP, VK_RETURN});
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Bromvale 1.0.0");
    report(kRightUp, {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(shownPages(), "Frame2 ");
}

TEST_F(RealTray, TheBoldEntryDoesNothing) {
    report(kRightUp, {VK_DOWN, VK_RETURN});
    EXPECT_EQ(shownPages(), "Frame1 ");
    EXPECT_TRUE(boxes().empty());
}

class TaskbarForm : public Form {
  public:
    TaskbarForm() : Form("frmTaskbar") {}
    int created = 0;

  protected:
    void design() override { setPlace({0, 0, 3000, 3000}); }
    void Form_TaskbarCreated() override { ++created; }
};

TEST_F(RealTray, TheMessageOfANewTaskBarReachesTheForm) {
    TaskbarForm form;
    form.load();
    SendMessageA(form.window(), RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_EQ(form.created, 1);
    SendMessageA(form.window(), WM_NULL, 0, 0);
    EXPECT_EQ(form.created, 1);
    SendMessageA(frmMain().window(), RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(RealTray, AnEntryThatAsksForAFieldGivesItTheKeyboard) {
    report(kRightUp, {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
    EXPECT_EQ(shownPages(), "Frame3 ");
    EXPECT_EQ(GetFocus(), frmMain().bugReport.txtErrNr.peer()->window());
}

// Stands where the system looks for its task bar, and takes the records of the icons.
class NewTaskBar {
  public:
    struct Record {
        ULONG_PTR action;
        HWND owner;
    };
    NewTaskBar() {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = procedure;
        windowClass.hInstance = GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "Shell_TrayWnd";
        RegisterClassA(&windowClass);
        window_ = CreateWindowExA(0, "Shell_TrayWnd", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleA(nullptr), nullptr);
    }
    ~NewTaskBar() { DestroyWindow(window_); }
    NewTaskBar(const NewTaskBar&) = delete;
    NewTaskBar& operator=(const NewTaskBar&) = delete;
    static inline std::vector<Record> records;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_COPYDATA) return DefWindowProcA(window, message, wParam, lParam);
        records.push_back(
            {reinterpret_cast<const COPYDATASTRUCT*>(lParam)->dwData, reinterpret_cast<HWND>(wParam)});
        return TRUE;
    }
    HWND window_;
};

TEST_F(RealTray, TheIconIsPutIntoANewTaskBar) {
    ASSERT_EQ(FindWindowA("Shell_TrayWnd", nullptr), nullptr) << "this desktop has a task bar";
    const NewTaskBar bar;
    SendMessageA(frmMain().window(), RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    ASSERT_EQ(NewTaskBar::records.size(), 1u);
    EXPECT_EQ(NewTaskBar::records[0].action, static_cast<ULONG_PTR>(NIM_ADD));
    EXPECT_EQ(NewTaskBar::records[0].owner, frmMain().window());
}

}  // namespace
}  // namespace bromvale::testing

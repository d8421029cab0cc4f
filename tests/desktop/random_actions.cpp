#include "random_actions.h"

#include <algorithm>
#include <array>

#include "remote_controls.h"

#include <commctrl.h>

namespace {

// Programs that one run may start: each leaves a window.
constexpr int kMostStarts = 5;

constexpr std::array<const char*, 4> kStarting{"cmdHDDBereinigen", "cmdBearbeiten", "cmdEintragen",
                                               "cmdDeinstall"};
// A restart would end the screen that the program is looked at on.
constexpr std::array<const char*, 2> kRestarting{"chbRebootAfterDelete", "chbRebootAfterEntry"};
// Items of the bar, from 1 over all of its groups, that start programs: registry editor, help, web site.
constexpr std::array<int, 3> kStartingItems{3, 4, 11};
constexpr int kQuitItem = 5;
constexpr int kItems = 11;
constexpr int kGroups = 3;

constexpr std::array<const char*, 8> kTexts{"", "80", "0", "abc", "99999", "a@b.cd", "\xE4 \xF6", "%s\"\\"};
constexpr std::array<WPARAM, 16> kKeys{VK_TAB,  VK_TAB,    VK_RETURN, VK_ESCAPE, VK_SPACE, VK_UP,
                                       VK_DOWN, VK_LEFT,   VK_RIGHT,  VK_F1,     VK_F2,    VK_F3,
                                       VK_F5,   VK_DELETE, VK_HOME,   VK_END};
constexpr LPARAM kAltHeld = 0x20000000;
// The icon's number is what the program gave; it does not look at it.
constexpr WPARAM kTrayIcon = 1;

template <class Things, class Thing>
bool contains(const Things& things, const Thing& thing) {
    return std::find(std::begin(things), std::end(things), thing) != std::end(things);
}

POINT middleOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

POINT inClient(HWND window, POINT onScreen) {
    ScreenToClient(window, &onScreen);
    return onScreen;
}

struct Found {
    DWORD process;
    const wchar_t* className;
    HWND window;
};

BOOL CALLBACK findOfClass(HWND window, LPARAM result) {
    Found& found = *reinterpret_cast<Found*>(result);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != found.process || !IsWindowVisible(window) || !IsWindowEnabled(window) ||
        className(window) != found.className)
        return TRUE;
    found.window = window;
    return FALSE;
}

HWND visibleOfClass(DWORD process, const wchar_t* name) {
    Found found{process, name, nullptr};
    EnumWindows(findOfClass, reinterpret_cast<LPARAM>(&found));
    return found.window;
}

BOOL CALLBACK findTree(HWND window, LPARAM result) {
    const std::wstring name = className(window);
    // Of the choice of a folder and the naming of a file.
    if (name != L"SysTreeView32" && name != L"ComboBox" && name != L"SHELLDLL_DefView") return TRUE;
    *reinterpret_cast<bool*>(result) = true;
    return FALSE;
}

}  // namespace

std::uint64_t Dice::next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

int Dice::below(int count) {
    return static_cast<int>(next() % static_cast<std::uint64_t>(count));
}

bool RandomActions::isOurs(HWND window) const {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return window != nullptr && process == process_;
}

bool RandomActions::mayStart() {
    return starts_ < kMostStarts && ++starts_ <= kMostStarts;
}

// --- boxes and menus ---

HWND RandomActions::openDialog() const {
    return visibleOfClass(process_, L"#32770");
}

// A folder or a file is never chosen: what the program does with it would leave the test's own folders.
std::string RandomActions::leaveDialog(HWND dialog) {
    bool chooses = false;
    EnumChildWindows(dialog, findTree, reinterpret_cast<LPARAM>(&chooses));
    std::vector<WPARAM> buttons;
    for (const int id : {IDYES, IDYES, IDNO, IDOK, IDCANCEL, IDRETRY, IDABORT}) {
        const bool may = !chooses || id == IDCANCEL;
        if (may && GetDlgItem(dialog, id) != nullptr) buttons.push_back(static_cast<WPARAM>(id));
    }
    const WPARAM button = buttons.empty() ? IDCANCEL : dice_.oneOf(buttons);
    PostMessageW(dialog, WM_COMMAND, button,
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, static_cast<int>(button))));
    return "box " + std::to_string(button);
}

bool RandomActions::menuIsOpen() const {
    return visibleOfClass(process_, L"#32768") != nullptr;
}

std::string RandomActions::leaveMenu() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(thread_, &info);
    const HWND owner = info.hwndMenuOwner != nullptr ? info.hwndMenuOwner : main_;
    // The ninth of the icon's is the end.
    const int downs = dice_.percent(3) ? 9 : dice_.percent(80) ? 1 + dice_.below(8) : 0;
    for (int i = 0; i < downs; ++i) PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageW(owner, WM_KEYDOWN, downs == 0 ? VK_ESCAPE : VK_RETURN, 1);
    return "menu " + std::to_string(downs);
}

// --- mouse and keyboard ---

bool RandomActions::clickForReal(HWND window, POINT at, bool right, bool twice) const {
    POINT onScreen = at;
    ClientToScreen(window, &onScreen);
    if (WindowFromPoint(onScreen) != window || !isOurs(GetForegroundWindow())) return false;
    SetCursorPos(onScreen.x, onScreen.y);
    for (int i = 0; i < (twice ? 2 : 1); ++i) {
        mouse_event(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        mouse_event(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    }
    return true;
}

void RandomActions::click(HWND window, POINT at, bool right, bool twice) {
    if (dice_.percent(50) && clickForReal(window, at, right, twice)) return;
    const LPARAM place = MAKELPARAM(at.x, at.y);
    PostMessageW(window, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, right ? MK_RBUTTON : MK_LBUTTON, place);
    PostMessageW(window, right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, place);
    if (!twice) return;
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    PostMessageW(window, WM_LBUTTONUP, 0, place);
}

// Into the control that has the keyboard. Return may press the button that starts a program.
std::string RandomActions::someKey() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(thread_, &info) || !isOurs(info.hwndFocus)) return "no key";
    if (dice_.percent(20)) {
        const auto letter = static_cast<WPARAM>('A' + dice_.below(26));
        PostMessageW(info.hwndFocus, WM_SYSKEYDOWN, letter, 1 | kAltHeld);
        return "key Alt+" + std::string(1, static_cast<char>(letter));
    }
    const WPARAM key = dice_.oneOf(kKeys);
    if ((key == VK_RETURN || key == VK_SPACE) && !mayStart()) return "no key";
    PostMessageW(info.hwndFocus, WM_KEYDOWN, key, 1);
    PostMessageW(info.hwndFocus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    return "key " + std::to_string(key);
}

// --- controls ---

std::string RandomActions::onText(const NamedWindow& box) {
    const char* const text = dice_.oneOf(kTexts);
    // The name of a host would be looked up.
    const std::string typed = box.name == "txtProxyAdresse" ? "127.0.0.1" : text;
    PostMessageW(box.window, EM_SETSEL, 0, -1);
    PostMessageW(box.window, WM_KEYDOWN, VK_DELETE, 1);
    for (const char letter : typed) PostMessageA(box.window, WM_CHAR, static_cast<unsigned char>(letter), 1);
    return "text " + box.name + " " + typed;
}

std::string RandomActions::onList(const NamedWindow& list) {
    RECT place{};
    if (dice_.percent(15)) {
        const int column = dice_.below(3);
        if (!listHeaderPlace(list.window, column, place)) return "no header";
        const HWND header = reinterpret_cast<HWND>(SendMessageW(list.window, LVM_GETHEADER, 0, 0));
        click(header, inClient(header, middleOf(place)), false, false);
        return "column " + list.name + " " + std::to_string(column + 1);
    }
    const int row = dice_.below(12);
    const bool right = dice_.percent(35);
    const bool twice = !right && dice_.percent(10) && mayStart();
    if (!listRowPlace(list.window, row, place)) place = {20, 20, 30, 30};
    const POINT at = inClient(list.window, {place.left + 12, (place.top + place.bottom) / 2});
    click(list.window, at, right, twice);
    return std::string(right   ? "right click "
                       : twice ? "double click "
                               : "click ") +
           list.name + " " + std::to_string(row + 1);
}

std::string RandomActions::onBar(HWND bar) {
    const bool group = dice_.percent(30);
    const int part = 1 + dice_.below(group ? kGroups : kItems);
    const bool starts = !group && contains(kStartingItems, part);
    if (starts && !mayStart()) return "no item";
    if (!group && part == kQuitItem && !dice_.percent(5)) return "no item";
    const char* const question = group ? "BromvaleListBarHeaderRect" : "BromvaleListBarItemRect";
    DWORD_PTR centre = 0;
    if (!SendMessageTimeoutW(bar, RegisterWindowMessageA(question), static_cast<WPARAM>(part), 0, SMTO_NORMAL,
                             5000, &centre) ||
        centre == 0)
        return "no item";
    const POINT at{static_cast<short>(LOWORD(centre)), static_cast<short>(HIWORD(centre))};
    click(bar, inClient(bar, at), false, false);
    return std::string(group ? "group " : "item ") + std::to_string(part);
}

std::string RandomActions::onControl(const NamedWindow& control) {
    const std::wstring kind = className(control.window);
    if (contains(kRestarting, control.name)) return "no restart";
    if (contains(kStarting, control.name) && !mayStart()) return "no start";
    if (kind == L"SysListView32") return onList(control);
    if (kind == L"Edit") return onText(control);
    if (control.name == "Menu") return onBar(control.window);
    RECT client{};
    GetClientRect(control.window, &client);
    const bool twice = dice_.percent(8);
    click(control.window, middleOf(client), false, twice);
    return std::string(twice ? "double click " : "click ") + control.name;
}

std::string RandomActions::tray() {
    const LPARAM button = dice_.percent(85) ? WM_RBUTTONUP : WM_LBUTTONDBLCLK;
    PostMessageW(main_, WM_MOUSEMOVE, kTrayIcon, button);
    return "tray " + std::to_string(button);
}

std::string RandomActions::onWindow() {
    constexpr std::array<WPARAM, 4> kStates{SC_MINIMIZE, SC_RESTORE, SC_RESTORE, SC_MAXIMIZE};
    if (dice_.percent(2)) {
        PostMessageW(main_, WM_CLOSE, 0, 0);
        return "close";
    }
    if (dice_.percent(20)) {
        SetForegroundWindow(main_);
        return "front";
    }
    if (dice_.percent(40)) {
        const WPARAM state = IsIconic(main_) ? SC_RESTORE : dice_.oneOf(kStates);
        PostMessageW(main_, WM_SYSCOMMAND, state, 0);
        return "state " + std::to_string(state);
    }
    const int width = dice_.below(1300);
    const int height = dice_.below(1000);
    SetWindowPos(main_, nullptr, dice_.below(900) - 100, dice_.below(700) - 60, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    return "resize " + std::to_string(width) + " " + std::to_string(height);
}

std::string RandomActions::actBeside() {
    return openDialog() == nullptr || dice_.percent(60) ? tray() : onWindow();
}

std::string RandomActions::act() {
    const int kind = dice_.below(100);
    if (kind < 8) return tray();
    if (kind < 16) return someKey();
    if (kind < 20 || IsIconic(main_)) return onWindow();
    std::vector<NamedWindow> reachable;
    for (const NamedWindow& each : namedWindows()) {
        const std::wstring name = className(each.window);
        const bool acts = name == L"Button" || name == L"Edit" || name == L"ComboBox" ||
                          name == L"SysListView32" || each.name == "Menu";
        const bool frame =
            name == L"Button" && (GetWindowLongW(each.window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
        if (acts && !frame && IsWindowVisible(each.window) && IsWindowEnabled(each.window))
            reachable.push_back(each);
    }
    if (reachable.empty()) return "nothing to click";
    const auto button = std::find_if(reachable.begin(), reachable.end(),
                                     [](const NamedWindow& each) { return each.name == "cmdStart"; });
    if (button != reachable.end() && dice_.percent(15)) return onControl(*button);
    const auto menu = std::find_if(reachable.begin(), reachable.end(),
                                   [](const NamedWindow& each) { return each.name == "Menu"; });
    if (menu != reachable.end() && dice_.percent(18)) return onControl(*menu);
    return onControl(dice_.oneOf(reachable));
}

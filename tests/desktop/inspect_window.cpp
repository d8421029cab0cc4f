// Tells what stands in Bromvale's window, for the drivers that click in it from outside. Run it in the same
// prefix and with the same width as the program. Everything is printed as UTF-8; the exit status is 0 if what
// was asked for is there.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "helper_text.h"
#include "layout_faults.h"
#include "remote_controls.h"
#include "remote_orders.h"
#include "windows_by_name.h"

namespace {

using Arguments = std::vector<std::string>;

void print(const std::string& line) {
    std::printf("%s\n", line.c_str());
}

std::string placeText(const RECT& place) {
    return std::to_string(place.left) + " " + std::to_string(place.top) + " " + std::to_string(place.right) +
           " " + std::to_string(place.bottom);
}

// One line a window; line ends inside a text would break that.
std::string oneLine(std::string text) {
    for (char& character : text)
        if (character == '\r' || character == '\n') character = ' ';
    return text;
}

HWND need(const std::string& name) {
    const HWND window = findNamed(name);
    if (!window) {
        std::fprintf(stderr, "there is no control %s\n", utf8(wide(name)).c_str());
        std::exit(1);
    }
    return window;
}

std::string describe(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    const LRESULT checked = className(window) == L"Button" ? SendMessageW(window, BM_GETCHECK, 0, 0) : 0;
    return std::string(IsWindowEnabled(window) ? "enabled" : "disabled") + "\t" +
           (IsWindowVisible(window) ? "visible" : "hidden") + "\t" +
           (checked == BST_CHECKED ? "checked" : "-") + "\t" + placeText(place) + "\t" +
           utf8(className(window)) + "\t" + oneLine(utf8(windowText(window)));
}

int showAll(const Arguments&) {
    for (const NamedWindow& each : namedWindows())
        print(utf8(wide(each.name)) + "\t" + describe(each.window));
    return 0;
}

int showTops(const Arguments&) {
    for (const TopWindow& each : visibleTopWindows()) {
        RECT place{};
        GetWindowRect(each.window, &place);
        print(utf8(each.className) + "\t" + placeText(place) + "\t" + oneLine(utf8(each.title)));
    }
    return 0;
}

int showControl(const Arguments& arguments) {
    print(describe(need(arguments[0])));
    return 0;
}

int showText(const Arguments& arguments) {
    print(utf8(windowText(need(arguments[0]))));
    return 0;
}

int showRows(const Arguments& arguments) {
    for (const ListRow& row : listRows(need(arguments[0]))) {
        std::string line = row.selected ? "*" : "-";
        for (const std::wstring& column : row.columns) line += "\t" + oneLine(utf8(column));
        print(line);
    }
    return 0;
}

int showWidths(const Arguments& arguments) {
    std::string line;
    for (const int width : listColumnWidths(need(arguments[0]))) line += std::to_string(width) + " ";
    print(line);
    return 0;
}

int showPanels(const Arguments& arguments) {
    for (const std::wstring& panel : statusPanels(need(arguments[0]))) print(utf8(panel));
    return 0;
}

int showFocus(const Arguments&) {
    const HWND form = need("frmMain");
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    if (!GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info)) return 1;
    for (const NamedWindow& each : namedWindows())
        if (each.window == info.hwndFocus) print(utf8(wide(each.name)));
    return 0;
}

int showForeground(const Arguments&) {
    const HWND window = GetForegroundWindow();
    if (window == nullptr) return 1;
    print(utf8(className(window)) + "\t" + (IsWindowVisible(window) ? "visible" : "hidden") + "\t" +
          oneLine(utf8(windowText(window))));
    return 0;
}

int showLayoutFaults(const Arguments&) {
    for (const LayoutFault& fault : layoutFaults())
        print(std::string(fault.kind) + "\t" + utf8(wide(fault.control)) + "\t" + utf8(wide(fault.other)) +
              "\t" + std::to_string(fault.pixels));
    return 0;
}

int showRowPlace(const Arguments& arguments) {
    RECT place{};
    if (!listRowPlace(need(arguments[0]), std::atoi(arguments[1].c_str()) - 1, place)) return 1;
    print(placeText(place));
    return 0;
}

int showHeaderPlace(const Arguments& arguments) {
    RECT place{};
    if (!listHeaderPlace(need(arguments[0]), std::atoi(arguments[1].c_str()) - 1, place)) return 1;
    print(placeText(place));
    return 0;
}

// The list bar draws its parts itself and tells their places when asked.
int showBarPart(const char* question, const Arguments& arguments) {
    const LRESULT centre = SendMessageW(need(arguments[0]), RegisterWindowMessageA(question),
                                        static_cast<WPARAM>(std::atoi(arguments[1].c_str())), 0);
    if (centre == 0) return 1;
    std::printf("%d %d\n", static_cast<short>(LOWORD(centre)), static_cast<short>(HIWORD(centre)));
    return 0;
}
int showBarItem(const Arguments& arguments) {
    return showBarPart("BromvaleListBarItemRect", arguments);
}
int showBarHeader(const Arguments& arguments) {
    return showBarPart("BromvaleListBarHeaderRect", arguments);
}

BOOL CALLBACK printText(HWND window, LPARAM) {
    print(utf8(className(window)) + "\t" + oneLine(utf8(windowText(window))));
    return TRUE;
}

// Texts and buttons of the message box that is open, if any.
int showMessageBox(const Arguments&) {
    for (const TopWindow& each : visibleTopWindows()) {
        if (each.className != L"#32770") continue;
        print("caption\t" + utf8(each.title));
        EnumChildWindows(each.window, printText, 0);
        return 0;
    }
    return 1;
}

BOOL CALLBACK keepLongestStatic(HWND window, LPARAM result) {
    std::wstring& longest = *reinterpret_cast<std::wstring*>(result);
    const std::wstring text = className(window) == L"Static" ? windowText(window) : std::wstring();
    if (text.size() > longest.size()) longest = text;
    return TRUE;
}

BOOL CALLBACK printPart(HWND window, LPARAM) {
    RECT place{};
    GetWindowRect(window, &place);
    if (IsWindowVisible(window))
        print(utf8(className(window)) + "\t" + (IsWindowEnabled(window) ? "enabled" : "disabled") + "\t" +
              placeText(place) + "\t" + oneLine(utf8(windowText(window))));
    return TRUE;
}

// What is seen of the dialog in front: of an installer's page, or of the box before it.
int showDialog(const Arguments&) {
    for (const TopWindow& each : visibleTopWindows()) {
        if (each.className != L"#32770" || !IsWindowEnabled(each.window)) continue;
        printPart(each.window, 0);
        EnumChildWindows(each.window, printPart, 0);
        return 0;
    }
    return 1;
}

// A program that is just painting its first window answers late; the drivers wait for a condition, never for
// a time.
int waitFor(const Arguments& arguments) {
    const DWORD limit = GetTickCount() + static_cast<DWORD>(std::atoi(arguments[2].c_str()) * 1000);
    const std::wstring wanted = wide(arguments[1]);
    do {
        const HWND window = findNamed(arguments[0]);
        if (window && IsWindowVisible(window) && windowText(window).starts_with(wanted)) return 0;
        Sleep(50);
    } while (GetTickCount() < limit);
    std::fprintf(stderr, "%s does not become \"%s\"\n", utf8(wide(arguments[0])).c_str(),
                 utf8(wanted).c_str());
    return 1;
}

std::wstring messageBoxText() {
    for (const TopWindow& each : visibleTopWindows()) {
        if (each.className != L"#32770") continue;
        std::wstring text;
        EnumChildWindows(each.window, keepLongestStatic, reinterpret_cast<LPARAM>(&text));
        return text;
    }
    return {};
}

// A box's text with blanks for its line ends; an empty one waits until no box is open.
int waitForBox(const Arguments& arguments) {
    const DWORD limit = GetTickCount() + static_cast<DWORD>(std::atoi(arguments[1].c_str()) * 1000);
    const std::string wanted = utf8(wide(arguments[0]));
    std::string text;
    do {
        text = oneLine(utf8(messageBoxText()));
        if (text == wanted) return 0;
        Sleep(50);
    } while (GetTickCount() < limit);
    std::fprintf(stderr, "the box says \"%s\"\n", text.c_str());
    return 1;
}

int pressAt(const Arguments& arguments) {
    SetCursorPos(std::atoi(arguments[0].c_str()), std::atoi(arguments[1].c_str()));
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    return 0;
}

// A message box waits for its button, so nobody waits for the answer.
int pressBoxButton(const Arguments& arguments) {
    for (const TopWindow& each : visibleTopWindows()) {
        if (each.className != L"#32770") continue;
        return PostMessageW(each.window, WM_COMMAND, static_cast<WPARAM>(std::atoi(arguments[0].c_str())), 0)
                   ? 0
                   : 1;
    }
    return 1;
}

// To any window of the class, seen or not; returns when it has been handled.
int endSession(const Arguments& arguments) {
    const HWND window = FindWindowA(arguments[0].c_str(), nullptr);
    DWORD_PTR result = 0;
    return window && SendMessageTimeoutW(window, WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, 5000, &result) &&
                   result && SendMessageTimeoutW(window, WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, 20000, &result)
               ? 0
               : 1;
}

int waitForEnabled(const Arguments& arguments) {
    const DWORD limit = GetTickCount() + static_cast<DWORD>(std::atoi(arguments[1].c_str()) * 1000);
    const HWND window = need(arguments[0]);
    while (!IsWindowEnabled(window)) {
        if (GetTickCount() >= limit) return 1;
        Sleep(1);
    }
    return 0;
}

int tellDpiChanged(const Arguments& arguments) {
    return tellDpi(need(arguments[0]), std::atoi(arguments[1].c_str())) ? 0 : 1;
}
int setColours(const Arguments& arguments) {
    return setColoursOf(need(arguments[0]), arguments[1]) ? 0 : 1;
}

struct Command {
    const char* name;
    std::size_t arguments;
    int (*run)(const Arguments&);
    const char* help;
};

constexpr Command Commands[] = {
    {"all", 0, showAll, "every named window: name, enabled, visible, checked, place, class, text"},
    {"tops", 0, showTops, "every visible top-level window: class, place, title"},
    {"control", 1, showControl, "NAME: enabled, visible, checked, place, class, text"},
    {"text", 1, showText, "NAME: its text"},
    {"rows", 1, showRows, "LIST: * for a selected row or -, then the columns"},
    {"widths", 1, showWidths, "LIST: width of each column in pixels"},
    {"panels", 1, showPanels, "STATUSBAR: the text of each panel"},
    {"focus", 0, showFocus, "name of the control with the keyboard focus"},
    {"foreground", 0, showForeground, "class, visible, title of the window that has the keyboard"},
    {"row-place", 2, showRowPlace, "LIST ROW: scrolls to the row and tells where it is"},
    {"header-place", 2, showHeaderPlace, "LIST COLUMN: where the column's header is"},
    {"bar-item", 2, showBarItem, "LISTBAR ITEM: centre of an item of the open bar, counted over all bars"},
    {"bar-header", 2, showBarHeader, "LISTBAR BAR: centre of a bar's header"},
    {"message-box", 0, showMessageBox, "caption, texts and buttons of the open message box"},
    {"dialog", 0, showDialog, "the visible parts of the open dialog: class, enabled, place, text"},
    {"wait", 3, waitFor, "NAME TEXT SECONDS: until the control is visible and its text begins so"},
    {"wait-box", 2, waitForBox,
     "TEXT SECONDS: until a message box says so; without a text until none is open"},
    {"press", 1, pressBoxButton, "ID: the button of the open message box, 6 for Yes and 7 for No"},
    {"end-session", 1, endSession, "CLASS: tells a window that the session ends"},
    {"layout", 0, showLayoutFaults,
     "visible controls that overlap or leave their container: kind, control, other, pixels"},
    {"press-at", 2, pressAt, "X Y: clicks this place of the screen, where nothing else moves the mouse"},
    {"dpi", 2, tellDpiChanged, "NAME DPI: tells the window that it came to a screen of that scaling"},
    {"colours", 2, setColours, "NAME NUMBER=RRGGBB...: sets colours of the system while the program runs"},
    {"wait-enabled", 2, waitForEnabled, "NAME SECONDS: until the control is enabled"},
};

}  // namespace

int main(int count, char** values) {
    const Arguments all(values + 1, values + count);
    for (const Command& command : Commands)
        if (!all.empty() && all[0] == command.name && all.size() == command.arguments + 1)
            return command.run(Arguments(all.begin() + 1, all.end()));
    for (const Command& command : Commands)
        std::fprintf(stderr, "inspect_window %-13s %s\n", command.name, command.help);
    return 2;
}

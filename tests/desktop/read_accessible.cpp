// A client of Windows' interface for assistive tools: asks each control of the running program what a reader
// of the screen asks. Run it in the same prefix as the program. Prints UTF-8; the exit status is 0 if what
// was asked for is there.
#include <windows.h>

#define interface struct
#include <oleacc.h>
#undef interface

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <utility>
#include <vector>

#include "accessible_facts.h"
#include "helper_text.h"
#include "windows_by_name.h"

namespace {

using Arguments = std::vector<std::string>;

void print(const std::wstring& line) {
    std::printf("%s\n", utf8(line).c_str());
    std::fflush(stdout);
}

Object need(const std::string& name) {
    const HWND window = findNamed(name);
    Object object = window != nullptr ? objectOf(window) : nullptr;
    if (object != nullptr) return object;
    std::fprintf(stderr, "there is no control %s, or nothing speaks for it\n", name.c_str());
    std::exit(1);
}

// The part of a control with this name, from 1; 0 for the control itself where no name is given.
LONG partNamed(IAccessible& object, const std::string& name) {
    for (LONG part = 0; !name.empty() && part <= childCount(object); ++part)
        if (part != 0 && factsOf(object, part).name == wide(name)) return part;
    if (name.empty()) return CHILDID_SELF;
    std::fprintf(stderr, "there is no part %s\n", name.c_str());
    std::exit(1);
}

std::wstring described(const std::wstring& control, const Facts& facts) {
    return control + L"\t" + facts.name + L"\t" + roleName(facts.role) + L"\t" + stateNames(facts.state) +
           L"\t" + std::to_wstring(facts.place.left) + L" " + std::to_wstring(facts.place.top) + L" " +
           std::to_wstring(facts.place.right) + L" " + std::to_wstring(facts.place.bottom) + L"\t" +
           facts.action;
}

// What is wrong with the answers for a control or a part of one; empty for nothing.
std::wstring faultOf(const Facts& facts) {
    const bool seen = (facts.state & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN)) == 0;
    if (facts.name.empty()) return L"no name";
    if (facts.role == 0) return L"no role";
    if (seen && IsRectEmpty(&facts.place)) return L"no place";
    return {};
}

int tell(const std::wstring& control, const Facts& facts, bool mustHaveName) {
    print(described(control, facts));
    const std::wstring fault = faultOf(facts);
    if (!mustHaveName || fault.empty()) return 0;
    print(L"WRONG\t" + control + L"\t" + fault);
    return 1;
}

// The parts that are no windows of their own.
int tellParts(const std::wstring& control, IAccessible& object, bool mustHaveNames) {
    int faults = 0;
    for (LONG part = 1; part <= childCount(object); ++part) {
        if (hasObject(object, part)) continue;
        faults += tell(control + L"/" + std::to_wstring(part), factsOf(object, part), mustHaveNames);
    }
    return faults;
}

bool takesKeyboard(HWND window) {
    return (GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) != 0;
}

int tellWindow(const std::string& name, HWND window) {
    const Object object = objectOf(window);
    const std::wstring control = wide(name);
    if (object == nullptr) {
        print(L"WRONG\t" + control + L"\tnothing speaks for it");
        return 1;
    }
    const bool stop = takesKeyboard(window) && className(window) != L"BromvaleForm";
    const bool must = stop || className(window) == L"msctls_progress32";
    int faults = tell((stop ? L"* " : L"  ") + control, factsOf(*object, CHILDID_SELF), must);
    if (className(window) == L"BromvaleListBar") faults += tellParts(L"  " + control, *object, true);
    if (className(window) == L"msctls_statusbar32") faults += tellParts(L"  " + control, *object, false);
    if (className(window) != L"ComboBox") return faults;
    const HWND field = FindWindowExW(window, nullptr, L"Edit", nullptr);
    const Object inner = objectOf(field);
    return faults + tell(L"* " + control + L".field", factsOf(*inner, CHILDID_SELF), true);
}

int showTable(const Arguments&) {
    int faults = 0;
    for (const NamedWindow& each : namedWindows())
        if (IsWindowVisible(each.window)) faults += tellWindow(each.name, each.window);
    return faults == 0 ? 0 : 1;
}

int showPart(const Arguments& arguments) {
    const Object object = need(arguments[0]);
    const Facts facts = factsOf(*object, partNamed(*object, arguments[1]));
    print(described(wide(arguments[0]), facts) + L"\t" + facts.description);
    return 0;
}

int pressPart(const Arguments& arguments) {
    const Object object = need(arguments[0]);
    return object->accDoDefaultAction(childNumber(partNamed(*object, arguments[1]))) == S_OK ? 0 : 1;
}

int selectPart(const Arguments& arguments) {
    const Object object = need(arguments[0]);
    const VARIANT child = childNumber(partNamed(*object, arguments[1]));
    return object->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, child) == S_OK ? 0 : 1;
}

// What is found at the middle of a part is that part.
int hitPart(const Arguments& arguments) {
    const Object object = need(arguments[0]);
    const LONG part = partNamed(*object, arguments[1]);
    const RECT place = factsOf(*object, part).place;
    VARIANT found{};
    const HRESULT result =
        object->accHitTest((place.left + place.right) / 2, (place.top + place.bottom) / 2, &found);
    return result == S_OK && found.vt == VT_I4 && found.lVal == part ? 0 : 1;
}

// The names of what a step in one direction after the other leads to.
int walk(const Arguments& arguments) {
    const Object object = need(arguments[0]);
    const bool seen = arguments[1] == "seen";
    VARIANT here{};
    HRESULT result = object->accNavigate(NAVDIR_FIRSTCHILD, childNumber(CHILDID_SELF), &here);
    while (result == S_OK && here.vt == VT_I4) {
        print(factsOf(*object, here.lVal).name);
        const VARIANT from = here;
        result = object->accNavigate(seen ? NAVDIR_DOWN : NAVDIR_NEXT, from, &here);
    }
    return 0;
}

// The window with the keyboard, and the part of it that says so.
int showFocus(const Arguments&) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    const HWND form = findNamed("frmMain");
    if (form == nullptr || !GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info)) return 1;
    const Object object = objectOf(info.hwndFocus);
    if (object == nullptr) return 1;
    VARIANT focus{};
    const bool part = object->get_accFocus(&focus) == S_OK && focus.vt == VT_I4;
    const Facts facts = factsOf(*object, part ? focus.lVal : CHILDID_SELF);
    print(facts.name + L"\t" + roleName(facts.role));
    return 0;
}

struct Heard {
    DWORD event;
    HWND window;
    LONG child;
    DWORD time;
};
std::vector<Heard> heard;

// While one is answered, others may come.
void CALLBACK keepEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD time) {
    if (object == OBJID_CLIENT && eventName(event) != nullptr) heard.push_back({event, window, child, time});
}

void printEvent(const Heard& each) {
    const Object speaker = objectOf(each.window);
    const std::wstring text = speaker != nullptr ? factsOf(*speaker, each.child).name : std::wstring();
    print(std::to_wstring(each.time) + L"\t" + eventName(each.event) + L"\t" + nameOf(each.window) + L"\t" +
          text);
}

// Each event with its time in milliseconds, until there is none for so many seconds.
int showEvents(const Arguments& arguments) {
    const DWORD process = processOf(findNamed("frmMain"));
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, keepEvent, process, 0, WINEVENT_OUTOFCONTEXT);
    if (hook == nullptr) return 1;
    print(L"listening");
    const DWORD quiet = 1000 * std::strtoul(arguments[0].c_str(), nullptr, 10);
    for (DWORD last = GetTickCount(); GetTickCount() - last < quiet;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        if (!heard.empty()) last = GetTickCount();
        for (const Heard& each : std::exchange(heard, {})) printEvent(each);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    UnhookWinEvent(hook);
    return 0;
}

struct Command {
    const char* name;
    std::size_t arguments;
    int (*run)(const Arguments&);
    const char* help;
};

constexpr Command Commands[] = {
    {"table", 0, showTable,
     "every visible control, * for one with the keyboard: control, name, role, state, place, action; fails "
     "on "
     "one without a name"},
    {"part", 2, showPart,
     "CONTROL PART: the same of a part, and its description; the control for an empty PART"},
    {"press", 2, pressPart, "CONTROL PART: its default action"},
    {"select", 2, selectPart, "CONTROL PART: gives it the keyboard"},
    {"hit", 2, hitPart, "CONTROL PART: whether it is found at its place"},
    {"walk", 2, walk, "CONTROL all|seen: names of the parts, from one to the next"},
    {"focus", 0, showFocus, "name and role of what has the keyboard"},
    {"events", 1, showEvents,
     "SECONDS: what the program tells, until it is quiet for so long: time, event, control, name"},
};

}  // namespace

int main(int count, char** values) {
    if (FAILED(CoInitialize(nullptr))) return 2;
    const Arguments all(values + 1, values + count);
    for (const Command& command : Commands)
        if (!all.empty() && all[0] == command.name && all.size() == command.arguments + 1)
            return command.run(Arguments(all.begin() + 1, all.end()));
    for (const Command& command : Commands) std::fprintf(stderr, "%-8s %s\n", command.name, command.help);
    return 2;
}

// What the windows tell an assistive tool, also when it asks late or in the midst of work.
#include <atomic>
#include <memory>

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"
#include "platform/win32/windows/accessibility.h"
#include "tests/win32/sample_form.h"

namespace bromvale::testing {
namespace {

struct Releasing {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Object = std::unique_ptr<IAccessible, Releasing>;

// As a tool asks. Null where nothing answers.
Object objectOf(HWND window) {
    HRESULT(WINAPI * ask)(HWND, DWORD, REFIID, void**) = nullptr;
    void* found = nullptr;
    if (!loadEntry(loadSystemLibrary("oleacc.dll"), "AccessibleObjectFromWindow", ask)) return nullptr;
    const HRESULT asked = ask(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &found);
    return Object(SUCCEEDED(asked) ? static_cast<IAccessible*>(found) : nullptr);
}

VARIANT child(LONG number) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = number;
    return variant;
}

std::string narrow(BSTR text) {
    std::string result;
    for (const wchar_t* unit = text; unit != nullptr && *unit != L'\0'; ++unit)
        result += static_cast<char>(*unit);
    if (text != nullptr) accessibility()->freeString(text);
    return result;
}

std::string nameOf(IAccessible& object, LONG part = CHILDID_SELF) {
    BSTR name = nullptr;
    return object.get_accName(child(part), &name) == S_OK ? narrow(name) : "";
}

LONG stateOf(IAccessible& object, LONG part) {
    VARIANT state{};
    return object.get_accState(child(part), &state) == S_OK ? state.lVal : -1;
}

// Parts of the sample's bar: Allgemein, Backup, Hilfe, Service, Homepage.
constexpr LONG kBackup = 2;
constexpr LONG kHilfe = 3;
constexpr LONG kService = 4;
constexpr LONG kHomepage = 5;

class Accessible : public RealWindows {
  protected:
    void SetUp() override {
        RealWindows::SetUp();
        form.Bar.setSpokenName("Leiste");
        bar = objectOf(windowOf(form.Bar));
        ASSERT_NE(bar, nullptr);
    }
    Object bar;
};

TEST_F(Accessible, TheBarHasItsBarsAndItemsAsParts) {
    LONG count = 0;
    EXPECT_EQ(bar->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 5);
    std::string names;
    for (LONG part = 0; part <= count; ++part) names += nameOf(*bar, part) + " ";
    EXPECT_EQ(names, "Leiste Allgemein Backup Hilfe Service Homepage ");
    EXPECT_TRUE(stateOf(*bar, 1) & STATE_SYSTEM_EXPANDED);
    EXPECT_TRUE(stateOf(*bar, kService) & STATE_SYSTEM_COLLAPSED);
    EXPECT_TRUE(stateOf(*bar, kHomepage) & STATE_SYSTEM_INVISIBLE);
    EXPECT_FALSE(stateOf(*bar, kHilfe) & STATE_SYSTEM_INVISIBLE);
    form.Bar.setOpenBar(1);
    EXPECT_TRUE(stateOf(*bar, kService) & STATE_SYSTEM_EXPANDED);
    EXPECT_FALSE(stateOf(*bar, kHomepage) & STATE_SYSTEM_INVISIBLE);
    EXPECT_TRUE(stateOf(*bar, kBackup) & STATE_SYSTEM_INVISIBLE);
}

TEST_F(Accessible, APartThatIsNotThereIsAnInvalidArgument) {
    BSTR name = nullptr;
    VARIANT state{};
    for (const LONG part : {-1L, 6L}) {
        EXPECT_EQ(bar->get_accName(child(part), &name), E_INVALIDARG) << part;
        EXPECT_EQ(bar->get_accState(child(part), &state), E_INVALIDARG) << part;
        EXPECT_EQ(bar->accDoDefaultAction(child(part)), E_INVALIDARG) << part;
    }
    VARIANT empty{};
    EXPECT_EQ(bar->get_accName(empty, &name), E_INVALIDARG);
    EXPECT_EQ(bar->get_accName(child(1), nullptr), E_INVALIDARG);
    EXPECT_EQ(bar->accSelect(SELFLAG_ADDSELECTION, child(1)), E_INVALIDARG);
}

TEST_F(Accessible, APressIsDoneWhenEventsAreServed) {
    std::vector<std::string> clicked;
    form.Bar.onItemClick = [&](const ListBar::Item& item) { clicked.push_back(item.key); };
    EXPECT_EQ(bar->accDoDefaultAction(child(kHomepage)), S_OK);
    EXPECT_TRUE(clicked.empty()) << "the caller doesn't wait for what follows";
    DoEvents();
    EXPECT_EQ(clicked, std::vector<std::string>{"3"});
    EXPECT_EQ(form.Bar.openBar(), 1);
    EXPECT_EQ(bar->accDoDefaultAction(child(1)), S_OK);
    DoEvents();
    EXPECT_EQ(form.Bar.openBar(), 0);
    form.Bar.setEnabled(false);
    EXPECT_EQ(bar->accDoDefaultAction(child(kBackup)), S_FALSE);
    DoEvents();
    EXPECT_EQ(clicked.size(), 1u);
}

TEST_F(Accessible, ThePartWithTheKeyboardIsFocusedAndMarked) {
    VARIANT focus{};
    form.cmdOk.setFocus();
    EXPECT_EQ(bar->get_accFocus(&focus), S_FALSE);
    EXPECT_EQ(bar->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, child(kHilfe)), S_OK);
    EXPECT_EQ(GetFocus(), windowOf(form.Bar));
    EXPECT_EQ(bar->get_accFocus(&focus), S_OK);
    EXPECT_EQ(focus.lVal, kHilfe);
    EXPECT_TRUE(stateOf(*bar, kHilfe) & STATE_SYSTEM_FOCUSED);
    VARIANT marked{};
    EXPECT_EQ(bar->get_accSelection(&marked), S_OK);
    EXPECT_EQ(marked.lVal, kHilfe);
}

TEST_F(Accessible, AnObjectThatOutlivesItsWindowIsNotConnected) {
    form.unload();
    BSTR text = nullptr;
    VARIANT number{};
    LONG left = 0;
    LONG count = 7;
    IDispatch* parent = nullptr;
    EXPECT_EQ(bar->get_accName(child(1), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accDefaultAction(child(1), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accState(child(1), &number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accFocus(&number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accSelection(&number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->get_accParent(&parent), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->accLocation(&left, &left, &left, &left, child(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->accNavigate(NAVDIR_FIRSTCHILD, child(0), &number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->accHitTest(1, 1, &number), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->accSelect(SELFLAG_TAKEFOCUS, child(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(bar->accDoDefaultAction(child(1)), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(count, 0);
}

TEST_F(Accessible, WhatHasNoCaptionIsCalledByItsSpokenName) {
    form.cboKind.setSpokenName("Art");
    form.txtName.setSpokenName("Name");
    EXPECT_EQ(nameOf(*objectOf(windowOf(form.cboKind))), "Art");
    EXPECT_EQ(nameOf(*objectOf(FindWindowExA(windowOf(form.cboKind), nullptr, "EDIT", nullptr))), "Art");
    EXPECT_EQ(nameOf(*objectOf(windowOf(form.txtName))), "Name");
    EXPECT_EQ(nameOf(*objectOf(windowOf(form.cmdOk))), "Start");
    EXPECT_EQ(nameOf(*objectOf(windowOf(form.fraPage))), "Seite");
}

// A tool in a thread of its own, which waits for each answer.
struct Asking {
    static DWORD WINAPI ask(LPVOID data) {
        auto& self = *static_cast<Asking*>(data);
        static_cast<void>(CoInitialize(nullptr));
        if (const Object object = objectOf(self.window)) self.name = nameOf(*object, kHilfe);
        CoUninitialize();
        self.answered = true;
        return 0;
    }
    HWND window;
    std::string name;
    std::atomic<bool> answered = false;
};

TEST_F(Accessible, AToolIsAnsweredWhileOnlyTheWindowsAreServed) {
    int clicks = 0;
    form.cmdOk.onClick = [&] { ++clicks; };
    PostMessageA(windowOf(form.cmdOk), BM_CLICK, 0, 0);
    Asking asking{windowOf(form.Bar), {}, false};
    const HANDLE thread = CreateThread(nullptr, 0, Asking::ask, &asking, 0, nullptr);
    const DWORD begin = GetTickCount();
    while (!asking.answered && GetTickCount() - begin < 10000) {
        Sleep(5);
        ServeWindows();
    }
    EXPECT_EQ(clicks, 0) << "clicks wait";
    while (WaitForSingleObject(thread, 10) == WAIT_TIMEOUT) DoEvents();
    CloseHandle(thread);
    EXPECT_EQ(asking.name, "Hilfe");
}

// What the program tells of a window's inside.
struct Listener {
    explicit Listener(HWND of) {
        window = of;
        told.clear();
        hook = SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, keep, GetCurrentProcessId(), 0,
                               WINEVENT_OUTOFCONTEXT);
    }
    ~Listener() { UnhookWinEvent(hook); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    static void CALLBACK keep(HWINEVENTHOOK, DWORD event, HWND of, LONG object, LONG part, DWORD, DWORD) {
        if (of == window && object == OBJID_CLIENT && part != CHILDID_SELF) told.emplace_back(event, part);
    }
    static inline HWND window = nullptr;
    static inline std::vector<std::pair<DWORD, LONG>> told;
    HWINEVENTHOOK hook;
};

TEST_F(Accessible, TheKeyboardsWayThroughTheBarIsTold) {
    form.Bar.setFocus();
    DoEvents();
    const Listener listener(windowOf(form.Bar));
    press(form.Bar, VK_DOWN);
    press(form.Bar, VK_NEXT);
    DoEvents();
    const std::vector<std::pair<DWORD, LONG>> wanted{
        {EVENT_OBJECT_FOCUS, kHilfe},    {EVENT_OBJECT_SELECTION, kHilfe},
        {EVENT_OBJECT_STATECHANGE, 1},   {EVENT_OBJECT_STATECHANGE, kService},
        {EVENT_OBJECT_FOCUS, kHomepage}, {EVENT_OBJECT_SELECTION, kHomepage}};
    EXPECT_EQ(Listener::told, wanted);
}

TEST_F(RealWindows, TheKeysOfContextMenusReachAListAndTheMousesMessageDoesNot) {
    int opened = 0;
    form.lvwRows.onContextMenu = [&] { ++opened; };
    form.lvwRows.setFocus();
    press(form.lvwRows, VK_APPS);
    EXPECT_EQ(opened, 1);
    send(form.lvwRows, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(windowOf(form.lvwRows)), -1);
    EXPECT_EQ(opened, 2);
    send(form.lvwRows, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(windowOf(form.lvwRows)), MAKELPARAM(50, 50));
    EXPECT_EQ(opened, 2) << "the right button opens the menu itself, by its release";
}

}  // namespace
}  // namespace bromvale::testing

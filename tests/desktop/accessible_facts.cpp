#include "accessible_facts.h"

#include "windows_by_name.h"

namespace {

std::wstring taken(BSTR text) {
    const std::wstring result = text != nullptr ? text : L"";
    SysFreeString(text);
    return result;
}

std::wstring textOf(IAccessible& object, LONG part,
                    HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*)) {
    BSTR text = nullptr;
    return (object.*ask)(childNumber(part), &text) == S_OK ? taken(text) : std::wstring();
}

LONG numberOf(IAccessible& object, LONG part,
              HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, VARIANT*)) {
    VARIANT number{};
    return (object.*ask)(childNumber(part), &number) == S_OK && number.vt == VT_I4 ? number.lVal : 0;
}

struct Named {
    LONG number;
    const wchar_t* name;
};

constexpr Named States[] = {
    {STATE_SYSTEM_UNAVAILABLE, L"unavailable"}, {STATE_SYSTEM_SELECTED, L"selected"},
    {STATE_SYSTEM_FOCUSED, L"focused"},         {STATE_SYSTEM_CHECKED, L"checked"},
    {STATE_SYSTEM_READONLY, L"read-only"},      {STATE_SYSTEM_EXPANDED, L"expanded"},
    {STATE_SYSTEM_COLLAPSED, L"collapsed"},     {STATE_SYSTEM_INVISIBLE, L"invisible"},
    {STATE_SYSTEM_OFFSCREEN, L"off-screen"},    {STATE_SYSTEM_FOCUSABLE, L"focusable"},
    {STATE_SYSTEM_SELECTABLE, L"selectable"},
};

constexpr Named Events[] = {
    {EVENT_OBJECT_FOCUS, L"focus"},
    {EVENT_OBJECT_SELECTION, L"selection"},
    {EVENT_OBJECT_STATECHANGE, L"state"},
    {EVENT_OBJECT_NAMECHANGE, L"name"},
};

}  // namespace

Object objectOf(HWND window) {
    void* found = nullptr;
    if (window == nullptr || FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                                               __uuidof(IAccessible), &found)))
        return nullptr;
    return Object(static_cast<IAccessible*>(found));
}

VARIANT childNumber(LONG number) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = number;
    return child;
}

LONG childCount(IAccessible& object) {
    LONG count = 0;
    return object.get_accChildCount(&count) == S_OK ? count : 0;
}

bool hasObject(IAccessible& object, LONG part) {
    IDispatch* own = nullptr;
    if (object.get_accChild(childNumber(part), &own) != S_OK || own == nullptr) return false;
    own->Release();
    return true;
}

Facts factsOf(IAccessible& object, LONG part) {
    Facts facts;
    facts.name = textOf(object, part, &IAccessible::get_accName);
    facts.description = textOf(object, part, &IAccessible::get_accDescription);
    facts.action = textOf(object, part, &IAccessible::get_accDefaultAction);
    facts.role = numberOf(object, part, &IAccessible::get_accRole);
    facts.state = numberOf(object, part, &IAccessible::get_accState);
    LONG width = 0;
    LONG height = 0;
    object.accLocation(&facts.place.left, &facts.place.top, &width, &height, childNumber(part));
    facts.place.right = facts.place.left + width;
    facts.place.bottom = facts.place.top + height;
    for (std::wstring* text : {&facts.name, &facts.description})
        for (wchar_t& letter : *text)
            if (letter == L'\r' || letter == L'\n' || letter == L'\t') letter = L' ';
    return facts;
}

std::wstring roleName(LONG role) {
    wchar_t text[100] = L"";
    GetRoleTextW(static_cast<DWORD>(role), text, 100);
    return std::to_wstring(role) + L" " + text;
}

std::wstring stateNames(LONG state) {
    std::wstring names;
    for (const Named& each : States)
        if ((state & each.number) != 0) names += (names.empty() ? L"" : L",") + std::wstring(each.name);
    return names.empty() ? L"-" : names;
}

const wchar_t* eventName(DWORD event) {
    for (const Named& each : Events)
        if (static_cast<DWORD>(each.number) == event) return each.name;
    return nullptr;
}

std::wstring nameOf(HWND window) {
    for (const NamedWindow& each : namedWindows())
        if (each.window == window) return std::wstring(each.name.begin(), each.name.end());
    return {};
}

DWORD processOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

#include "platform/win32/windows/accessible_object.h"

namespace bromvale {
namespace {

constexpr int kNone = -1;

// A number of a part, or nothing for none.
HRESULT tell(int number, VARIANT* result) {
    result->vt = VT_EMPTY;
    if (number < 0) return S_FALSE;
    result->vt = VT_I4;
    result->lVal = number;
    return S_OK;
}

// A text that nobody has.
HRESULT noText(BSTR* result) {
    if (result == nullptr) return E_INVALIDARG;
    *result = nullptr;
    return S_FALSE;
}

}  // namespace

bool tellsParts(HWND window, int count) {
    void* made = nullptr;
    if (accessibility() == nullptr ||
        FAILED(accessibility()->createStandard(window, static_cast<LONG>(OBJID_CLIENT), __uuidof(IAccessible),
                                               &made)))
        return true;
    auto* const object = static_cast<IAccessible*>(made);
    LONG told = 0;
    static_cast<void>(object->get_accChildCount(&told));
    object->Release();
    return told == count;
}

AccessibleWindow::~AccessibleWindow() {
    if (object_ == nullptr) return;
    object_->disconnect();
    object_->Release();
}

LRESULT AccessibleWindow::answer(HWND window, AccessibleParts& parts, WPARAM wParam, LPARAM lParam) {
    if (static_cast<LONG>(lParam) != static_cast<LONG>(OBJID_CLIENT) || accessibility() == nullptr) return 0;
    if (object_ == nullptr) object_ = new AccessibleObject(window, parts);
    return answerWith(*object_, wParam);
}

HRESULT AccessibleObject::QueryInterface(REFIID wanted, void** result) {
    if (result == nullptr) return E_POINTER;
    const bool known =
        wanted == __uuidof(IUnknown) || wanted == __uuidof(IDispatch) || wanted == __uuidof(IAccessible);
    *result = known ? static_cast<IAccessible*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG AccessibleObject::Release() {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT AccessibleObject::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_INVALIDARG;
    *count = 0;
    return S_OK;
}

HRESULT AccessibleObject::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr) *info = nullptr;
    return E_NOTIMPL;
}

HRESULT AccessibleObject::check(const VARIANT& child) const {
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    return child.vt == VT_I4 && child.lVal >= 0 && child.lVal <= parts_->count() ? S_OK : E_INVALIDARG;
}

HRESULT AccessibleObject::text(const VARIANT& child, std::string AccessiblePart::*member,
                               BSTR* result) const {
    if (result == nullptr) return E_INVALIDARG;
    *result = nullptr;
    return answered([&] {
        const HRESULT checked = check(child);
        if (FAILED(checked)) return checked;
        *result = spokenText(parts_->part(static_cast<int>(child.lVal)).*member);
        return *result != nullptr ? S_OK : S_FALSE;
    });
}

HRESULT AccessibleObject::number(const VARIANT& child, LONG AccessiblePart::*member, VARIANT* result) const {
    if (result == nullptr) return E_INVALIDARG;
    result->vt = VT_EMPTY;
    return answered([&] {
        const HRESULT checked = check(child);
        if (FAILED(checked)) return checked;
        result->lVal = parts_->part(static_cast<int>(child.lVal)).*member;
        result->vt = VT_I4;
        return S_OK;
    });
}

HRESULT AccessibleObject::get_accParent(IDispatch** parent) {
    if (parent == nullptr) return E_INVALIDARG;
    *parent = nullptr;
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    return accessibility()->createStandard(window_, static_cast<LONG>(OBJID_WINDOW), __uuidof(IDispatch),
                                           reinterpret_cast<void**>(parent));
}

HRESULT AccessibleObject::get_accChildCount(LONG* count) {
    if (count == nullptr) return E_INVALIDARG;
    *count = 0;
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    *count = parts_->count();
    return S_OK;
}

// No part is an object of its own.
HRESULT AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
    if (object == nullptr) return E_INVALIDARG;
    *object = nullptr;
    const HRESULT checked = check(child);
    return FAILED(checked) ? checked : S_FALSE;
}

HRESULT AccessibleObject::get_accName(VARIANT child, BSTR* name) {
    return text(child, &AccessiblePart::name, name);
}

HRESULT AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
    return text(child, &AccessiblePart::value, value);
}

HRESULT AccessibleObject::get_accDescription(VARIANT child, BSTR* description) {
    return text(child, &AccessiblePart::description, description);
}

HRESULT AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* action) {
    return text(child, &AccessiblePart::action, action);
}

HRESULT AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
    return number(child, &AccessiblePart::role, role);
}

HRESULT AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
    return number(child, &AccessiblePart::state, state);
}

HRESULT AccessibleObject::get_accHelp(VARIANT child, BSTR* help) {
    const HRESULT checked = check(child);
    return FAILED(checked) ? checked : noText(help);
}

HRESULT AccessibleObject::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
    if (topic == nullptr) return E_INVALIDARG;
    *topic = 0;
    return get_accHelp(child, file);
}

HRESULT AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    return get_accHelp(child, shortcut);
}

HRESULT AccessibleObject::get_accFocus(VARIANT* child) {
    if (child == nullptr) return E_INVALIDARG;
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    return tell(parts_->focusedPart(), child);
}

HRESULT AccessibleObject::get_accSelection(VARIANT* children) {
    if (children == nullptr) return E_INVALIDARG;
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    return tell(parts_->selectedPart(), children);
}

// One part at a time is marked, and the keyboard is there.
HRESULT AccessibleObject::accSelect(LONG flags, VARIANT child) {
    return answered([&] {
        const HRESULT checked = check(child);
        if (FAILED(checked)) return checked;
        if (flags == 0 || (flags & ~(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION)) != 0) return E_INVALIDARG;
        const bool chosen =
            parts_->choosePart(static_cast<int>(child.lVal), (flags & SELFLAG_TAKEFOCUS) != 0);
        return chosen ? S_OK : S_FALSE;
    });
}

HRESULT AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    if (left == nullptr || top == nullptr || width == nullptr || height == nullptr) return E_INVALIDARG;
    *left = *top = *width = *height = 0;
    return answered([&] {
        const HRESULT checked = check(child);
        if (FAILED(checked)) return checked;
        const RECT place = parts_->part(static_cast<int>(child.lVal)).place;
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

int AccessibleObject::neighbour(int from, int step, bool seenOnly) const {
    for (int number = from + step; number >= 1 && number <= parts_->count(); number += step) {
        if (!seenOnly || (parts_->part(number).state & STATE_SYSTEM_INVISIBLE) == 0) return number;
    }
    return kNone;
}

int AccessibleObject::target(int from, LONG direction) const {
    switch (direction) {
        case NAVDIR_FIRSTCHILD: return from == 0 && parts_->count() > 0 ? 1 : kNone;
        case NAVDIR_LASTCHILD: return from == 0 && parts_->count() > 0 ? parts_->count() : kNone;
        // What stands beside the window itself, Windows knows.
        case NAVDIR_NEXT: return from > 0 ? neighbour(from, 1, false) : kNone;
        case NAVDIR_PREVIOUS: return from > 0 ? neighbour(from, -1, false) : kNone;
        case NAVDIR_DOWN: return from > 0 ? neighbour(from, 1, true) : kNone;
        case NAVDIR_UP: return from > 0 ? neighbour(from, -1, true) : kNone;
        default: return kNone;
    }
}

HRESULT AccessibleObject::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    if (end == nullptr) return E_INVALIDARG;
    end->vt = VT_EMPTY;
    return answered([&] {
        const HRESULT checked = check(start);
        return FAILED(checked) ? checked : tell(target(static_cast<int>(start.lVal), direction), end);
    });
}

HRESULT AccessibleObject::accHitTest(LONG x, LONG y, VARIANT* child) {
    if (child == nullptr) return E_INVALIDARG;
    child->vt = VT_EMPTY;
    if (!connected()) return CO_E_OBJNOTCONNECTED;
    return answered([&] {
        const auto holds = [&](int number) {
            const AccessiblePart part = parts_->part(number);
            return (part.state & STATE_SYSTEM_INVISIBLE) == 0 && PtInRect(&part.place, {x, y});
        };
        for (int number = 1; number <= parts_->count(); ++number) {
            if (holds(number)) return tell(number, child);
        }
        return tell(holds(0) ? 0 : kNone, child);
    });
}

HRESULT AccessibleObject::accDoDefaultAction(VARIANT child) {
    return answered([&] {
        const HRESULT checked = check(child);
        if (FAILED(checked)) return checked;
        const int number = static_cast<int>(child.lVal);
        const AccessiblePart part = parts_->part(number);
        if (part.action.empty()) return DISP_E_MEMBERNOTFOUND;
        if ((part.state & STATE_SYSTEM_UNAVAILABLE) != 0) return S_FALSE;
        parts_->pressSoon(number);
        return S_OK;
    });
}

}  // namespace bromvale

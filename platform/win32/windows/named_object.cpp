#include "platform/win32/windows/named_object.h"

#include <atomic>
#include <memory>
#include <string_view>
#include <utility>

namespace bromvale {
namespace {

struct Releasing {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Held = std::unique_ptr<IAccessible, Releasing>;

bool isSelf(const VARIANT& child) {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

// All but the name is asked of Windows' own object, which answers for a window that is gone, too.
class NamedObject final : public IAccessible {
  public:
    NamedObject(Held inner, std::string name) : inner_(std::move(inner)), name_(std::move(name)) {}

    STDMETHODIMP QueryInterface(REFIID wanted, void** result) override {
        if (result == nullptr) return E_POINTER;
        if (wanted == __uuidof(IOleWindow) || wanted == __uuidof(IEnumVARIANT))
            return inner_->QueryInterface(wanted, result);
        const bool known =
            wanted == __uuidof(IUnknown) || wanted == __uuidof(IDispatch) || wanted == __uuidof(IAccessible);
        *result = known ? static_cast<IAccessible*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return inner_->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT number, LCID locale, ITypeInfo** info) override {
        return inner_->GetTypeInfo(number, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override {
        if (name == nullptr) return E_INVALIDARG;
        if (!isSelf(child)) return inner_->get_accName(child, name);
        return answered([&] {
            *name = spokenText(name_);
            return *name != nullptr ? S_OK : S_FALSE;
        });
    }

    STDMETHODIMP get_accParent(IDispatch** parent) override { return inner_->get_accParent(parent); }
    STDMETHODIMP get_accChildCount(LONG* count) override { return inner_->get_accChildCount(count); }
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
        return inner_->get_accChild(child, object);
    }
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override {
        return inner_->get_accValue(child, value);
    }
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override {
        return inner_->get_accDescription(child, description);
    }
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override {
        return inner_->get_accRole(child, role);
    }
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
        return inner_->get_accState(child, state);
    }
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override { return inner_->get_accHelp(child, help); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
        return inner_->get_accHelpTopic(file, child, topic);
    }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override {
        return inner_->get_accKeyboardShortcut(child, shortcut);
    }
    STDMETHODIMP get_accFocus(VARIANT* child) override { return inner_->get_accFocus(child); }
    STDMETHODIMP get_accSelection(VARIANT* children) override { return inner_->get_accSelection(children); }
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override {
        return inner_->get_accDefaultAction(child, action);
    }
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override { return inner_->accSelect(flags, child); }
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override {
        return inner_->accLocation(left, top, width, height, child);
    }
    STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
        return inner_->accNavigate(direction, start, end);
    }
    STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* child) override {
        return inner_->accHitTest(x, y, child);
    }
    STDMETHODIMP accDoDefaultAction(VARIANT child) override { return inner_->accDoDefaultAction(child); }
    STDMETHODIMP put_accName(VARIANT child, BSTR name) override { return inner_->put_accName(child, name); }
    STDMETHODIMP put_accValue(VARIANT child, BSTR value) override {
        return inner_->put_accValue(child, value);
    }

  private:
    ~NamedObject() = default;
    Held inner_;
    std::string name_;
    std::atomic<ULONG> references_ = 1;
};

bool sameText(BSTR first, BSTR second) {
    return first != nullptr && second != nullptr && std::wstring_view(first) == second;
}

bool isCalled(IAccessible& object, const std::string& name) {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR found = nullptr;
    static_cast<void>(object.get_accName(self, &found));
    const BSTR wanted = spokenText(name);
    const bool same = sameText(found, wanted);
    accessibility()->freeString(found);
    accessibility()->freeString(wanted);
    return same;
}

}  // namespace

LRESULT answerWithName(HWND window, const std::string& name, WPARAM wParam, LPARAM lParam) {
    const LONG asked = static_cast<LONG>(lParam);
    if (asked != static_cast<LONG>(OBJID_CLIENT) || name.empty() || accessibility() == nullptr) return 0;
    void* made = nullptr;
    if (FAILED(accessibility()->createStandard(window, asked, __uuidof(IAccessible), &made)) ||
        made == nullptr)
        return 0;
    Held inner(static_cast<IAccessible*>(made));
    if (isCalled(*inner, name)) return 0;
    const Held named(new NamedObject(std::move(inner), name));
    return answerWith(*named, wParam);
}

}  // namespace bromvale

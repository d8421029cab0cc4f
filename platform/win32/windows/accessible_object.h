#pragma once
#include <atomic>

#include "platform/win32/windows/accessible_parts.h"

namespace bromvale {

// A window's parts as COM asks for them; see IAccessible. Lives as long as anybody holds it.
class AccessibleObject final : public IAccessible {
  public:
    AccessibleObject(HWND window, AccessibleParts& parts) : window_(window), parts_(&parts) {}
    AccessibleObject(const AccessibleObject&) = delete;
    AccessibleObject& operator=(const AccessibleObject&) = delete;
    // The window goes.
    void disconnect() { parts_ = nullptr; }

    STDMETHODIMP QueryInterface(REFIID wanted, void** result) override;
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override;

    // Nobody asks by names: the interface is a double one for scripts, which have their own ways.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accSelection(VARIANT* children) override;
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    STDMETHODIMP accHitTest(LONG x, LONG y, VARIANT* child) override;
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

  private:
    ~AccessibleObject() = default;
    [[nodiscard]] bool connected() const { return parts_ != nullptr && IsWindow(window_) != FALSE; }
    [[nodiscard]] HRESULT check(const VARIANT& child) const;
    [[nodiscard]] HRESULT text(const VARIANT& child, std::string AccessiblePart::*member, BSTR* result) const;
    [[nodiscard]] HRESULT number(const VARIANT& child, LONG AccessiblePart::*member, VARIANT* result) const;
    [[nodiscard]] int neighbour(int from, int step, bool seenOnly) const;
    [[nodiscard]] int target(int from, LONG direction) const;

    HWND window_;
    AccessibleParts* parts_;
    std::atomic<ULONG> references_ = 1;  // a tool within the process may hold it from any thread
};

}  // namespace bromvale

#include "platform/win32/windows/combo_field.h"

#include "platform/win32/windows/named_object.h"
#include "platform/win32/windows/window_peer.h"

namespace bromvale {
namespace {

constexpr char kBelow[] = "BromvaleFieldBelow";  // property: the procedure of the field's class

LRESULT answerAsBox(HWND field, WPARAM wParam, LPARAM lParam) {
    const WindowPeer* const box = WindowPeer::of(GetParent(field));
    LRESULT answer = 0;
    if (box != nullptr)
        guarded([&] { answer = answerWithName(field, box->control().spokenName(), wParam, lParam); });
    return answer;
}

LRESULT CALLBACK fieldProcedure(HWND field, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto below = reinterpret_cast<WNDPROC>(GetPropA(field, kBelow));
    if (below == nullptr) return DefWindowProcA(field, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrA(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(below));
        RemovePropA(field, kBelow);
    }
    const LRESULT answer = message == WM_GETOBJECT ? answerAsBox(field, wParam, lParam) : 0;
    return answer != 0 ? answer : CallWindowProcA(below, field, message, wParam, lParam);
}

}  // namespace

void nameComboField(HWND comboBox) {
    const HWND field = FindWindowExA(comboBox, nullptr, "EDIT", nullptr);
    if (field == nullptr) return;
    const LONG_PTR below = GetWindowLongPtrA(field, GWLP_WNDPROC);
    if (SetPropA(field, kBelow, reinterpret_cast<HANDLE>(below)))
        SetWindowLongPtrA(field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&fieldProcedure));
}

}  // namespace bromvale

#include "platform/win32/windows/accessibility.h"

#include <string_view>

#include "platform/win32/system/entries.h"
#include "platform/win32/system/libraries.h"

namespace bromvale {
namespace {

bool load(AccessibilityFunctions& functions) {
    const HMODULE tools = loadSystemLibrary("oleacc.dll");
    const HMODULE texts = loadSystemLibrary("oleaut32.dll");
    return loadEntry(tools, "LresultFromObject", functions.resultFromObject) &&
           loadEntry(tools, "CreateStdAccessibleObject", functions.createStandard) &&
           loadEntry(texts, "SysAllocString", functions.allocateString) &&
           loadEntry(texts, "SysFreeString", functions.freeString) && SUCCEEDED(CoInitialize(nullptr));
}

// The window by which COM brings calls of other processes into this thread, and their message.
HWND callWindow = nullptr;

bool bringsCalls(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return std::string_view(name).starts_with("OleMainThreadWnd") &&
           GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

BOOL CALLBACK keepCallWindow(HWND window, LPARAM) {
    if (bringsCalls(window)) callWindow = window;
    return callWindow == nullptr;
}

// From Windows 2000 on such windows are below a parent of their own.
void findCallWindow() {
    if (callWindow != nullptr) return;
    HWND each = nullptr;
    while ((each = FindWindowExA(HWND_MESSAGE, each, nullptr, nullptr)) != nullptr) {
        if (!keepCallWindow(each, 0)) return;
    }
    EnumThreadWindows(GetCurrentThreadId(), keepCallWindow, 0);
}

}  // namespace

const AccessibilityFunctions* accessibility() {
    static AccessibilityFunctions loaded{};
    static const bool all = load(loaded);
    return all ? &loaded : nullptr;
}

BSTR spokenText(const std::string& text) {
    if (text.empty() || accessibility() == nullptr) return nullptr;
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int units = MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(units));
    return accessibility()->allocateString(wide.c_str());
}

LRESULT answerWith(IAccessible& object, WPARAM flags) {
    const LRESULT answer = accessibility()->resultFromObject(__uuidof(IAccessible), flags, &object);
    findCallWindow();
    return SUCCEEDED(static_cast<HRESULT>(answer)) ? answer : 0;  // a failure's code is an LRESULT, too
}

void tellAssistive(DWORD event, HWND window, LONG child) {
    using Notify = void(WINAPI*)(DWORD, HWND, LONG, LONG);
    static const Notify notify = [] {
        Notify found = nullptr;
        loadEntry(GetModuleHandleA("user32.dll"), "NotifyWinEvent", found);
        return found;
    }();
    if (notify != nullptr && window != nullptr) notify(event, window, OBJID_CLIENT, child);
}

void answerAssistive() {
    MSG message;
    while (callWindow != nullptr && PeekMessageA(&message, callWindow, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

}  // namespace bromvale

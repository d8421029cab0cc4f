#include "windows_by_name.h"

#include <array>

namespace {

constexpr char Prefix[] = "BromvaleName:";
constexpr wchar_t FormClass[] = L"BromvaleForm";

BOOL CALLBACK readName(HWND, LPSTR property, HANDLE, ULONG_PTR result) {
    // Properties that were set by number have no text.
    if (reinterpret_cast<ULONG_PTR>(property) < 0x10000) return TRUE;
    const std::string text = property;
    if (!text.starts_with(Prefix)) return TRUE;
    *reinterpret_cast<std::string*>(result) = text.substr(sizeof Prefix - 1);
    return FALSE;
}

BOOL CALLBACK collect(HWND window, LPARAM result) {
    std::string name;
    EnumPropsExA(window, readName, reinterpret_cast<LPARAM>(&name));
    if (!name.empty()) reinterpret_cast<std::vector<NamedWindow>*>(result)->push_back({name, window});
    return TRUE;
}

BOOL CALLBACK collectForm(HWND window, LPARAM result) {
    if (className(window) != FormClass) return TRUE;
    collect(window, result);
    EnumChildWindows(window, collect, result);
    return TRUE;
}

BOOL CALLBACK collectTop(HWND window, LPARAM result) {
    if (!IsWindowVisible(window)) return TRUE;
    std::vector<TopWindow>& found = *reinterpret_cast<std::vector<TopWindow>*>(result);
    found.push_back({window, className(window), windowText(window)});
    return TRUE;
}

}  // namespace

std::vector<NamedWindow> namedWindows() {
    std::vector<NamedWindow> found;
    EnumWindows(collectForm, reinterpret_cast<LPARAM>(&found));
    return found;
}

HWND findNamed(const std::string& name) {
    for (const NamedWindow& each : namedWindows())
        if (each.name == name) return each.window;
    return nullptr;
}

std::vector<TopWindow> visibleTopWindows() {
    std::vector<TopWindow> found;
    EnumWindows(collectTop, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::wstring className(HWND window) {
    std::array<wchar_t, 256> buffer{};
    const int length = GetClassNameW(window, buffer.data(), static_cast<int>(buffer.size()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::wstring windowText(HWND window) {
    std::vector<wchar_t> buffer(16384);
    DWORD_PTR length = 0;
    if (SendMessageTimeoutW(window, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()),
                            SMTO_ABORTIFHUNG, 1000, &length) == 0)
        return {};
    return {buffer.data(), length};
}

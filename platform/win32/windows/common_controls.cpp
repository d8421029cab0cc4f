#include "platform/win32/windows/common_controls.h"

#include <shlwapi.h>

namespace bromvale {

namespace {

DWORD libraryVersion() {
    const HMODULE library = GetModuleHandleA("comctl32.dll");
    if (library == nullptr) return 0;
    using VersionEntry = HRESULT(WINAPI*)(DLLVERSIONINFO*);
    const auto get =
        reinterpret_cast<VersionEntry>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetVersion")));
    DLLVERSIONINFO info{};
    info.cbSize = sizeof info;
    return get != nullptr && SUCCEEDED(get(&info)) ? info.dwMajorVersion : 0;
}

}  // namespace

void loadCommonControls() {
    static bool loaded = false;
    if (loaded) return;
    loaded = true;
    InitCommonControls();
    INITCOMMONCONTROLSEX wanted{};
    wanted.dwSize = sizeof wanted;
    wanted.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS;
    InitCommonControlsEx(&wanted);
}

bool themedControls() {
    static const bool themed = libraryVersion() >= 6;
    return themed;
}

}  // namespace bromvale

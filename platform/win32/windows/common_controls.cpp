#include "platform/win32/windows/common_controls.h"

#include "platform/win32/system/entries.h"
#include "platform/win32/windows/form_peer.h"
#include "platform/win32/windows/peers.h"

#include <shlwapi.h>

namespace bromvale {

namespace {

DWORD libraryVersion() {
    HRESULT(WINAPI * get)(DLLVERSIONINFO*) = nullptr;
    if (!loadEntry(GetModuleHandleA("comctl32.dll"), "DllGetVersion", get)) return 0;
    DLLVERSIONINFO info{};
    info.cbSize = sizeof info;
    return SUCCEEDED(get(&info)) ? info.dwMajorVersion : 0;
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

void PeerMaker::visit(Form& form) {
    made = std::make_unique<FormPeer>(form);
}

std::unique_ptr<ControlPeer> createPeer(Control& control) {
    loadCommonControls();
    PeerMaker maker;
    control.accept(maker);
    return std::move(maker.made);
}

}  // namespace bromvale

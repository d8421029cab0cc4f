#include "platform/dialogs.h"

#include <cstring>

#include "platform/win32/system/held_keys.h"

#include <commdlg.h>

namespace bromvale {
namespace {

bool answersBox(WPARAM key) {
    return key == VK_RETURN || key == VK_SPACE || key == VK_ESCAPE;
}

// A key that is still held from before would answer a box that nobody has read.
LRESULT CALLBACK dropHeldKeys(int code, WPARAM wParam, LPARAM lParam) {
    if (code == MSGF_DIALOGBOX) {
        const auto& message = *reinterpret_cast<const MSG*>(lParam);
        if (message.message == WM_KEYDOWN && answersBox(message.wParam) && heldDown(message.lParam))
            return TRUE;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

int showMessageBox(const char* text, const char* title, unsigned style) {
    const HWND active = GetActiveWindow();
    const HHOOK hook = SetWindowsHookExA(WH_MSGFILTER, dropHeldKeys, nullptr, GetCurrentThreadId());
    const int answer = MessageBoxA(nullptr, text, title, style | MB_TASKMODAL);
    if (hook != nullptr) UnhookWindowsHookEx(hook);
    // The box goes while all other windows are still disabled, so that none of them may follow it by itself.
    const bool seen = active != nullptr && IsWindowVisible(active) != 0;
    if (seen && GetActiveWindow() != active) SetForegroundWindow(active);
    return answer;
}

std::string askWhereToSave(const std::string& suggestedName) {
    char path[MAX_PATH] = {};
    std::strncpy(path, suggestedName.c_str(), MAX_PATH - 1);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = OPENFILENAME_SIZE_VERSION_400A;  // the one that Windows 98 and NT4 take
    dialog.hwndOwner = GetActiveWindow();
    dialog.lpstrFilter = "Programme (*.exe)\0*.exe\0Alle Dateien (*.*)\0*.*\0";
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrTitle = "Update speichern unter";
    dialog.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetSaveFileNameA(&dialog) ? path : std::string();
}

}  // namespace bromvale

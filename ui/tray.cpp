// The icon in the notification area and its menu.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "core/log.h"
#include "core/state.h"
#include "platform/screen.h"
#include "ui/frm_main.h"
#include "ui/frm_popup.h"

namespace bromvale {
namespace {

constexpr std::size_t kTipSize = 64;
// The oldest form of the record, which every system knows: 88 bytes in the 32-bit program.
constexpr std::size_t kTrayRecordSize = offsetof(NOTIFYICONDATAA, szTip) + kTipSize;
constexpr int kTaskbarPicture = 4;
constexpr int kIconPixels = 32;

}  // namespace

// Filled once; the same record takes the icon away again.
void FrmMain::addTrayIcon() {
    trayRecord_ = {};
    trayRecord_.cbSize = static_cast<DWORD>(kTrayRecordSize);
    trayRecord_.hWnd = window();
    const auto ownIcon = reinterpret_cast<std::uintptr_t>(loadResourceIcon(iconResource(), kIconPixels));
    trayRecord_.uID = static_cast<UINT>(ownIcon);
    trayRecord_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    trayRecord_.uCallbackMessage = WM_MOUSEMOVE;
    trayRecord_.hIcon = imgList.icon(kTaskbarPicture);
    std::memset(trayRecord_.szTip, ' ', kTipSize);
    const std::size_t length = std::min(AppTitle.size(), kTipSize - 1);
    std::memcpy(trayRecord_.szTip, AppTitle.data(), length);
    trayRecord_.szTip[length] = '\0';
    Shell_NotifyIconA(NIM_ADD, &trayRecord_);
}

void FrmMain::removeTrayIcon() {
    Shell_NotifyIconA(NIM_DELETE, &trayRecord_);
}

// The icon reports as a mouse move whose X coordinate carries the message's number in pixels. Only the
// release of the right button is answered, and as nobody can tell a report from the mouse itself, a move over
// exactly this column of the bare window is, too.
void FrmMain::Form_MouseMove(float x, float) {
    constexpr double kRounding = 0.01;
    const double message = x / twipsPerPixel();
    if (std::abs(message - WM_RBUTTONUP) > kRounding) return;
    SetForegroundWindow(frmPopUp().window());
    if (mnuPopUpShowForm.enabled()) showPopupMenu(frmPopUp(), mnuPopUp, &mnuPopUpShowForm);
}

// A new task bar knows nothing of the icons of the old one.
void FrmMain::Form_TaskbarCreated() {
    Shell_NotifyIconA(NIM_ADD, &trayRecord_);
}

void FrmMain::mnuPopUpAbout_Click() {
    MsgBox(AppTitle + " " + AppVersion, kStyleInformation);
}

void FrmMain::mnuPopUpQuit_Click() {
    unload();
}

}  // namespace bromvale

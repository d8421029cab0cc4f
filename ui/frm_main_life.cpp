#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "core/handling.h"
#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/help.h"
#include "platform/process.h"
#include "platform/screen.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr UINT kMouseMove = 512;
constexpr UINT kMessageIconTip = 7;
constexpr DWORD kTrayAdd = 0;
constexpr DWORD kTrayDelete = 2;
constexpr std::size_t kTipSize = 64;
// The oldest form of the record, which every system knows: 88 bytes in the 32-bit program.
constexpr std::size_t kTrayRecordSize = offsetof(NOTIFYICONDATAA, szTip) + kTipSize;
constexpr int kTaskbarPicture = 4;
constexpr int kIconPixels = 32;
constexpr unsigned kHelpCloseAll = 18;
constexpr std::uint32_t kTextValue = 1;

void saveNumber(std::string_view name, int value) {
    SetKeyValue(kHiveCurrentUser, kSettingsKey, name, std::to_string(value), kTextValue, kSetValue);
}

}  // namespace

// The icon reports to the window as a mouse move whose X coordinate carries the message.
void FrmMain::addTrayIcon() {
    trayRecord_ = {};
    trayRecord_.cbSize = static_cast<DWORD>(kTrayRecordSize);
    trayRecord_.hWnd = window();
    const auto ownIcon = reinterpret_cast<std::uintptr_t>(loadResourceIcon(iconResource(), kIconPixels));
    trayRecord_.uID = static_cast<UINT>(ownIcon);
    trayRecord_.uFlags = kMessageIconTip;
    trayRecord_.uCallbackMessage = kMouseMove;
    trayRecord_.hIcon = imgList.icon(kTaskbarPicture);
    std::memset(trayRecord_.szTip, ' ', kTipSize);
    const std::size_t length = std::min(AppTitle.size(), kTipSize - 1);
    std::memcpy(trayRecord_.szTip, AppTitle.data(), length);
    trayRecord_.szTip[length] = '\0';
    Shell_NotifyIconA(kTrayAdd, &trayRecord_);
}

// ScreenX is the top edge and ScreenY the left one, here and when they are saved: the names are crossed in
// the registry of every user, so they stay so.
void FrmMain::restoreGeometry() {
    setTop(ScreenX);
    setLeft(ScreenY);
    setHeight(Form_Height);
    setWidth(Form_Width);
    if (Form_Width >= screenWidth()) setWindowState(WindowState::Maximised);
}

void FrmMain::saveGeometry() {
    attempt(kGoOn, [&] { saveNumber("Form_Height", height()); });
    attempt(kGoOn, [&] { saveNumber("Form_Width", width()); });
    attempt(kGoOn, [&] { saveNumber("ScreenX", top()); });
    attempt(kGoOn, [&] { saveNumber("ScreenY", left()); });
}

void FrmMain::Form_Load() {
    constexpr Tags tags{"frmMain", "Form_Load"};
    const ReportAnd onFailure{Ending::Next, tags, kStyleStop, kShow};
    tags.trace("started");
    attempt(onFailure, [&] { addTrayIcon(); });
    attempt(onFailure, [&] { mnuPopUpShowForm.setEnabled(true); });
    if (ScreenSave == 1) attempt(onFailure, [&] { restoreGeometry(); });
    tags.trace("endet");
}

// Closing the main window is always the end of the process, whatever else is open.
void FrmMain::Form_Unload() {
    attempt(kGoOn, [] { unloadAllForms(); });
    if (windowState() == WindowState::Normal && ScreenSave == 1) saveGeometry();
    attempt(kGoOn, [] { trace("frmMain", "Form_Unload", ""); });
    attempt(kGoOn, [&] { Shell_NotifyIconA(kTrayDelete, &trayRecord_); });
    attempt(kGoOn, [&] { HtmlHelpA(window(), "", kHelpCloseAll, 0); });
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace bromvale

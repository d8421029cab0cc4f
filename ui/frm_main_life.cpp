#include <cstdint>
#include <string>

#include "core/handling.h"
#include "core/registry_layer.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/help.h"
#include "platform/process.h"
#include "platform/screen.h"
#include "ui/frm_error.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr unsigned kHelpCloseAll = 18;
constexpr std::uint32_t kTextValue = 1;

void saveNumber(std::string_view name, int value) {
    SetKeyValue(kHiveCurrentUser, kSettingsKey, name, std::to_string(value), kTextValue, kSetValue);
}

}  // namespace

// ScreenX is the top edge and ScreenY the left one, here and when they are saved: the names are crossed in
// the registry of every user, so they stay so.
void FrmMain::restoreGeometry() {
    setTop(ScreenX);
    setLeft(ScreenY);
    setHeight(Form_Height);
    setWidth(Form_Width);
    keepOnScreen();
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
    if (ScreenSave != 1) attempt(onFailure, [&] { keepOnScreen(); });
    tags.trace("endet");
}

// A failure at the start is told before the main window is there, and must not be covered by it.
void FrmMain::showBehindErrorDialog() {
    show();
    if (frmError().visible()) frmError().show();
}

// Closing the main window is always the end of the process, whatever else is open.
void FrmMain::Form_Unload() {
    attempt(kGoOn, [] { unloadAllForms(); });
    if (windowState() == WindowState::Normal && ScreenSave == 1) saveGeometry();
    attempt(kGoOn, [] { trace("frmMain", "Form_Unload", ""); });
    attempt(kGoOn, [&] { removeTrayIcon(); });
    attempt(kGoOn, [&] { HtmlHelpA(window(), "", kHelpCloseAll, 0); });
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace bromvale

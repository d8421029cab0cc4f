#include <cstdint>
#include <string>

#include "core/routine.h"
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
void saveNumber(const std::int16_t& setting, int value) {
    quietly([&] { storeSetting(setting, std::to_string(value)); });
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
    saveNumber(Form_Height, height());
    saveNumber(Form_Width, width());
    saveNumber(ScreenX, top());
    saveNumber(ScreenY, left());
}

void FrmMain::Form_Load() {
    constexpr Routine routine{{"frmMain", "Form_Load"}, Report{Ending::Next, kStyleStop, kShow}};
    routine.started();
    routine.step([&] { addTrayIcon(); });
    routine.step([&] { mnuPopUpShowForm.setEnabled(true); });
    if (ScreenSave == 1) routine.step([&] { restoreGeometry(); });
    if (ScreenSave != 1) routine.step([&] { keepOnScreen(); });
    routine.ended();
}

// A failure at the start is told before the main window is there, and must not be covered by it.
void FrmMain::showBehindErrorDialog() {
    show();
    if (frmError().visible()) frmError().show();
}

// Closing the main window is always the end of the process, whatever else is open.
void FrmMain::Form_Unload() {
    quietly([] { unloadAllForms(); });
    if (windowState() == WindowState::Normal && ScreenSave == 1) saveGeometry();
    quietly([] { trace("frmMain", "Form_Unload", ""); });
    quietly([&] { removeTrayIcon(); });
    quietly([&] { HtmlHelpA(window(), "", kHelpCloseAll, 0); });
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace bromvale

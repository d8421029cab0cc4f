#include "ui/frm_main.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/machine.h"
#include "platform/screen.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"
#include "ui/frm_error.h"

namespace bromvale {
namespace {

using P = FrmMain;

// mnuPopUpShowForm, the bold entry of the tray's menu, has no handler: choosing it does nothing, and is kept
// so.
// clang-format off
constexpr Row<P> kRows[] = {
    row<P, &P::Menu>("", {120, 210, 1575, 6555}, 0, 0, {.height = 700},
        on<&ListBar::onItemClick, &P::Menu_ItemClick>()),
    row<P, &P::imgMenu1>("", {}, -1, 0),
    row<P, &P::imgList>("", {}, -1, 0),
    row<P, &P::StatusBar_>("", {0, 6945, 10395, 255}, 9, 0, {.firstPanel = 5200}),
    row<P, &P::ProgressBar_>("", {7515, 6990, 2650, 195}, 12, 0, {.top = 215, .left = 2820}),
    row<P, &P::tmrTimer>("", {}, -1, kDisabled, on<&Timer::onTimer, &P::tmrTimer_Timer>()),
    row<P, &P::winsock>("", {}, -1, 0),
    row<P, &P::mnuPopUp>("<popup menu>", {}, -1, 0),
    row<P, &P::mnuPopUpShowForm, &P::mnuPopUp>("&Zeige Programm", {}, -1, kDisabled),
    row<P, &P::mnuPopUpStartScan, &P::mnuPopUp>("&Scan starten", {}, -1, 0,
        on<&MenuItem::onClick, &P::scan, &ScanPage::mnuPopUpStartScan_Click>()),
    row<P, &P::mnuPopUpBackupZeigen, &P::mnuPopUp>("B&ackup-Bereich", {}, -1, 0,
        on<&MenuItem::onClick, &P::backup, &BackupPage::mnuPopUpBackupZeigen_Click>()),
    row<P, &P::mnuPopUpDeinstall, &P::mnuPopUp>("Programme &deinstallieren", {}, -1, 0,
        on<&MenuItem::onClick, &P::programs, &ProgramsPage::mnuPopUpDeinstall_Click>()),
    row<P, &P::mnuPopUpBugReport, &P::mnuPopUp>("Bug-&Report", {}, -1, 0,
        on<&MenuItem::onClick, &P::bugReport, &BugReportPage::mnuPopUpBugReport_Click>()),
    row<P, &P::mnuPopUpLiveUpdate, &P::mnuPopUp>("&Live-Update", {}, -1, 0,
        on<&MenuItem::onClick, &P::mnuPopUpLiveUpdate_Click>()),
    row<P, &P::mnuPopUpOptionen, &P::mnuPopUp>("&Optionen", {}, -1, 0,
        on<&MenuItem::onClick, &P::options, &OptionsPage::mnuPopUpOptionen_Click>()),
    row<P, &P::mnuPopUpStep1, &P::mnuPopUp>("-", {}, -1, 0),
    row<P, &P::mnuPopUpAbout, &P::mnuPopUp>("&Über", {}, -1, 0, on<&MenuItem::onClick, &P::mnuPopUpAbout_Click>()),
    row<P, &P::mnuPopUpQuit, &P::mnuPopUp>("&Beenden", {}, -1, 0, on<&MenuItem::onClick, &P::mnuPopUpQuit_Click>()),
};
// clang-format on

// Panel 1 takes the width that the window leaves it, panel 3 lies below the progress bar.
constexpr ColumnRow kPanels[] = {{"Status", 5195}, {"", 2300}, {"", 2721}};

// The keys of the navigation pictures are the captions of the navigation items.
constexpr ImageRow kNavigationImages[] = {
    {"Registry Scan starten", BROMVALE_ICON_NAV_FIRST},
    {"Backup", BROMVALE_ICON_NAV_FIRST + 1},
    {"Registriereditor starten", BROMVALE_ICON_NAV_FIRST + 2},
    {"Hilfe", BROMVALE_ICON_NAV_FIRST + 3},
    {"Beenden", BROMVALE_ICON_NAV_FIRST + 4},
    {"Programme deinstallieren", BROMVALE_ICON_NAV_FIRST + 5},
    {"Festplatte aufräumen", BROMVALE_ICON_NAV_FIRST + 6},
    {"Optionen", BROMVALE_ICON_NAV_FIRST + 7},
    {"Bug-Report", BROMVALE_ICON_NAV_FIRST + 8},
    {"Live-Update", BROMVALE_ICON_NAV_FIRST + 9},
    {"Homepage", BROMVALE_ICON_NAV_FIRST + 10},
};
constexpr ImageRow kListImages[] = {
    {"RZIcon", BROMVALE_ICON_LIST_FIRST},
    {"BinärIcon", BROMVALE_ICON_LIST_FIRST + 1},
    {"RegFileIcon", BROMVALE_ICON_LIST_FIRST + 2},
    {"TaskbarIcon", BROMVALE_ICON_LIST_TASKBAR},
    {"DeinstallIcon", BROMVALE_ICON_LIST_FIRST + 4},
    {"OrdnerIcon", BROMVALE_ICON_LIST_FIRST + 5},
};

// Inner size at design.
constexpr int kDesignWidth = 10395;
constexpr int kDesignHeight = 7200;
// Outer size.
constexpr int kMinimumHeight = 7800;
constexpr int kMinimumWidth = 10515;
// What a page's scroll bar takes, and a little more.
constexpr int kScrollBar = 270;

constexpr unsigned kHelpCloseAll = 18;
void saveNumber(const std::int16_t& setting, int value) {
    quietly([&] { storeSetting(setting, std::to_string(value)); });
}

}  // namespace

FrmMain::FrmMain() {
    connectRows(*this, kRows);
}

std::span<const Row<FrmMain>> FrmMain::rows() {
    return kRows;
}

FrmMain& frmMain() {
    // Lives as long as the process. Its handlers may ask for it while it is still being set up.
    static FrmMain* form = nullptr;
    if (!form) {
        form = new FrmMain;
        form->Form_Initialize();
    }
    return *form;
}

void FrmMain::design() {
    setBorderStyle(BorderStyle::Sizable);
    setIconResource(BROMVALE_ICON_PROGRAM);
    setScaleSize(kDesignWidth, kDesignHeight);
    centreOnScreen();
    designRows(*this, kRows);
    Menu.setSpokenName("Navigation");
    ProgressBar_.setSpokenName("Fortschritt");
    StatusBar_.setSpokenName("Statusleiste");
    setPanels(StatusBar_, kPanels);
    setImages(imgMenu1, kNavigationImages);
    setImages(imgList, kListImages);
    for (Page* page : pages()) page->design();
}

void FrmMain::Form_Resize() {
    constexpr Routine routine{{"frmMain", "Form_Resize"}, Report{Ending::Leave}};
    routine.started();
    routine.step([&] {
        // Each assignment that changes the size runs this routine once more, nested.
        const RoomForWindow room = roomFor(*this);
        const int leastHeight = std::min(kMinimumHeight, room.height);
        const int leastWidth = std::min(kMinimumWidth, room.width);
        if (height() < leastHeight) setHeight(leastHeight);
        if (width() < leastWidth) setWidth(leastWidth);
        for (Page* page : pages()) page->resize();
        resizeRows(*this, kRows, innerSize());
    });
    routine.ended();
}

InnerSize MainWindow::roomyInnerSize() const {
    const int missingWidth = kMinimumWidth - width();
    const int missingHeight = kMinimumHeight - height();
    // A bar beside the page takes of its width, one below of its height.
    return {std::max(scaleWidth() + missingWidth, scaleWidth() - (missingHeight > 0 ? kScrollBar : 0)),
            std::max(scaleHeight() + missingHeight, scaleHeight() - (missingWidth > 0 ? kScrollBar : 0))};
}

void Page::fitFrame() {
    resizeControl(frame_, kPageFollows, window.innerSize());
    const InnerSize roomy = window.roomyInnerSize();
    frame_.setContentSize(roomy.width - kPageFollows.width, roomy.height - kPageFollows.height);
}

// Where the screen is too small for the minimum, the window opens within it.
void FrmMain::fitSmallScreen() {
    const RoomForWindow room = roomFor(*this);
    if (room.width >= kMinimumWidth && room.height >= kMinimumHeight) return;
    const ScreenArea area = workingArea(left(), top());
    Place fitting = place();
    if (room.height < kMinimumHeight) fitting.width = std::max(fitting.width, kMinimumWidth + kScrollBar);
    fitting.width = std::min(fitting.width, room.width);
    fitting.height = std::min(fitting.height, room.height);
    fitting.left = std::max(area.left, std::min(fitting.left, area.right - fitting.width));
    fitting.top = std::max(area.top, std::min(fitting.top, area.bottom - fitting.height));
    setPlace(fitting);
}

void MainWindow::showPage(const Page& page) {
    for (Page* each : pages_) each->frame().setVisible(each == &page);
}

// ScreenX is the top edge and ScreenY the left one, here and when they are saved: the names are crossed in
// the registry of every user, so they stay so.
void FrmMain::restoreGeometry() {
    setTop(ScreenX);
    setLeft(ScreenY);
    setHeight(Form_Height);
    setWidth(Form_Width);
    keepOnScreen();
    fitSmallScreen();
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
    if (ScreenSave != 1) {
        routine.step([&] {
            keepOnScreen();
            fitSmallScreen();
        });
    }
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

// A sign of life while the length of a step is unknown: 0, 5, ... 100 and round again.
void FrmMain::tmrTimer_Timer() {
    constexpr int kFull = 100;
    constexpr int kStep = 5;
    ProgressBar_.setValue(ProgressBar_.value() >= kFull ? 0 : ProgressBar_.value() + kStep);
}

}  // namespace bromvale

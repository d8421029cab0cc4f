// Emptying by hand: all folders of the list, or the marked ones; and the system's own cleaner.
#include "cleanup/emptying.h"

#include <array>
#include <string>

#include "base/text.h"
#include "cleanup/file_del.h"
#include "core/command_start.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/text_file.h"
#include "core/time.h"
#include "platform/shell.h"
#include "ui/cleanup_page.h"
#include "ui/frm_login.h"

namespace bromvale {
namespace {

// Systems that keep the cleaner in the Windows folder; all others have it in the system folder.
constexpr std::array<std::string_view, 3> kCleanerInWindowsFolder{"Windows 98", "Windows 98 SE",
                                                                  "Windows ME"};

const std::string& folderOfCleaner() {
    for (const std::string_view name : kCleanerInWindowsFolder) {
        if (OSName == name) return WinDir;
    }
    return SysDir;
}

using OnRefused = std::function<void(const RefusedFolder&)>;

// `line` is the folder as the list names it, and `path` as it is emptied.
void emptyFolder(const std::string& line, std::string& path, const OnRefused& onRefused) {
    const std::string reason = refusalOf(line);
    if (reason.empty()) return FileDel(path, "");
    onRefused({line, reason});
}

}  // namespace

void showEmptyingWindow() {
    frmLogin().lblLogin.setCaption(AppTitle + " " + AppVersion +
                                   "\r\nDie gewählten Ordner werden geleert. Bitte warten...");
    frmLogin().show();
    Pause(0.1);
}

void emptyListedFolders(int number, const OnRefused& onRefused) {
    while (!endOfFile(number)) {
        const std::string line = readLine(number);
        if (line.empty()) continue;
        std::string folder = withBackslash(line);
        emptyFolder(line, folder, onRefused);
    }
}

// The file decides what is emptied, not what the list on the page shows.
void CleanupPage::cmdInhaltLöschen_Click() {
    constexpr Routine kRoutine{{"frmMain", "cmdInhaltLöschen_Click"}};
    const int number = freeFile();
    RefusedFolders refused;
    kRoutine.step([] { showEmptyingWindow(); });
    kRoutine.step([&] {
        openFile(AppPath + "liste.txt", FileMode::Input, number);
        emptyListedFolders(number, [&](const RefusedFolder& folder) { refused.push_back(folder); });
    });
    closeFile(number);
    kRoutine.step([] { frmLogin().unload(); });
    kRoutine.step([&] { tellRefused(refused); });
}

void CleanupPage::mnuPopUpOrdnerEinzeln_Click() {
    quietly([] { showEmptyingWindow(); });
    const int rows = lvwOrdnerList.count();
    RefusedFolders refused;
    for (int row = 1; row <= rows; ++row) {
        quietly([&] {
            if (!lvwOrdnerList.item(row).selected()) return;
            const std::string line = lvwOrdnerList.item(row).text();
            std::string folder = line;
            emptyFolder(line, folder, [&](const RefusedFolder& left) { refused.push_back(left); });
        });
    }
    quietly([] { frmLogin().unload(); });
    quietly([&] { tellRefused(refused); });
}

// Some systems come without it, which is nobody's fault.
void CleanupPage::cmdHDDBereinigen_Click() {
    quietly([] { startCommand(folderOfCleaner() + "cleanmgr.exe", SW_SHOWNORMAL); });
}

}  // namespace bromvale

// Emptying by hand: all folders of the list, or the marked ones; and the system's own cleaner.
#include "cleanup/emptying.h"

#include <array>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "cleanup/file_del.h"
#include "core/attempt.h"
#include "core/command_start.h"
#include "core/log.h"
#include "core/state.h"
#include "core/text_file.h"
#include "core/time.h"
#include "ui/cleanup_page.h"
#include "ui/frm_login.h"

namespace bromvale {
namespace {

constexpr int kNormalWithFocus = 1;

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

OnRefused collectIn(RefusedFolders& refused) {
    return [&refused](const RefusedFolder& folder) { refused.push_back(folder); };
}

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
    constexpr Tags kTags{"frmMain", "cmdInhaltLöschen_Click"};
    const auto onFailure = [&](const Failure& failure) {
        ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Next;
    };
    const int number = freeFile();
    RefusedFolders refused;
    attempt(onFailure, [] { showEmptyingWindow(); });
    attempt(onFailure, [&] {
        openFile(AppPath + "liste.txt", FileMode::Input, number);
        emptyListedFolders(number, collectIn(refused));
    });
    attempt(onFailure, [&] { closeFile(number); });
    attempt(onFailure, [] { frmLogin().unload(); });
    attempt(onFailure, [&] { tellRefused(refused); });
}

void CleanupPage::mnuPopUpOrdnerEinzeln_Click() {
    attempt(kGoOn, [] { showEmptyingWindow(); });
    const int rows = lvwOrdnerList.count();
    RefusedFolders refused;
    for (int row = 1; row <= rows; ++row) {
        attempt(kGoOn, [&] {
            if (!lvwOrdnerList.item(row).selected()) return;
            std::string folder = lvwOrdnerList.item(row).text();
            emptyFolder(lvwOrdnerList.item(row).text(), folder, collectIn(refused));
        });
    }
    attempt(kGoOn, [] { frmLogin().unload(); });
    attempt(kGoOn, [&] { tellRefused(refused); });
}

// Some systems come without it, which is nobody's fault.
void CleanupPage::cmdHDDBereinigen_Click() {
    attempt(kGoOn, [] { startCommand(folderOfCleaner() + "cleanmgr.exe", kNormalWithFocus); });
}

}  // namespace bromvale

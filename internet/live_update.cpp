#include "internet/live_update.h"

#include <string>

#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "internet/file_download.h"
#include "internet/proxy_greeting.h"
#include "internet/web_page.h"
#include "platform/internet.h"
#include "ui/main_window.h"

namespace bromvale {
namespace {

constexpr Routine kRoutine{{"modInternet", "LiveUpdate"}};
constexpr int kNoAnswer = 61000;

void download() {
    const std::string address = webServices() + "/download.php?file=update";
    if (!openDownloadDialog(address)) fetchWithConsent(address);
}

void tellNothingNew() {
    kRoutine.trace("Zur Zeit gibt es kein Update. ");
    MsgBox("Zur Zeit gibt es kein Update.", kStyleInformation);
}

}  // namespace

// Versions are compared as texts, byte by byte: 1.10.0 counts as older than 1.2.0, a line end behind an equal
// version as newer, and so does nearly every page that tells of a server's error. The numbers are given out
// accordingly.
void LiveUpdate() {
    kRoutine.started();
    std::string newest;
    kRoutine.step([&] { newest = readPage(webServices() + "/appver.txt"); });
    if (newest > AppVersion) {
        kRoutine.step(download);
    } else if (!newest.empty()) {
        kRoutine.step(tellNothingNew);
    } else if (asksToTryAgain(kRoutine, kNoAnswer, "", "Soll erneut nach einem Update gesucht werden?")) {
        LiveUpdate();
    }
    kRoutine.ended();
}

void MainWindow::mnuPopUpLiveUpdate_Click() {
    constexpr Routine routine{{"frmMain", "mnuPopUpLiveUpdate_Click"}, Report{Ending::Leave}};
    bool reached = true;
    if (Proxy == 1 && !routine.step([&] { reached = greetProxy(winsock); })) return;
    if (reached) LiveUpdate();
}

}  // namespace bromvale

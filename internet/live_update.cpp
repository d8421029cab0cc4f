#include "internet/live_update.h"

#include <string>

#include "core/attempt.h"
#include "core/log.h"
#include "core/settings.h"
#include "core/state.h"
#include "internet/file_download.h"
#include "internet/proxy_greeting.h"
#include "internet/web_page.h"
#include "platform/dialogs.h"
#include "platform/internet.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"modInternet", "LiveUpdate"};
constexpr int kNoAnswer = 61000;
constexpr const char* kNoAnswerText = "Es besteht ein Problem mit Ihrer Internetverbindung.";
constexpr std::int32_t kYesNoWarning = MB_YESNO | MB_ICONEXCLAMATION;

Ending onFailure(const Failure& failure) {
    ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation, kHide);
    return Ending::Next;
}

void download() {
    const std::string address = webServices() + "/download.php?file=update";
    if (!openDownloadDialog(address)) fetchWithConsent(address);
}

bool wantsToTryAgain() {
    return MsgBox(
               "Es besteht ein Problem mit Ihrer Internetverbindung.\r\n\r\n"
               "Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n"
               "Soll erneut nach einem Update gesucht werden?",
               kYesNoWarning) == IDYES;
}

void tellNoAnswer() {
    attempt(onFailure, [] { throw Failure{kNoAnswer, kNoAnswerText}; });
    bool again = false;
    attempt(onFailure, [&] { again = wantsToTryAgain(); });
    if (!again) return;
    kTags.trace("wiederholt");
    LiveUpdate();
}

void tellNothingNew() {
    kTags.trace("Zur Zeit gibt es kein Update. ");
    MsgBox("Zur Zeit gibt es kein Update.", kStyleInformation);
}

}  // namespace

// Versions are compared as texts, byte by byte: 1.10.0 counts as older than 1.2.0, a line end behind an equal
// version as newer, and so does nearly every page that tells of a server's error. The numbers are given out
// accordingly.
void LiveUpdate() {
    kTags.trace("started");
    std::string newest;
    attempt(onFailure, [&] { newest = readPage(webServices() + "/appver.txt"); });
    if (newest > AppVersion) {
        attempt(onFailure, download);
    } else if (newest.empty()) {
        tellNoAnswer();
    } else {
        attempt(onFailure, tellNothingNew);
    }
    kTags.trace("endet");
}

void FrmMain::mnuPopUpLiveUpdate_Click() {
    const auto onFailureOfClick = [](const Failure& failure) {
        ErrHandle("frmMain", "mnuPopUpLiveUpdate_Click", "", failure.number, failure.description,
                  kStyleExclamation, kHide);
        return Ending::Leave;
    };
    bool reached = true;
    if (Proxy == 1 && !attempt(onFailureOfClick, [&] { reached = greetProxy(winsock); })) return;
    if (reached) LiveUpdate();
}

}  // namespace bromvale

#include "internet/bug_report.h"

#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "core/attempt.h"
#include "core/log.h"
#include "internet/web_page.h"
#include "platform/dialogs.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"modInternet", "BugReport"};
constexpr int kNoAnswer = 61001;
constexpr const char* kNoAnswerText = "Es besteht ein Problem mit Ihrer Internetverbindung.";
constexpr std::int32_t kYesNoWarning = MB_YESNO | MB_ICONEXCLAMATION;

// The keys in their order. The one that says where a report comes from stands before the last field.
struct Part {
    std::string_view key;
    std::string ReportFields::*field;
};
constexpr std::array kParts{
    Part{"bromvaleversion=", &ReportFields::version},
    Part{"&errnr=", &ReportFields::errorNumber},
    Part{"&errdesc=", &ReportFields::errorText},
    Part{"&errbereich=", &ReportFields::where},
    Part{"&os=", &ReportFields::system},
    Part{"&sp=", &ReportFields::servicePack},
    Part{"&errtxt=", &ReportFields::description},
    Part{"&vonwo=Programm", nullptr},
    Part{"&email_abs=", &ReportFields::eMail},
};

Ending onFailure(const Failure& failure) {
    ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation, kHide);
    return Ending::Next;
}

// Any byte that is no blank counts, whatever the server says with it.
void thank() {
    kTags.trace("gesendet");
    MsgBox(
        "Vielen Dank für Ihre Unterstützung.\r\n\r\n"
        "Der Bug-Report ist erfolgreich versendet worden.",
        kStyleInformation);
}

bool wantsToTryAgain() {
    return MsgBox(
               "Es besteht ein Problem mit Ihrer Internetverbindung.\r\n\r\n"
               "Der Bug-Report konnte noch nicht versendet werden.\r\n"
               "Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n"
               "Soll der Versand noch einmal versucht werden?",
               kYesNoWarning) == IDYES;
}

}  // namespace

std::string reportAddress(const ReportFields& fields) {
    std::string address = webServices() + "/bug_report.php?";
    for (const Part& part : kParts) {
        address += part.key;
        if (part.field != nullptr) address += Replace(fields.*part.field, " ", "%20");
    }
    return address;
}

bool isAcceptedAddress(std::string_view eMail) {
    const std::int32_t sign = InStr(eMail, "@");
    const std::int32_t point = InStr(eMail, ".");
    return sign > 1 && point > 4 && static_cast<std::int64_t>(eMail.size()) >= point + 2;
}

void BugReport(const ReportFields& fields) {
    kTags.trace("started");
    std::string answer;
    attempt(onFailure, [&] { answer = readPage(reportAddress(fields)); });
    if (!answer.empty()) {
        attempt(onFailure, thank);
    } else {
        attempt(onFailure, [] { throw Failure{kNoAnswer, kNoAnswerText}; });
        bool again = false;
        attempt(onFailure, [&] { again = wantsToTryAgain(); });
        if (again) {
            kTags.trace("wiederholt");
            // As often as the user likes.
            BugReport(fields);
        }
    }
    kTags.trace("endet");
}

}  // namespace bromvale

#include "internet/bug_report.h"

#include <array>

#include "base/text.h"
#include "internet/web_page.h"

namespace bromvale {
namespace {

constexpr Routine kRoutine{{"modInternet", "BugReport"}};
constexpr int kNoAnswer = 61001;

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

// Any byte that is no blank counts, whatever the server says with it.
void thank() {
    kRoutine.trace("gesendet");
    MsgBox(
        "Vielen Dank für Ihre Unterstützung.\r\n\r\n"
        "Der Bug-Report ist erfolgreich versendet worden.",
        kStyleInformation);
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
    kRoutine.started();
    std::string answer;
    kRoutine.step([&] { answer = readPage(reportAddress(fields)); });
    if (!answer.empty()) {
        kRoutine.step(thank);
    } else if (asksToTryAgain(kRoutine, kNoAnswer, "Der Bug-Report konnte noch nicht versendet werden.\r\n",
                              "Soll der Versand noch einmal versucht werden?")) {
        // As often as the user likes.
        BugReport(fields);
    }
    kRoutine.ended();
}

}  // namespace bromvale

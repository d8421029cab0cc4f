#include "core/log.h"

#include <utility>

#include "base/c_text.h"
#include "base/failure.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/text_file.h"
#include "core/time.h"
#include "platform/dialogs.h"

namespace bromvale {
namespace {

ErrorDialog& errorDialog() {
    static ErrorDialog dialog;
    return dialog;
}

// One record: `fields` follow date and time, each behind its separator. A log that cannot be opened costs the
// record and nothing else; the write and the close then fail too and are passed over in the same way.
void writeRecord(std::initializer_list<std::string_view> fields) {
    const int number = freeFile();
    quietly([&] { openFile(AppPath + "bromvale.log", FileMode::Append, number); });
    quietly([&] {
        std::string line = dateText() + " " + timeText();
        for (const std::string_view field : fields) line.append("; ").append(field);
        writeLine(number, line);
    });
    closeFile(number);
}

}  // namespace

void setErrorDialog(ErrorDialog dialog) {
    errorDialog() = std::move(dialog);
}

int MsgBox(std::string_view text, std::int32_t style) {
    return showMessageBox(CText(text).get(), AppTitle.c_str(), static_cast<unsigned>(style));
}

bool asksYes(std::string_view text, std::int32_t picture) {
    return MsgBox(text, picture | MB_YESNO) == IDYES;
}

void WriteLogStart() {
    writeRecord({"started", AppTitle, AppVersion, AppTarget});
}

void WriteLog(std::string_view Modul, std::string_view Funktion, std::string_view Text, std::int32_t Nummer,
              std::string_view Beschreibung) {
    writeRecord({Modul, Funktion, Text, std::to_string(Nummer), Beschreibung});
}

void ErrHandle(std::string_view Modul, std::string_view Funktion, std::string_view Text, std::int32_t Nummer,
               std::string_view Beschreibung, std::int32_t Stil, std::int16_t Anzeigen) {
    const bool show = Anzeigen == kShow;
    if (Stil == kStyleStop || Stil == kStyleExclamation) {
        WriteLog(Modul, Funktion, Text, Nummer, Beschreibung);
        if (show && errorDialog()) errorDialog()(Modul, Funktion, Nummer, Beschreibung, Stil);
    } else if (Stil == kStyleInformation || Stil == kStyleQuestion) {
        if (LogAlways) WriteLog(Modul, Funktion, Text, Nummer, Beschreibung);
        if (show) MsgBox(Text, Stil);
    }
}

void writeTrace(std::string_view modul, std::string_view funktion, std::string_view text) {
    // A copy: what the report does along the way may touch the failure it tells of.
    const Failure failure = lastFailure();  // NOLINT(performance-unnecessary-copy-initialization)
    ErrHandle(modul, funktion, text, failure.number, failure.description, kStyleInformation, kHide);
}

}  // namespace bromvale

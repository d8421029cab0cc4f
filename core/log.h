#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/settings.h"

namespace bromvale {

// Report classes: the platform's message-box styles. 16 and 48 are always logged, 32 and 64 while LogAlways
// is True, any other style does nothing at all.
inline constexpr std::int32_t kStyleStop = 16;
inline constexpr std::int32_t kStyleQuestion = 32;
inline constexpr std::int32_t kStyleExclamation = 48;
inline constexpr std::int32_t kStyleInformation = 64;

// The show flag is a 16-bit boolean; only -1 counts as True.
inline constexpr std::int16_t kShow = -1;
inline constexpr std::int16_t kHide = 0;

// The one reporting routine. Style 16 and 48: log, and with kShow the error dialog; 32 and 64: log while
// LogAlways, and with kShow a message box. Has no handler of its own.
void ErrHandle(std::string_view Modul, std::string_view Funktion, std::string_view Text, std::int32_t Nummer,
               std::string_view Beschreibung, std::int32_t Stil, std::int16_t Anzeigen);

// First record of a start: "date time; started; AppTitle; AppVersion; AppTarget". Swallows all failures.
void WriteLogStart();

// One record: "date time; Modul; Funktion; Text; Nummer; Beschreibung". Swallows all failures; its only
// caller is ErrHandle. The file is opened and closed for each record, so that it is on disk when this
// returns.
void WriteLog(std::string_view Modul, std::string_view Funktion, std::string_view Text, std::int32_t Nummer,
              std::string_view Beschreibung);

// Fills and shows the error dialog. The dialog lives above this folder and registers itself here.
using ErrorDialog = std::function<void(std::string_view Modul, std::string_view Funktion, std::int32_t Nummer,
                                       std::string_view Beschreibung, std::int32_t Stil)>;
void setErrorDialog(ErrorDialog dialog);

// Message box with the program's title; the answer is IDOK, IDYES, IDNO ...
int MsgBox(std::string_view text, std::int32_t style);
// A question with the buttons Yes and No.
[[nodiscard]] bool asksYes(std::string_view text, std::int32_t picture = kStyleQuestion);

// Trace with style 64 and the last failure (normally 0 and empty), only while Protokoll is 1. `text` may be a
// text or a callable that builds one, which then costs nothing while tracing is off.
template <class Text>
void trace(std::string_view modul, std::string_view funktion, Text&& text);

// A routine's two tags, to be written once at its top.
struct Tags {
    std::string_view modul;
    std::string_view funktion;
    template <class Text>
    void trace(Text&& text) const {
        bromvale::trace(modul, funktion, static_cast<Text&&>(text));
    }
};

// --- template ---
void writeTrace(std::string_view modul, std::string_view funktion, std::string_view text);
template <class Text>
void trace(std::string_view modul, std::string_view funktion, Text&& text) {
    if (Protokoll != 1) return;
    if constexpr (std::is_invocable_v<Text&>) {
        writeTrace(modul, funktion, text());
    } else {
        writeTrace(modul, funktion, text);
    }
}

}  // namespace bromvale

#include "repair/undo_file.h"

#include "core/time.h"
#include "platform/exact/text.h"

namespace bromvale {

namespace {

std::string joined(std::initializer_list<std::string_view> texts) {
    std::string result;
    for (const std::string_view text : texts) result += text;
    return result;
}

}  // namespace

std::string undoStamp() {
    std::string stamp = dateText("ddMMyyyy");
    stamp += '_';
    return stamp += timeText("HHmmss");
}

std::string undoFileName(std::string_view stamp) {
    return joined({fileNameText("Rückgängig_"), stamp, ".reg"});
}

std::string completeCopyName(std::string_view stamp) {
    return joined({fileNameText("Vollständig_"), stamp, ".reg"});
}

std::string undoCreated() {
    std::string created = dateText("dddd, dd. MMM yyyy");
    created += " - ";
    return created += timeText("HH:mm:ss");
}

// The double blank before the word Registryschlüssel and the lone CR of the last line are as every undo file
// has them.
std::vector<std::string> undoHeaderLines(const UndoHeader& header) {
    return {
        std::string(header.regFileHeader),
        joined({systemText("; Die nachfolgenden  Registryschlüssel wurden von "), header.appTitle,
                " Version ", header.appVersion, "\r\n; als falsch erkannt und entfernt.\r\n",
                "; Mit einem Doppelklick im Windows-Explorer auf diese Datei, werden die hier\r\n",
                systemText(
                    "; gesicherten Registryschlüssel wieder in die Registrierungs-Datenbank eingetragen.")}),
        "\r\n",
        joined({"; erstellt am: ", header.created}),
        joined({"; erstellt von: ", header.userName, " Computername: ", header.computerName}),
        joined({"; Betriebssystem: ", header.osName}),
        "\r",
    };
}

std::string undoRecordText(std::string_view keyLine, std::string_view valueName, std::string_view valueData) {
    return joined({keyLine, "\r\n", valueName, "=\"", valueData, "\""});
}

std::string undoRecord(std::string_view keyLine, std::string_view valueName, std::string_view valueData) {
    return undoRecordText(keyLine, valueName, valueData) + "\r\n\r\n";
}

}  // namespace bromvale

#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace bromvale {

// The undo file of a removal: a .reg text in the ANSI code page, whatever its header says, with CR LF line
// ends. Nothing is escaped and nothing is parsed again.

// "ddmmyyyy_hhmmss" of now; the date is read first.
[[nodiscard]] std::string undoStamp();
// "Rückgängig_" stamp ".reg", without folder.
[[nodiscard]] std::string undoFileName(std::string_view stamp);
// "Vollständig_" stamp ".reg", the file of whole keys beside it.
[[nodiscard]] std::string completeCopyName(std::string_view stamp);

struct UndoHeader {
    std::string_view regFileHeader;  // with two CR LF of its own
    std::string_view appTitle;
    std::string_view appVersion;
    std::string_view created;  // "Sonntag, 15. Nov 2026 - 07:12:09"
    std::string_view userName;
    std::string_view computerName;
    std::string_view osName;
};

// The lines before the first record, one element a write, each to be ended by CR LF.
[[nodiscard]] std::vector<std::string> undoHeaderLines(const UndoHeader& header);

// All bytes of one record, the blank line behind it too. The value is always a quoted text, and it is the
// only one that is saved of the key.
[[nodiscard]] std::string undoRecord(std::string_view keyLine, std::string_view valueName,
                                     std::string_view valueData);
// The record without its last CR LF and the blank line: what the log shows.
[[nodiscard]] std::string undoRecordText(std::string_view keyLine, std::string_view valueName,
                                         std::string_view valueData);

// The header's date and time, read now.
[[nodiscard]] std::string undoCreated();

}  // namespace bromvale

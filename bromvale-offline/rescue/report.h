// What was found, as a file or on standard output: for people, for spreadsheets, for programs. UTF-8.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bromvale-offline/rescue/found_row.h"

namespace bromvale::offline {

struct ReportRow : FoundRow {
    std::string user;      // empty for what is the machine's
    std::string view;      // "64" or "32"; empty on a Windows with one
    std::string hiveFile;  // the path on the host; empty where the key is in no raw hive
};

struct Report {
    std::string windows;  // "Windows 7 Professional 6.1.7601, 64-bit", or empty
    std::vector<ReportRow> rows;
    std::size_t elsewhere = 0;  // entries that point to drives, shares and devices that are not at hand
    std::vector<std::string> sentences;  // the program's own, one a scan
};

enum class ReportForm { Text, Csv, Json };
[[nodiscard]] std::optional<ReportForm> reportFormByName(std::string_view name);

// The whole text. Rows are numbered from 1. Text: for reading, control characters as \xNN. CSV: RFC 4180, a
// header, CR LF, control characters but tab as \xNN. JSON: docs/report.schema.json.
[[nodiscard]] std::string reportText(const Report& report, ReportForm form);

// UTF-16 as UTF-8; half a surrogate pair, which UTF-8 can't hold, as \uXXXX.
[[nodiscard]] std::string utf8Of(std::u16string_view wide);

// For people at a terminal: control characters, which names on a disk may hold, as \xNN.
[[nodiscard]] std::string shownText(std::string_view utf8);

}  // namespace bromvale::offline

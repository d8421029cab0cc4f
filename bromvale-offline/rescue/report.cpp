#include "bromvale-offline/rescue/report.h"

#include <array>
#include <cstdio>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/utf8.h"

namespace bromvale::offline {
namespace {

using Escape = std::string (*)(char32_t);

std::string formatted(const char* format, unsigned number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

void appendUtf8(std::string& text, char32_t c) {
    const auto byte = [&text](char32_t value) { text += static_cast<char>(value); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | c >> 6);
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

bool isControl(char32_t c) {
    // The marks that turn the direction of writing round could show another path than the one that is meant.
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool isSurrogate(char32_t c) {
    return c >= 0xD800 && c < 0xE000;
}

// What no form escapes; nearly all there is.
bool isPlain(char16_t c) {
    return c >= 0x20 && c < 0x7F && c != u'"' && c != u'\\';
}

// `escape` answers with an empty text for what may stand as it is.
void append(std::string& text, std::u16string_view wide, const Escape& escape) {
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (isPlain(wide[i])) {
            text += static_cast<char>(wide[i]);
            continue;
        }
        char32_t c = wide[i];
        const bool high = c >= 0xD800 && c < 0xDC00;
        if (high && i + 1 < wide.size() && wide[i + 1] >= 0xDC00 && wide[i + 1] < 0xE000)
            c = 0x10000 + ((c - 0xD800) << 10 | (wide[++i] - 0xDC00u));
        const std::string escaped = escape(c);
        if (escaped.empty()) {
            appendUtf8(text, c);
        } else {
            text += escaped;
        }
    }
}

std::string utf8With(std::u16string_view wide, const Escape& escape) {
    std::string text;
    append(text, wide, escape);
    return text;
}

std::string forPeople(char32_t c) {
    if (isSurrogate(c)) return formatted("\\u%04X", static_cast<unsigned>(c));
    return isControl(c) ? formatted(c < 0x100 ? "\\x%02X" : "\\u%04X", static_cast<unsigned>(c))
                        : std::string();
}

std::string forCsv(char32_t c) {
    if (c == '\t') return {};
    return c == '"' ? "\"\"" : forPeople(c);
}

std::string forJson(char32_t c) {
    if (c == '"') return "\\\"";
    if (c == '\\') return "\\\\";
    return isControl(c) || isSurrogate(c) ? formatted("\\u%04x", static_cast<unsigned>(c)) : std::string();
}

std::u16string wideOfUtf8(std::string_view utf8) {
    return wideFromUtf8(utf8).text;
}

std::string json(std::u16string_view text) {
    return '"' + utf8With(text, forJson) + '"';
}

std::string json(std::string_view utf8) {
    return json(std::u16string_view(wideOfUtf8(utf8)));
}

std::string csv(std::u16string_view text) {
    return '"' + utf8With(text, forCsv) + '"';
}

std::string csv(std::string_view utf8) {
    return csv(std::u16string_view(wideOfUtf8(utf8)));
}

std::string people(std::u16string_view text) {
    return utf8With(text, forPeople);
}

// In German, as the program's own sentence that it stands beside.
std::string elsewhereText(std::size_t count) {
    return utf8FromAnsi(std::to_string(count) + (count == 1 ? " Eintrag" : " Einträge") +
                        " auf Laufwerken, die nicht da sind");
}

std::string textRow(std::size_t number, const ReportRow& row) {
    std::string text = std::to_string(number) + "  " + std::string(kindText(row.kind));
    if (!row.view.empty()) text += ", " + row.view + "-bit view";
    if (!row.user.empty()) text += ", user " + people(wideOfUtf8(row.user));
    text += "\n    " + people(row.key) + "\n    ";
    text += (row.valueName.empty() ? "(default)" : people(row.valueName)) + " = " + people(row.data) + "\n";
    if (!row.sought.empty()) text += "    looked for: " + people(row.sought) + "\n";
    return text;
}

std::string textReport(const Report& report) {
    std::string text;
    if (!report.windows.empty()) text += people(wideOfUtf8(report.windows)) + "\n";
    for (const std::string& sentence : report.sentences) text += people(wideOfUtf8(sentence)) + "\n";
    for (std::size_t i = 0; i < report.rows.size(); ++i) text += "\n" + textRow(i + 1, report.rows[i]);
    if (!report.rows.empty()) text += "\n";
    if (report.elsewhere > 0) text += elsewhereText(report.elsewhere) + "\n";
    return text;
}

std::string csvReport(const Report& report) {
    std::string text = "number,key,name,data,kind,reason,file,user,view,hive\r\n";
    for (std::size_t i = 0; i < report.rows.size(); ++i) {
        const ReportRow& row = report.rows[i];
        text += std::to_string(i + 1) + "," + csv(row.key) + "," + csv(row.valueName) + "," + csv(row.data) +
                "," + csv(kindText(row.kind)) + "," + csv(reasonText(row.kind)) + "," + csv(row.sought) +
                "," + csv(row.user) + "," + csv(row.view) + "," + csv(row.hiveFile) + "\r\n";
    }
    return text;
}

void addField(std::string& text, std::string_view name, std::u16string_view value) {
    text.append(", \"").append(name).append("\": \"");
    append(text, value, forJson);
    text += '"';
}

void addField(std::string& text, std::string_view name, std::string_view utf8) {
    addField(text, name, std::u16string_view(wideOfUtf8(utf8)));
}

void addJsonRow(std::string& text, std::size_t number, const ReportRow& row) {
    text += "{\"number\": " + std::to_string(number);
    addField(text, "key", row.key);
    addField(text, "name", row.valueName);
    addField(text, "data", row.data);
    addField(text, "kind", kindText(row.kind));
    addField(text, "reason", reasonText(row.kind));
    addField(text, "file", row.sought);
    addField(text, "user", row.user);
    addField(text, "view", row.view);
    addField(text, "hive", row.hiveFile);
    text += '}';
}

std::string jsonReport(const Report& report) {
    std::string text = "{\n  \"windows\": " + json(report.windows) +
                       ",\n  \"elsewhere\": " + std::to_string(report.elsewhere) + ",\n  \"rows\": [";
    for (std::size_t i = 0; i < report.rows.size(); ++i) {
        text += i > 0 ? ",\n    " : "\n    ";
        addJsonRow(text, i + 1, report.rows[i]);
    }
    text += report.rows.empty() ? "]\n}\n" : "\n  ]\n}\n";
    return text;
}

}  // namespace

std::optional<ReportForm> reportFormByName(std::string_view name) {
    if (name == "text") return ReportForm::Text;
    if (name == "csv") return ReportForm::Csv;
    if (name == "json") return ReportForm::Json;
    return std::nullopt;
}

std::string reportText(const Report& report, ReportForm form) {
    if (form == ReportForm::Csv) return csvReport(report);
    return form == ReportForm::Json ? jsonReport(report) : textReport(report);
}

std::string shownText(std::string_view utf8) {
    return people(wideOfUtf8(utf8));
}

std::string utf8Of(std::u16string_view wide) {
    return utf8With(wide, [](char32_t c) {
        return isSurrogate(c) ? formatted("\\u%04X", static_cast<unsigned>(c)) : std::string();
    });
}

}  // namespace bromvale::offline

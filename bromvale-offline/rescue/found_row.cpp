#include "bromvale-offline/rescue/found_row.h"

#include <array>
#include <vector>

#include "base/text.h"
#include "platform/offline/locale/code_page.h"
#include "scanner/file_checks.h"

namespace bromvale::offline {
namespace {

struct KindWords {
    std::string_view kind;
    std::string_view reason;
};
constexpr std::array<KindWords, 4> kWords{{
    {"missing file", "the file that the value names is not there"},
    {"empty key", "the key holds nothing but an empty default value"},
    {"dead link", "the class, interface or type library that the value names is not there"},
    {"stale uninstall entry", "the entry has no command that would remove a program"},
}};

constexpr std::array<std::string_view, 5> kFileKeys{"inprocserver32", "inprochandler32", "localserver32",
                                                    "command", "win32"};

struct ListedRow {
    ResultRow row;
    std::string lowerKey;  // of its key line
};
// One object of the registry as the scan lists it: rows that stand together.
using Object = std::vector<ListedRow>;

std::string inLowerCase(std::string text) {
    lowerInPlace(text);
    return text;
}

// Up to the GUID's bracket, or with the name behind App Paths: what a scan takes for one object.
std::string_view objectOf(std::string_view key) {
    if (const std::size_t bracket = key.find('}'); bracket != std::string::npos)
        return key.substr(0, bracket);
    constexpr std::string_view kAppPaths = "app paths\\";
    const std::size_t paths = key.find(kAppPaths);
    if (paths == std::string::npos) return key;
    return key.substr(0, key.find_first_of("\\]", paths + kAppPaths.size()));
}

std::string undoubled(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '\\') ++i;
    }
    return result;
}

bool namesFile(const ListedRow& listed) {
    const auto& [row, key] = listed;
    // Data of an object whose file is missing has its backslashes doubled, that of a dead link has not.
    const bool form = row.valueData.find(":\\\\") != std::string::npos ||
                      row.valueData.starts_with("\\\\\\\\") || row.valueData.find('%') != std::string::npos;
    if (!form) return false;
    for (const std::string_view word : kFileKeys) {
        if (key.find(word) != std::string::npos) return true;
    }
    return row.valueName == "@" && key.find("app paths") != std::string::npos;
}

bool isLink(const ListedRow& listed) {
    const auto& [row, key] = listed;
    return row.valueName == "@" && row.valueData.starts_with('{') && row.valueData.ends_with('}') &&
           (key.ends_with("}\\typelib]") || key.ends_with("}\\clsid]") || key.ends_with("}\\interface]"));
}

// "[HKEY_LOCAL_MACHINE\a\b]"; the rows of two kinds of dead links have no backslash behind the hive's name.
std::u16string keyOf(const ResultRow& row) {
    std::string line = row.keyLine;
    if (line.starts_with('[')) line.erase(0, 1);
    if (line.ends_with(']')) line.pop_back();
    for (const std::string_view hive : {"HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER", "HKEY_CLASSES_ROOT"}) {
        if (line.starts_with(hive) && line.size() > hive.size() && line[hive.size()] != '\\')
            line.insert(hive.size(), "\\");
    }
    return wideFromAnsi(line);
}

std::u16string nameOf(const ResultRow& row) {
    std::string_view name = row.valueName;
    if (name == "@") return {};
    if (name.size() >= 2 && name.starts_with('"') && name.ends_with('"'))
        name = name.substr(1, name.size() - 2);
    return wideFromAnsi(name);
}

struct Explanation {
    FaultKind kind = FaultKind::StaleUninstallEntry;
    std::string sought;
};

// The rows of an object stand in the reverse order of its entries, and the first entry that came to a
// decision judged it: so the last row that names a file does.
Explanation explain(const Object& object) {
    for (std::size_t i = object.size(); i > 0; --i) {
        if (!namesFile(object[i - 1])) continue;
        Explanation found{FaultKind::MissingFile, {}};
        toFileReference(undoubled(object[i - 1].row.valueData), found.sought);
        return found;
    }
    for (const ListedRow& listed : object) {
        if (isLink(listed)) return {FaultKind::DeadLink, listed.row.valueData};
    }
    const ResultRow& only = object.front().row;
    if (object.size() == 1 && only.valueName == "@" && only.valueData.empty())
        return {FaultKind::EmptyKey, {}};
    return {};
}

void explainObject(const Object& object, const std::function<void(FoundRow&&)>& explained) {
    const Explanation why = explain(object);
    for (const auto& [row, lowerKey] : object) {
        const std::string data =
            why.kind == FaultKind::MissingFile ? undoubled(row.valueData) : row.valueData;
        explained({keyOf(row), nameOf(row), wideFromAnsi(data), why.kind, wideFromAnsi(why.sought), 0, 0});
    }
}

}  // namespace

std::string_view kindText(FaultKind kind) {
    return kWords[static_cast<std::size_t>(kind)].kind;
}

std::string_view reasonText(FaultKind kind) {
    return kWords[static_cast<std::size_t>(kind)].reason;
}

void explainRows(std::size_t count, const std::function<ResultRow(std::size_t)>& row,
                 const std::function<void(FoundRow&&)>& explained) {
    Object object;
    for (std::size_t i = 0; i < count; ++i) {
        ListedRow next{row(i), {}};
        next.lowerKey = inLowerCase(next.row.keyLine);
        if (!object.empty() && objectOf(next.lowerKey) != objectOf(object.back().lowerKey)) {
            explainObject(object, explained);
            object.clear();
        }
        object.push_back(std::move(next));
    }
    if (!object.empty()) explainObject(object, explained);
}

}  // namespace bromvale::offline

#include "cleanup/entry_names.h"

namespace bromvale {

bool isPlainName(std::string_view name) {
    constexpr std::string_view kNeverInNames = "\\/:*?\"<>|";
    if (name.empty() || name.back() == '.' || name.back() == ' ') return false;
    return name.find_first_of(kNeverInNames) == std::string_view::npos;
}

std::string reachableName(const WIN32_FIND_DATAA& found) {
    for (const char* const name : {found.cFileName, found.cAlternateFileName}) {
        if (isPlainName(name)) return name;
    }
    return {};
}

std::vector<ForeignEntry> foreignEntries(const std::string& path) {
    std::vector<ForeignEntry> entries;
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA((path + "*.*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return entries;
    do {
        const std::string name = reachableName(found);
        if (!name.empty() && name != found.cFileName) entries.push_back({name, found.cFileName});
    } while (FindNextFileA(search, &found) != 0);
    FindClose(search);
    return entries;
}

}  // namespace bromvale

#include "core/file_helpers.h"

#include <utility>

#include "base/c_text.h"
#include "core/routine.h"
#include "platform/exact/files.h"
#include "platform/exact/other_view.h"
#include "platform/files.h"

namespace bromvale {
namespace {

constexpr std::string_view kModule = "modFiles";

void collectEntries(const std::string& sought, std::vector<FoundEntry>& entries) {
    FolderSearch search(sought);
    FoundEntry found;
    while (search.next(found)) {
        if (found.name != "." && found.name != "..") entries.push_back(found);
    }
}

}  // namespace

void FindFileAPI(std::string& path, std::string_view pattern, std::vector<FoundEntry>& entries) {
    constexpr Routine routine{{kModule, "FindFileAPI"}};
    routine.started();
    if (path.empty() || path.back() != '\\') path += '\\';
    routine.trace([&] { return "durchsuchter Ordner " + path; });
    entries.clear();
    routine.step([&] { collectEntries(std::string(path).append(pattern), entries); });
    routine.trace([&] { return "Darin wurden " + std::to_string(entries.size()) + " Dateien gefunden."; });
    routine.ended();
}

void FindFileAPI(std::string& path, std::string_view pattern, std::vector<std::string>& names) {
    std::vector<FoundEntry> entries;
    FindFileAPI(path, pattern, entries);
    names.clear();
    names.reserve(entries.size() + 1);
    for (FoundEntry& entry : entries) names.push_back(std::move(entry.name));
    names.emplace_back();
}

bool FileExists(std::string_view path) {
    WIN32_FIND_DATAA found;
    // The search stays open, one handle per file found, until the process ends.
    const HANDLE search = FindFirstFileA(CText(path).get(), &found);
    const bool exists = search != INVALID_HANDLE_VALUE && search != nullptr;
    if (!exists) trace(kModule, "FileExists", [&] { return std::string(path).append("; Falsch"); });
    return exists;
}

bool FileExistsInAnyView(std::string_view path) {
    return FileExists(path) || existsInOtherView(path);
}

}  // namespace bromvale

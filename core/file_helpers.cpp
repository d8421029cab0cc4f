#include "core/file_helpers.h"

#include "base/c_text.h"
#include "core/routine.h"
#include "platform/events.h"
#include "platform/exact/other_view.h"
#include "platform/files.h"

namespace bromvale {
namespace {

constexpr std::string_view kModule = "modFiles";

}  // namespace

void FindFileAPI(std::string& path, std::string_view pattern, std::vector<FoundEntry>& entries) {
    constexpr Routine kRoutine{{kModule, "FindFileAPI"}};
    kRoutine.started();
    if (path.empty() || path.back() != '\\') path += '\\';
    kRoutine.trace([&] { return "durchsuchter Ordner " + path; });
    entries.clear();
    kRoutine.step([&] {
        walkFolder(std::string(path).append(pattern), [&](const FoundEntry& found) {
            ServeWindows();  // a folder may hold as many files as a disk
            entries.push_back(found);
            return true;
        });
    });
    kRoutine.trace([&] { return "Darin wurden " + std::to_string(entries.size()) + " Dateien gefunden."; });
    kRoutine.step([&] { entries.emplace_back(); });
    kRoutine.ended();
}

bool FileExists(std::string_view path) {
    WIN32_FIND_DATAA found;
    // The search stays open on purpose: one handle per file found, until the process ends.
    const HANDLE search = FindFirstFileA(CText(path).get(), &found);
    const bool exists = search != INVALID_HANDLE_VALUE && search != nullptr;
    if (!exists) trace(kModule, "FileExists", [&] { return std::string(path).append("; Falsch"); });
    return exists;
}

bool FileExistsInAnyView(std::string_view path) {
    return FileExists(path) || existsInOtherView(path);
}

}  // namespace bromvale

#include "core/file_helpers.h"

#include "core/c_text.h"
#include "core/handling.h"
#include "core/registry_layer.h"
#include "core/runtime.h"
#include "platform/files.h"
#include "platform/other_view.h"

namespace bromvale {
namespace {

constexpr std::string_view kModule = "modFiles";

void collectNames(const std::string& sought, std::vector<std::string>& names) {
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA(sought.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        std::string name(found.cFileName, sizeof(found.cFileName));
        TrimNull(name);
        if (name == "." || name == "..") continue;
        names.back() = name;
        names.emplace_back();
    } while (FindNextFileA(search, &found) != 0);
    FindClose(search);
}

}  // namespace

void FindFileAPI(std::string& path, std::string_view pattern, std::vector<std::string>& names) {
    const Tags tags{kModule, "FindFileAPI"};
    const auto onFailure = reportAndGoOn(tags);
    tags.trace("started");
    if (path.empty() || path.back() != '\\') path += '\\';
    tags.trace([&] { return "durchsuchter Ordner " + path; });
    names.assign(1, std::string());
    attempt(onFailure, [&] { collectNames(std::string(path).append(pattern), names); });
    tags.trace([&] { return "Darin wurden " + std::to_string(names.size() - 1) + " Dateien gefunden."; });
    tags.trace("endet");
}

bool FileExists(std::string_view path) {
    WIN32_FIND_DATAA found;
    // The search stays open, as it always did here: one handle per file found, until the process ends.
    const HANDLE search = FindFirstFileA(CText(path).get(), &found);
    const bool exists = search != INVALID_HANDLE_VALUE && search != nullptr;
    if (!exists) trace(kModule, "FileExists", [&] { return std::string(path).append("; Falsch"); });
    return exists;
}

bool FileExistsInAnyView(std::string_view path) {
    return FileExists(path) || existsInOtherView(path);
}

}  // namespace bromvale

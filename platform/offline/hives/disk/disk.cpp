#include "platform/offline/hives/disk/disk.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

std::string realPath(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), std::free);
    return real != nullptr ? real.get() : std::string();
}

DiskProblem severalWindows(std::vector<std::string>&& folders) {
    DiskProblem problem;
    problem.what = "There are " + std::to_string(folders.size()) + " Windows on this disk.";
    problem.why = "Each has its own registry, and what is right in one is wrong in the other.";
    problem.help = "Give the folder of the one that is meant:";
    problem.choices = std::move(folders);
    return problem;
}

}  // namespace

const FoundHive* WindowsDisk::hive(HiveRole role) const {
    const auto found = std::ranges::find(hives, role, &FoundHive::role);
    return found == hives.end() ? nullptr : &*found;
}

std::string DiskProblem::text() const {
    std::string text = what + "\n" + why + "\n" + help + "\n";
    for (const std::string& choice : choices) text += "  " + choice + "\n";
    return text;
}

std::variant<WindowsDisk, DiskProblem> findWindows(const std::string& path,
                                                   const std::map<char, std::string>& otherDrives) {
    const std::string real = realPath(path);
    std::vector<std::string> folders;
    if (!real.empty()) folders = windowsFolders(real);
    if (folders.empty()) return whyNoWindows(path);
    if (folders.size() > 1) return severalWindows(std::move(folders));

    const std::string& folder = folders.front();
    const std::string above = folder.substr(0, std::max<std::size_t>(folder.rfind('/'), 1));
    DiskSearch search{InsideFolder(above)};
    for (const auto& [letter, root] : otherDrives) {
        const auto upper = static_cast<char>(upperLetter(static_cast<char16_t>(letter)));
        search.otherDrives.emplace(upper, InsideFolder(root, upper));
    }
    search.disk.folder = folder;
    search.disk.nt = isNtFolder(search.drive, folder);
    std::optional<DiskProblem> problem = search.disk.nt ? describeNt(search) : describe9x(search);
    if (problem) return std::move(*problem);
    return std::move(search.disk);
}

}  // namespace bromvale::offline

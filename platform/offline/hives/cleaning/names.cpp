#include <algorithm>
#include <array>

#include "platform/offline/hives/cleaning/work.h"

namespace bromvale::offline {
namespace {}  // namespace

std::pair<std::string, std::string> splitPath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

std::vector<std::string> logsBeside(const HostFolder& folder, const std::string& hive) {
    std::vector<std::string> logs;
    for (const std::string& name : folder.names())
        if (logOfHive(name, hive)) logs.push_back(name);
    return logs;
}

bool openAndLock(HostFolders& folders, std::span<const std::string> paths, std::vector<Refusal>& refusals) {
    for (const std::string& path : paths) static_cast<void>(folders.at(path));
    const HostFolder* const busy = folders.lockAll();
    if (busy == nullptr) return true;
    refusals.push_back(
        refusal(RefusalKind::Busy, busy->path(), "Another cleaning or undo is at work in the folder"));
    return false;
}

}  // namespace bromvale::offline

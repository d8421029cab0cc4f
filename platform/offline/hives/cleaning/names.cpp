#include <algorithm>
#include <array>

#include "platform/offline/hives/cleaning/work.h"

namespace bromvale::offline {
namespace {

constexpr std::array<std::string_view, 3> kLogEnds{".LOG", ".LOG1", ".LOG2"};

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::pair<std::string, std::string> splitPath(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

bool sameHostName(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, lower, lower);
}

LogName logNameOf(std::string_view fileName) {
    if (fileName.ends_with('1')) return LogName::Log1;
    return fileName.ends_with('2') ? LogName::Log2 : LogName::Log;
}

std::vector<std::string> logsBeside(const HostFolder& folder, const std::string& hive) {
    std::vector<std::string> logs;
    for (const std::string& name : folder.names()) {
        const auto isLog = [&](std::string_view end) { return sameHostName(name, hive + std::string(end)); };
        if (std::ranges::any_of(kLogEnds, isLog)) logs.push_back(name);
    }
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

// Files of Windows on the host: names without case, and what a hive's file must fulfil to be looked at.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/log_names.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

std::vector<FoundLog> logsOf(const InsideFolder& drive, const std::string& folder, const std::string& hive) {
    std::vector<FoundLog> logs;
    for (const auto& [name, end] : kLogEnds) {
        const std::optional<std::string> entry =
            drive.entryOf(folder, storedFromUtf8(hive + std::string(end)));
        if (!entry) continue;
        InsidePath path = drive.follow(folder, *entry);
        if (path.isFile()) logs.push_back({name, std::move(path.path)});
    }
    return logs;
}

std::string whyNotThis(const FoundHive& hive, HiveContent content) {
    try {
        const OpenHive open = openHive(hive.path, hive.logs);
        if (!open.hive) return open.problem;
        return contentOf(*open.hive) == content ? std::string() : "it holds something else";
    } catch (const HiveDamage& damage) {
        return damage.what();
    }
}

FoundHive hiveAt(const InsideFolder& drive, const std::string& folder, const std::string& entry,
                 HiveRole role, HiveContent content) {
    FoundHive hive = fileAt(drive, folder, entry, role);
    if (!hive.usable()) return hive;
    hive.logs = logsOf(drive, folder, entry);
    hive.problem = whyNotThis(hive, content);
    return hive;
}

}  // namespace

std::vector<std::string> namesLike(const std::string& folder, std::string_view name) {
    std::vector<std::string> names;
    const std::string wanted = storedFromUtf8(name);
    for (std::string& entry : InsideFolder::entries(folder))
        if (sameStored(storedFromUtf8(entry), wanted)) names.push_back(std::move(entry));
    std::stable_partition(names.begin(), names.end(),
                          [&](const std::string& entry) { return entry == name; });
    return names;
}

std::string whyNoFile(const InsidePath& path) {
    switch (path.state) {
        case InsidePath::State::Outside: return "it is a link that leads out of the disk";
        case InsidePath::State::Circle: return "it is a link that leads in a circle";
        case InsidePath::State::Missing:
        case InsidePath::State::NoFolder: return "it is a link to something that is not there";
        case InsidePath::State::Found: break;
    }
    if (path.isFolder()) return "it is a folder";
    return path.isFile() ? std::string() : "it is no plain file";
}

FoundHive fileAt(const InsideFolder& drive, const std::string& folder, const std::string& entry,
                 HiveRole role) {
    FoundHive hive;
    hive.role = role;
    InsidePath path = drive.follow(folder, entry);
    hive.problem = whyNoFile(path);
    hive.path = path.found() ? std::move(path.path) : folder + "/" + entry;
    hive.isLink = hive.path != folder + "/" + entry;
    return hive;
}

std::optional<FoundHive> hiveNamed(const InsideFolder& drive, const std::string& folder,
                                   std::string_view name, HiveRole role, HiveContent content) {
    std::optional<FoundHive> first;
    for (const std::string& entry : namesLike(folder, name)) {
        FoundHive hive = hiveAt(drive, folder, entry, role, content);
        if (hive.usable()) return hive;
        if (!first) first = std::move(hive);
    }
    return first;
}

std::optional<FoundHive> hiveByContent(const InsideFolder& drive, const std::string& folder, HiveRole role,
                                       HiveContent content) {
    std::optional<FoundHive> found;
    for (const std::string& entry : InsideFolder::entries(folder)) {
        // Copies and logs have an end behind a dot, the machine's hives none.
        if (entry.find('.') != std::string::npos) continue;
        FoundHive hive = hiveAt(drive, folder, entry, role, content);
        if (!hive.usable()) continue;
        if (found) return std::nullopt;
        found = std::move(hive);
    }
    return found;
}

std::optional<std::string> startOf(const std::string& file, std::size_t size) {
    constexpr int kHow = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    int handle = ::open(file.c_str(), kHow | O_NOATIME);
    if (handle < 0) handle = ::open(file.c_str(), kHow);
    if (handle < 0) return std::nullopt;
    std::string bytes(size, '\0');
    const ssize_t count = ::read(handle, bytes.data(), size);
    ::close(handle);
    if (count < 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

}  // namespace bromvale::offline

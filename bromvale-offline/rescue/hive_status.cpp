#include "bromvale-offline/rescue/hive_status.h"

#include <algorithm>
#include <filesystem>

#include "platform/offline/hives/disk/open_hive.h"
#include "platform/offline/hives/log_names.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

std::string keysBefore(const std::string& path) {
    HiveImage image;
    if (image.open(path)) return "?";
    try {
        const Hive hive(image.bytes());
        return std::to_string(countKeys(hive, hive.base().root));
    } catch (const HiveDamage&) {
        return "?";
    }
}

std::string keysAfter(const Hive& hive) {
    try {
        return std::to_string(countKeys(hive, hive.base().root));
    } catch (const HiveDamage&) {
        return "?";
    }
}

std::string statusOf(const LoadedHive& loaded, const Hive& hive) {
    const Replay& replay = loaded.replay;
    if (replay.state == Replay::State::Clean) return "clean";
    std::string text;
    if (replay.state == Replay::State::NoUsableLog) {
        text =
            "dirty, and none of its logs can be used: what Windows wrote last is missing here. It is read as "
            "it is "
            "and can't be written";
    } else {
        text = "dirty, " + std::to_string(replay.entries) + (replay.entries == 1 ? " entry" : " entries") +
               " of " + replay.from + " (" + std::to_string(replay.firstSequence) + " to " +
               std::to_string(replay.lastSequence) + "), " + keysBefore(loaded.path) + " keys before and " +
               keysAfter(hive) + " after";
    }
    return replay.problem.empty() ? text : text + "; " + replay.problem;
}

FilePrint printOfFile(const std::string& path) {
    HiveImage image;
    return image.open(path) ? FilePrint{} : printOf(image.bytes().all());
}

}  // namespace

LoadedHive loadHive(const std::string& path, const std::vector<FoundLog>& logs, bool withPrints) {
    LoadedHive loaded;
    loaded.path = path;
    loaded.logs = logs;
    if (withPrints) {
        loaded.print = printOfFile(path);
        for (const FoundLog& log : logs) loaded.logPrints.push_back(printOfFile(log.path));
    }
    OpenHive open = openHive(path, logs);
    loaded.replay = open.replay;
    if (!open.hive) {
        loaded.status = open.problem;
        return loaded;
    }
    open.hive.reset();
    loaded.hive = std::make_shared<MountedHive>(std::move(open.image));
    loaded.status = statusOf(loaded, loaded.hive->hive());
    for (const std::string& problem : open.logProblems) loaded.status += "; " + problem;
    return loaded;
}

std::vector<FoundLog> foundLogsOf(const std::string& path) {
    std::vector<FoundLog> logs;
    const fs::path file(path);
    std::error_code error;
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const auto name = logOfHive(entry.path().filename().string(), file.filename().string());
        if (name) logs.push_back({*name, entry.path().string()});
    }
    std::ranges::sort(logs, {}, &FoundLog::path);
    return logs;
}

std::u16string pathIn(const Hive& hive, Cell cell) {
    std::u16string path;
    for (HiveKey key = hive.key(cell); key.cell != hive.base().root; key = hive.key(key.parent))
        path.insert(0, u"\\" + key.name());
    return path;
}

// Without recursion: a hive may be deep.
std::size_t countKeys(const Hive& hive, Cell from) {
    std::size_t count = 0;
    std::vector<Cell> pending{from};
    while (!pending.empty()) {
        const HiveKey key = hive.key(pending.back());
        pending.pop_back();
        ++count;
        for (const Cell subKey : hive.subKeys(key)) pending.push_back(subKey);
    }
    return count;
}

}  // namespace bromvale::offline

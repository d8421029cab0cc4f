#include "bromvale-offline/rescue/export.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "bromvale-offline/rescue/report.h"
#include "bromvale-offline/set_up.h"
#include "platform/offline/reg_files/reg_file.h"

namespace bromvale::offline {
namespace {

constexpr int kWrongUse = 2;

const PlannedRun& only(const std::vector<PlannedRun>& runs) {
    if (runs.size() > 1)
        throw RescueStop{kWrongUse, "an export is of one user and one view; choose with --user and --view"};
    return runs.front();
}

}  // namespace

int exportRegistry(const Sources& sources, const Options& options) {
    const std::vector<PlannedRun> runs = plannedRuns(sources, options);
    const MachinePlan& plan = only(runs).plan;
    setUpMachine(options);
    setUpDisk(plan);
    if (!loadRegistries(options)) return kWrongUse;
    const bool all = options.rescue.exportKey.empty();
    mountHives(plan, !all);
    const Registry& registry = machine().registry;
    std::vector<std::u16string> keys;
    if (!all) keys.push_back(options.rescue.exportKey);
    if (!all && !registry.exists(options.rescue.exportKey))
        throw RescueStop{kWrongUse, "there is no key " + utf8Of(options.rescue.exportKey)};
    std::size_t leftOut = 0;
    const std::string text = regFileOf(registry, keys, leftOut);
    writeNewFile(options.rescue.exportFile, text);
    for (const SourceHive& hive : sources.hives) {
        leftOut += hive.loaded.hive->unnameable();
        for (const std::string& damage : hive.loaded.hive->damages()) sayLine("damaged: " + damage);
    }
    if (leftOut > 0)
        sayLine(std::to_string(leftOut) +
                " keys or values have names that no registry file can hold; they are left out");
    return 0;
}

std::string completeCopyOf(const SourceHive& hive, const std::vector<Cell>& keys) {
    Registry registry(machine().otherHalf);
    const Hive& read = hive.loaded.hive->hive();
    mountHive(registry, hive.liveKey, hive.loaded.hive, read.base().root);
    std::vector<std::u16string> paths;
    for (const Cell key : keys) paths.push_back(hive.liveKey + pathIn(read, key));
    std::size_t leftOut = 0;
    return regFileOf(registry, paths, leftOut);
}

void writeNewFile(const std::string& path, const std::string& bytes) {
    const auto stop = [&path] {
        return RescueStop{kWrongUse, path + ": cannot be written: " + std::strerror(errno)};
    };
    const std::string unfinished = path + ".part";
    std::FILE* const file = std::fopen(unfinished.c_str(), "wb");
    if (file == nullptr) throw stop();
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    written = std::fclose(file) == 0 && written;
    if (written && std::rename(unfinished.c_str(), path.c_str()) == 0) return;
    const RescueStop problem = stop();
    std::remove(unfinished.c_str());
    throw RescueStop(problem);
}

}  // namespace bromvale::offline

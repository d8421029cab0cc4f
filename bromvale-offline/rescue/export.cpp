#include "bromvale-offline/rescue/export.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bromvale-offline/rescue/report.h"
#include "bromvale-offline/set_up.h"
#include "platform/offline/reg_files/reg_file.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

constexpr int kWrongUse = 2;

const PlannedRun& only(const std::vector<PlannedRun>& runs) {
    if (runs.size() > 1)
        throw RescueStop{kWrongUse, "an export is of one user and one view; choose with --user and --view"};
    return runs.front();
}

// Written into as they are: a new file in their place would take the device or pipe away from all others.
bool isDevice(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return (fs::exists(status) && !fs::is_regular_file(status)) || path.starts_with("/dev/") ||
           path.starts_with("/proc/");
}

// Behind links.
std::string placeOf(const std::string& path) {
    std::error_code error;
    if (!fs::is_symlink(path, error)) return path;
    const fs::path place = fs::weakly_canonical(path, error);
    return error ? path : place.string();
}

bool holdsRegistry(const std::string& path) {
    std::array<char, 4> start{};
    std::ifstream(path, std::ios::binary).read(start.data(), start.size());
    const std::string_view word(start.data(), start.size());
    return word == "regf" || word == "CREG";
}

bool writeInto(const std::string& path, const std::string& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
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
    if (options.rescue.exportFile == "-") {
        writeToStandardOutput(text);
    } else {
        writeNewFile(options.rescue.exportFile, text);
    }
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

void writeToStandardOutput(const std::string& bytes) {
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size();
    if (std::fflush(stdout) == 0 && written) return;
    throw RescueStop{kWrongUse, std::string("standard output cannot be written: ") + std::strerror(errno)};
}

void writeNewFile(const std::string& asked, const std::string& bytes) {
    const auto stop = [&asked] {
        return RescueStop{kWrongUse, asked + ": cannot be written: " + std::strerror(errno)};
    };
    if (isDevice(asked)) {
        if (!writeInto(asked, bytes)) throw stop();
        return;
    }
    const std::string path = placeOf(asked);
    if (holdsRegistry(path))
        throw RescueStop{
            kWrongUse, asked + ": there is a hive or a log of one, which is not replaced; give another name"};
    const std::string unfinished = path + ".part";
    if (writeInto(unfinished, bytes) && std::rename(unfinished.c_str(), path.c_str()) == 0) return;
    const RescueStop problem = stop();
    std::remove(unfinished.c_str());
    throw RescueStop(problem);
}

}  // namespace bromvale::offline

// Times a cleaning with all that belongs to it:
//     cleaning_timed HIVE KEYS     copies the hive into a folder beside it and takes so many keys out of the
//     copy:
//                                  refusals, copies, deletion, strict checks, both verifications,
//                                  replacement; milliseconds
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "platform/offline/hives/cleaning/cleaning.h"
#include "platform/offline/hives/cleaning/host_files.h"
#include "platform/offline/hives/hive.h"
#include "platform/offline/hives/image.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

std::size_t keysBelow(const Hive& hive, Cell cell) {
    std::size_t count = 1;
    for (const Cell subKey : hive.subKeys(hive.key(cell))) count += keysBelow(hive, subKey);
    return count;
}

// Of the classes, interfaces and type libraries whole ones in their order, as many as fit.
std::vector<AnnouncedKey> chosenKeys(const Hive& hive, std::size_t wanted) {
    std::vector<AnnouncedKey> chosen;
    for (const char16_t* kind : {u"Classes\\CLSID", u"Classes\\Interface", u"Classes\\TypeLib"}) {
        const Cell all = hive.find(hive.root(), kind);
        if (all == kNil) continue;
        for (const Cell cell : hive.subKeys(hive.key(all))) {
            const std::size_t count = keysBelow(hive, cell);
            if (count > wanted) continue;
            wanted -= count;
            chosen.push_back({cell, "key " + std::to_string(chosen.size())});
        }
    }
    return chosen;
}

int clean(const Cleaning& cleaning, const CleaningProgress& progress) {
    HostFiles files;
    const auto start = std::chrono::steady_clock::now();
    CleaningResult result;
    result.refusals = refusalsOf(files, cleaning);
    if (result.refusals.empty()) result = cleanHives(files, cleaning, progress);
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    for (const Refusal& refusal : result.refusals) std::fprintf(stderr, "%s\n", refusal.what.c_str());
    if (result.state != CleaningResult::State::Done) {
        std::fprintf(stderr, "not cleaned: %s\n", result.problem.c_str());
        return 1;
    }
    std::printf("ms=%.0f keys=%zu\n", time.count(), result.hives.front().removed);
    return 0;
}

int run(const std::string& file, std::size_t keys) {
    const fs::path folder = file + "-cleaned";
    fs::remove_all(folder);
    fs::create_directory(folder);
    const std::string copy = folder / "SOFTWARE";
    fs::copy_file(file, copy);
    HiveImage image;
    if (const auto problem = image.open(copy)) {
        std::fprintf(stderr, "%s: %s\n", copy.c_str(), problem->c_str());
        return 1;
    }
    HiveToClean going;
    going.path = copy;
    going.shown = printOf(image.bytes().all());
    going.keys = chosenKeys(Hive(image.bytes()), keys);
    Cleaning cleaning;
    cleaning.stamp = "2026-11-15_10-30-00";
    cleaning.hives.push_back(std::move(going));
    image = HiveImage();
    const auto start = std::chrono::steady_clock::now();
    const int status = clean(cleaning, [&](const std::string&, const std::string& step) {
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        std::fprintf(stderr, "%6.0f ms  %s\n", time.count(), step.c_str());
    });
    fs::remove_all(folder);
    return status;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    std::size_t keys = 0;
    if (count != 3 ||
        std::from_chars(arguments[2], arguments[2] + std::strlen(arguments[2]), keys).ec != std::errc())
        return 2;
    return bromvale::offline::run(arguments[1], keys);
}

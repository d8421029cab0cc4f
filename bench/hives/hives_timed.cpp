// Times what is done with whole hives, the best of five:
//     hives_timed HIVE     a log of all its pages replayed into it; compared with itself by both readers
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "platform/offline/hives/comparison.h"
#include "platform/offline/hives/image.h"
#include "platform/offline/hives/replay.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

constexpr std::size_t kPagesAnEntry = 64;

double bestSeconds(const std::function<void()>& work) {
    double best = 1e9;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

// In entries of some dozens of pages, each of which differs from what the hive has.
std::string logOfAllPages(const std::string& hive, std::uint32_t number) {
    std::string log = newLog(hive, number, {});
    const std::size_t size = kPagesAnEntry * kPageSize;
    for (std::size_t at = kBinsStart; at < hive.size(); at += size) {
        MadeEntry entry{number++, hive, hive};
        for (std::size_t i = at; i < std::min(at + size, hive.size()); i += kPageSize)
            entry.before[i] = static_cast<char>(~entry.before[i]);
        log += bytesOf(entry);
    }
    return log;
}

int run(const char* path) {
    HiveImage file;
    if (const auto problem = file.open(path)) {
        std::fprintf(stderr, "%s: %s\n", path, problem->c_str());
        return 1;
    }
    std::string bytes(file.bytes().all());
    const Hive hive{file.bytes()};
    bytes.resize(kBinsStart + hive.base().binsSize);
    setSequence(bytes, 6, 5);
    const std::string log = logOfAllPages(bytes, 5);
    const HiveLog given{LogName::Log1, HiveBytes(log)};
    Replay replay;
    const double replaying = bestSeconds([&] {
        HiveImage image{std::string_view(bytes)};
        replay = replayLogs(image, std::span(&given, 1));
    });
    const double megabytes = static_cast<double>(log.size()) / 1e6;
    std::printf("replay: %zu entries, %.1f MB in %.3f s with the copy of the hive: %.0f MB/s%s\n",
                replay.entries, megabytes, replaying, megabytes / replaying, replay.problem.c_str());
    std::optional<std::string> difference;
    const double own = bestSeconds([&] { difference = differenceOfTrees(hive, hive, {}); });
    std::printf("comparison by our own reader: %.3f s %s\n", own, difference.value_or("same").c_str());
    const double second = bestSeconds([&] { difference = differenceForSecondReader(path, hive, {}); });
    std::printf("comparison by the second reader: %.3f s %s\n", second, difference.value_or("same").c_str());
    return 0;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    return count == 2 ? bromvale::offline::run(arguments[1]) : 2;
}

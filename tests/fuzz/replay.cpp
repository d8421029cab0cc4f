// Runs saved inputs through a target: fuzz_targets TARGET FOLDER. Each input runs beside the seeds, and the
// number of both is told, so that an empty folder is seen.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/fuzz/target.h"

namespace {

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char** arguments) {
    const auto* const target = count == 3 ? bromvale::fuzz::targetNamed(arguments[1]) : nullptr;
    if (target == nullptr || !std::filesystem::is_directory(arguments[2])) {
        std::fprintf(stderr, "fuzz_targets TARGET FOLDER\n");
        return 2;
    }
    const auto seeds = target->seeds();
    for (const std::string& seed : seeds) target->run(seed);
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(arguments[2])) files.push_back(entry.path());
    std::ranges::sort(files);
    for (const auto& file : files) {
        std::fprintf(stderr, "%s\n", file.c_str());
        target->run(contentOf(file));
    }
    std::printf("%zu saved inputs, %zu seeds\n", files.size(), seeds.size());
    return files.empty() ? 1 : 0;
}

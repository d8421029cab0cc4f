// The entries of libFuzzer. Which target is run says the environment variable BROMVALE_FUZZ_TARGET, since the
// arguments are the library's own. With --seeds=FOLDER its seeds are written and nothing is run.
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/fuzz/target.h"

namespace {

constexpr std::string_view kSeeds = "--seeds=";
const bromvale::fuzz::Target* chosen = nullptr;

void writeSeeds(const std::string& folder) {
    int number = 0;
    for (const std::string& seed : chosen->seeds())
        std::ofstream(folder + "/seed" + std::to_string(++number), std::ios::binary) << seed;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    const char* const name = std::getenv("BROMVALE_FUZZ_TARGET");
    chosen = name != nullptr ? bromvale::fuzz::targetNamed(name) : nullptr;
    if (chosen == nullptr) {
        std::fprintf(stderr, "BROMVALE_FUZZ_TARGET names no target\n");
        std::exit(2);
    }
    if (*count == 2 && std::string_view((*arguments)[1]).starts_with(kSeeds)) {
        writeSeeds((*arguments)[1] + kSeeds.size());
        std::exit(0);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    chosen->run({reinterpret_cast<const char*>(data), size});
    return 0;
}

// Registry files: what is read and written again is the same, and a file with an error changes nothing.
#include "platform/offline/reg_files/reg_file.h"
#include "platform/offline/files/other_half.h"

#include <algorithm>

#include "tests/fuzz/reg_seeds.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::OtherHalf;
using offline::Registry;

std::string written(const Registry& registry) {
    std::size_t leftOut = 0;
    return regFileOf(registry, {}, leftOut);
}

void run(std::string_view input) {
    const OtherHalf half;
    Registry registry(half);
    if (const auto error = loadRegText(input, "file", registry)) {
        require(registry.keyCount() == 0 && registry.valueCount() == 0, "an error leaves the registry alone");
        require(error->line <= input.size() + 1, "the line is one of the file");
        require(!error->reason.empty(), "there is a reason");
        return;
    }
    const std::string first = written(registry);
    Registry again(half);
    require(!loadRegText(first, "", again), "what was written can be read");
    require(written(again) == first, "and is the same");
    require(again.valueCount() <= registry.valueCount(), "nothing comes into being");
}

const KnownTarget kTarget({"reg_file", run, regFileSeeds});

}  // namespace
}  // namespace bromvale::fuzz

#include "tests/fuzz/target.h"

#include <cstdio>
#include <cstdlib>

namespace bromvale::fuzz {
namespace {

std::vector<Target>& known() {
    static std::vector<Target> targets;
    return targets;
}

}  // namespace

KnownTarget::KnownTarget(const Target& target) {
    known().push_back(target);
}

const Target* targetNamed(std::string_view name) {
    for (const Target& target : known()) {
        if (name == target.name) return &target;
    }
    return nullptr;
}

void require(bool holds, const char* what, const char* file, int line) {
    if (holds) return;
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, what);
    std::abort();
}

}  // namespace bromvale::fuzz

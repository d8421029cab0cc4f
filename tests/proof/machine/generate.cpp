// What kind of machine a seed gives, and what its user does.
#include "tests/proof/machine/model.h"
#include "tests/proof/machine/random.h"

namespace bromvale::proof {
namespace {

System chooseSystem(Random& random) {
    System system;
    const int kind = random.below(100);
    if (kind < 12) {
        system.os = "Windows 98";
        system.family = Family::Nine;
    } else if (kind < 24) {
        system.os = "Windows NT4";
        system.family = Family::Nt4;
    } else if (kind < 36) {
        system.os = "Windows 2000";
    } else if (kind < 64) {
        system.sixtyFour = true;
        system.programSixtyFour = random.percent(50);
    }
    const int page = random.below(100);
    if (page >= 75) system.codePage = page < 87 ? 1250 : page < 93 ? 932 : 65001;
    // The 9x family has no UTF-8.
    if (system.family == Family::Nine && system.codePage == 65001) system.codePage = 1252;
    system.shortNames = system.family == Family::Nine || random.percent(50);
    return system;
}

Model generateOn(const System& system, Random& random, std::uint64_t seed) {
    Model model;
    model.seed = seed;
    model.system = system;
    model.plan.markedOnly = random.percent(25);
    model.plan.permanent = random.percent(40);
    generateFiles(model, random);
    generateRegistry(model, random);
    return model;
}

}  // namespace

Model generate(std::uint64_t seed) {
    Random random(seed);
    return generateOn(chooseSystem(random), random, seed);
}

Model generate(std::uint64_t seed, const System& system) {
    Random random(seed);
    return generateOn(system, random, seed);
}

}  // namespace bromvale::proof

#pragma once
// Random users, each in a process of its own: module-level state starts fresh, and a crash tells what was
// done.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/proof/user/sequence.h"

namespace bromvale::proof {

// What a user of the campaigns does beside what is nested in it.
inline constexpr int kActionsOfAUser = 50;

struct UserCounts {
    int runs = 0;
    int done = 0;
    int nested = 0;
    int passedOver = 0;
    int servings = 0;
    int keysGone = 0;
    int filesGone = 0;
};

struct UserRun {
    std::vector<std::string> actions;  // that were handed to the program
    std::vector<std::string> told;     // the same with those in the midst of others, in the order of doing
    std::string wrongs;                // empty where all is well
    UserCounts counts;
};

// Done in the process of the run, when the program is about to start: a test's own fault.
using Plant = std::function<void()>;

// A user whom the seed guides, for at most so many actions.
[[nodiscard]] UserRun letUserAct(std::uint64_t seed, int actions, const Plant& plant = {});
[[nodiscard]] UserRun replay(const Sequence& sequence, const Plant& plant = {});

// The sequence that still fails when no action of it can be left out, or the given one where it doesn't fail.
[[nodiscard]] Sequence shortened(const Sequence& sequence, int tries, const Plant& plant = {});

struct UserOutcome {
    UserCounts counts;
    double seconds = 0;
    std::string report;  // of failing seeds, with the shortest sequence of the first ones; empty without any

    [[nodiscard]] std::string figures() const;
};
[[nodiscard]] UserOutcome letUsersAct(std::uint64_t firstSeed, int count);

}  // namespace bromvale::proof

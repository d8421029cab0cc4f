#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/proof/trials/trial.h"

namespace bromvale::proof {

struct Failure {
    std::uint64_t seed;
    std::string problems;
};

struct Outcome {
    Counts counts;
    double seconds = 0;
    std::vector<Failure> failures;

    [[nodiscard]] std::string figures() const;
    // The machines of the first failures with what was wrong on them, and the seeds of all.
    [[nodiscard]] std::string report() const;
};

[[nodiscard]] Outcome tryMachines(std::uint64_t firstSeed, int count);

// Runs `action` in a process of its own, with a host folder of its own; what it returns. A process that
// crashes or hangs gives a text that says so, with what it wrote to its error output.
struct ChildResult {
    bool ended = false;  // by itself
    std::string text;
    std::string said{};  // all that it wrote on its way
};
[[nodiscard]] ChildResult inChild(const std::function<std::string(const std::string& hostFolder)>& action);

}  // namespace bromvale::proof

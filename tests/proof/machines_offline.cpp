// Generated machines, each in a process of its own: module-level state starts fresh, and a crash tells its
// seed.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/proof/trials/campaign.h"

namespace bromvale::proof {
namespace {

constexpr int kMachinesAShare = 125;

class Machines : public ::testing::TestWithParam<int> {};

TEST_P(Machines, KeepEveryPromise) {
    const Outcome outcome =
        tryMachines(static_cast<std::uint64_t>(GetParam()) * kMachinesAShare + 1, kMachinesAShare);
    EXPECT_TRUE(outcome.failures.empty()) << outcome.report();
    EXPECT_EQ(outcome.counts.machines, kMachinesAShare);
    // Machines on which nothing happens would prove nothing.
    EXPECT_GT(outcome.counts.rows, 2 * kMachinesAShare);
    EXPECT_GT(outcome.counts.keysGone, kMachinesAShare);
    std::printf("%s\n", outcome.figures().c_str());
}

// A sample for each run of the tests; ./test.sh long has 20,000.
INSTANTIATE_TEST_SUITE_P(Share, Machines, ::testing::Range(0, 2));

// tests/proof/run gives the first seed and the number of machines.
TEST(MachinesOfACommand, KeepEveryPromise) {
    const char* count = std::getenv("BROMVALE_MACHINES");
    const char* first = std::getenv("BROMVALE_FIRST_SEED");
    if (count == nullptr) GTEST_SKIP() << "run tests/proof/run";
    const Outcome outcome =
        tryMachines(first == nullptr ? 1 : std::strtoull(first, nullptr, 10), std::atoi(count));
    std::printf("%s\n", outcome.figures().c_str());
    EXPECT_TRUE(outcome.failures.empty()) << outcome.report();
}

}  // namespace
}  // namespace bromvale::proof

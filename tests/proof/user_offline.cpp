// Random users on generated machines: whatever they do, the promises hold.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/offline/machine.h"
#include "tests/proof/user/campaign.h"
#include "ui/frm_main.h"

namespace bromvale::proof {
namespace {

namespace fs = std::filesystem;

constexpr int kUsersAShare = 25;

class Users : public ::testing::TestWithParam<int> {};

TEST_P(Users, BreakNoPromise) {
    const UserOutcome outcome =
        letUsersAct(static_cast<std::uint64_t>(GetParam()) * kUsersAShare + 1, kUsersAShare);
    std::printf("%s\n", outcome.figures().c_str());
    EXPECT_TRUE(outcome.report.empty()) << outcome.report;
    // Users who do nothing would prove nothing.
    EXPECT_GT(outcome.counts.done, 10 * kUsersAShare);
    EXPECT_GT(outcome.counts.nested, kUsersAShare);
    EXPECT_GT(outcome.counts.keysGone, kUsersAShare / 2);
}

INSTANTIATE_TEST_SUITE_P(Share, Users, ::testing::Range(0, 8));

// scripts/random-user gives the first seed and the number of users.
TEST(UsersOfACommand, BreakNoPromise) {
    const char* count = std::getenv("BROMVALE_USERS");
    const char* first = std::getenv("BROMVALE_FIRST_SEED");
    if (count == nullptr) GTEST_SKIP() << "run scripts/random-user offline";
    const UserOutcome outcome =
        letUsersAct(first == nullptr ? 1 : std::strtoull(first, nullptr, 10), std::atoi(count));
    std::printf("%s\n", outcome.figures().c_str());
    EXPECT_TRUE(outcome.report.empty()) << outcome.report;
}

std::string contentOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Sequences at their shortest that showed a fault, of the program, of a version of it that was broken on
// purpose, or of the promises themselves.
TEST(UsersFound, SequencesBreakNoPromise) {
    int sequences = 0;
    for (const auto& file : fs::directory_iterator(BROMVALE_SOURCE_DIR "/tests/proof/user/found")) {
        const auto sequence = sequenceOf(contentOf(file.path()));
        ASSERT_TRUE(sequence) << file.path();
        EXPECT_EQ(replay(*sequence).wrongs, "") << file.path();
        ++sequences;
    }
    EXPECT_GT(sequences, 0);
}

// Behind the start of a program the next call of a server takes a key away, without a copy.
void plantFault() {
    static bool started = false;
    offline::machine().faults.observe([](std::string_view operation) {
        if (operation == "CreateProcessA") started = true;
        if (operation == "InternetOpenA" && started)
            offline::machine().registry.deleteKey("HKEY_LOCAL_MACHINE\\Software\\Classes\\TypeLib");
    });
}

// scripts/random-user replay gives a file with a sequence, or a seed: tells all that is done.
TEST(UsersOfACommand, ASequenceOnceMore) {
    const char* file = std::getenv("BROMVALE_SEQUENCE");
    const char* seed = std::getenv("BROMVALE_SEED");
    if (file == nullptr && seed == nullptr) GTEST_SKIP() << "run scripts/random-user replay";
    const auto sequence = file != nullptr ? sequenceOf(contentOf(file)) : std::optional<Sequence>();
    ASSERT_TRUE(sequence || file == nullptr) << file;
    const UserRun run =
        sequence ? replay(*sequence) : letUserAct(std::strtoull(seed, nullptr, 10), kActionsOfAUser);
    for (const std::string& action : run.told) std::printf("%s\n", action.c_str());
    EXPECT_EQ(run.wrongs, "");
}

TEST(UsersFound, APlantedFaultIsFoundAndShrunkToFewActions) {
    UserRun run;
    std::uint64_t seed = 0;
    while (run.wrongs.empty() && seed < 40) run = letUserAct(++seed, kActionsOfAUser, plantFault);
    ASSERT_NE(run.wrongs.find("gone without a copy: HKEY_LOCAL_MACHINE"), std::string::npos) << run.wrongs;
    EXPECT_GT(run.actions.size(), 5u);
    const Sequence shortest = shortened({seed, run.actions}, 400, plantFault);
    EXPECT_GE(shortest.actions.size(), 2u) << toText(shortest);
    EXPECT_LE(shortest.actions.size(), 3u) << toText(shortest);
    EXPECT_NE(replay(shortest, plantFault).wrongs, "");
    EXPECT_EQ(replay(shortest).wrongs, "") << "without the fault";
    EXPECT_EQ(toText(*sequenceOf("# a comment\n\n" + toText(shortest))), toText(shortest));
}

}  // namespace
}  // namespace bromvale::proof

#include "platform/offline/hives/child_process.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace bromvale::offline {
namespace {

using std::chrono::milliseconds;

ChildAnswer answered(const std::function<std::string()>& work) {
    return answerOfChild(work, milliseconds(60'000));
}

TEST(ChildProcess, GivesItsAnswerOfAnyLength) {
    const std::string text(1'000'000, 'x');
    const ChildAnswer answer = answered([&] { return std::string(text); });
    EXPECT_TRUE(text == answer.text);
    EXPECT_EQ("", answer.problem);
    EXPECT_EQ("", answered([] { return std::string(); }).text);
}

TEST(ChildProcess, ThatEndsOtherwiseIsNoAnswer) {
    EXPECT_EQ("was ended by signal 6", answered([]() -> std::string { std::abort(); }).problem);
    EXPECT_EQ("ended with status 7", answered([]() -> std::string { ::_exit(7); }).problem);
    EXPECT_EQ("ended with status 1",
              answered([]() -> std::string { throw std::runtime_error("no"); }).problem);
}

TEST(ChildProcess, SaysNothingToTheUserAndLeavesNoCore) {
    const auto work = [] {
        static_cast<void>(::write(STDERR_FILENO, "lost", 4));
        rlimit core{};
        ::getrlimit(RLIMIT_CORE, &core);
        return std::to_string(core.rlim_cur) + " " + std::to_string(core.rlim_max);
    };
    ::testing::internal::CaptureStderr();
    const ChildAnswer answer = answered(work);
    EXPECT_EQ("", ::testing::internal::GetCapturedStderr());
    EXPECT_EQ("0 0", answer.text);
}

// What the caller does about an abort is not done in the child.
TEST(ChildProcess, EndsAtAnAbortWhateverTheCallerDoesThen) {
    std::signal(SIGABRT, [](int) { ::_exit(9); });
    EXPECT_EQ("was ended by signal 6", answered([]() -> std::string { std::abort(); }).problem);
    std::signal(SIGABRT, SIG_DFL);
}

TEST(ChildProcess, ThatDoesNotEndIsEnded) {
    const auto endless = []() -> std::string {
        for (;;) ::pause();
    };
    EXPECT_EQ("did not end in time", answerOfChild(endless, milliseconds(20)).problem);
}

TEST(ChildProcess, ChangesNothingHere) {
    int number = 1;
    EXPECT_EQ("2", answered([&] { return std::to_string(++number); }).text);
    EXPECT_EQ(1, number);
}

}  // namespace
}  // namespace bromvale::offline

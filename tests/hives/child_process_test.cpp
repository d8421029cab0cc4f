#include "platform/offline/hives/child_process.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
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

// Once more than a pipe holds at a time, and from a child that takes its time.
TEST(ChildProcess, IsWaitedForWhileItSaysNothing) {
    const ChildAnswer answer = answered([] {
        ::usleep(30'000);
        return std::string("late");
    });
    EXPECT_EQ("late", answer.text);
    EXPECT_EQ("", answer.problem);
}

TEST(ChildProcess, LeavesNoPipeOpenAndNoChildBehind) {
    const int before = ::dup(STDIN_FILENO);
    ::close(before);
    EXPECT_EQ("x", answered([] { return std::string("x"); }).text);
    EXPECT_EQ("did not end in time", answerOfChild(
                                         []() -> std::string {
                                             for (;;) ::pause();
                                         },
                                         milliseconds(1))
                                         .problem);
    const int after = ::dup(STDIN_FILENO);
    ::close(after);
    EXPECT_EQ(before, after);
    EXPECT_EQ(-1, ::waitpid(-1, nullptr, WNOHANG));
}

TEST(ChildProcess, ThatSomebodyElseHasWaitedForSaysSo) {
    std::signal(SIGCHLD, SIG_IGN);
    const ChildAnswer answer = answered([] { return std::string("text"); });
    std::signal(SIGCHLD, SIG_DFL);
    EXPECT_EQ("text", answer.text);
    EXPECT_EQ("can't be waited for: No child processes", answer.problem);
}

TEST(ChildProcess, ThatCannotBeStartedSaysWhy) {
    rlimit files{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &files));
    const rlimit few{3, files.rlim_max};
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &few));
    const ChildAnswer answer = answered([] { return std::string("text"); });
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &files));
    EXPECT_EQ("", answer.text);
    EXPECT_EQ("can't be started: Too many open files", answer.problem);
}

// Who may start no process more, and isn't root.
TEST(ChildProcess, ThatCannotBeForkedSaysWhyAndLeavesNoPipeOpen) {
    const std::string told = answered([] {
                                 const rlimit none{};
                                 if (::geteuid() == 0) static_cast<void>(::setresuid(65534, 65534, 65534));
                                 ::setrlimit(RLIMIT_NPROC, &none);
                                 const int before = ::dup(STDIN_FILENO);
                                 ::close(before);
                                 const ChildAnswer answer = answered([] { return std::string("text"); });
                                 const int after = ::dup(STDIN_FILENO);
                                 return answer.problem + (before == after ? "" : ", and leaves files open");
                             }).text;
    EXPECT_EQ("can't be started: Resource temporarily unavailable", told);
}

// Where nothing can be opened its standard error stays what it was, and the answer comes.
TEST(ChildProcess, AnswersWithoutFilesToSpare) {
    rlimit files{};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_NOFILE, &files));
    const int next = ::dup(STDIN_FILENO);
    ::close(next);
    const rlimit few{static_cast<rlim_t>(next) + 2, files.rlim_max};
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &few));
    const ChildAnswer answer = answered([] { return std::string("text"); });
    ASSERT_EQ(0, ::setrlimit(RLIMIT_NOFILE, &files));
    EXPECT_EQ("text", answer.text);
    EXPECT_EQ("", answer.problem);
}

}  // namespace
}  // namespace bromvale::offline

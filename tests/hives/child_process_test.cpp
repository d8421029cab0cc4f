#include "platform/offline/hives/child_process.h"

#include <gtest/gtest.h>
#include <unistd.h>

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
    const ChildAnswer answer = answered([&] { return text; });
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

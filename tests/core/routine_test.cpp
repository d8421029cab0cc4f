#include "core/routine.h"

#include <gtest/gtest.h>

#include <vector>

namespace bromvale {
namespace {

TEST(Attempt, NextGoesOnBehindTheFailingStatement) {
    std::vector<int> numbers;
    const auto onFailure = [&](const Failure& failure) {
        numbers.push_back(failure.number);
        return Ending::Next;
    };
    EXPECT_TRUE(attempt(onFailure, [] { raise(53); }));
    EXPECT_TRUE(attempt(onFailure, [] {}));
    EXPECT_EQ(numbers, std::vector<int>{53});
}

TEST(Attempt, RetryRunsTheFailingStatementOnceMore) {
    int runs = 0;
    const auto onFailure = [](const Failure&) { return Ending::Retry; };
    EXPECT_TRUE(attempt(onFailure, [&] {
        if (++runs < 3) raise(53);
    }));
    EXPECT_EQ(runs, 3);
}

TEST(Attempt, LeaveIsToldToTheRoutine) {
    EXPECT_FALSE(attempt([](const Failure&) { return Ending::Leave; }, [] { raise(9); }));
}

TEST(Attempt, TheFailureIsTheLastOneOnlyWhileItsHandlerRuns) {
    Failure seen;
    const auto onFailure = [&](const Failure&) {
        seen = lastFailure();
        return Ending::Next;
    };
    attempt(onFailure, [] { raise(13); });
    EXPECT_EQ(seen.number, 13);
    EXPECT_EQ(seen.description, "Typen unverträglich");
    EXPECT_EQ(lastFailure().number, 0);
    EXPECT_EQ(lastFailure().description, "");
}

TEST(Attempt, AFailureOfTheHandlerGoesToTheCaller) {
    const auto onFailure = [](const Failure&) -> Ending { raise(75); };
    int number = 0;
    try {
        attempt(onFailure, [] { raise(53); });
    } catch (const Failure& failure) {
        number = failure.number;
    }
    EXPECT_EQ(number, 75);
}

TEST(Attempt, MemoryThatRunsOutIsFailure7) {
    Failure seen;
    const auto onFailure = [&](const Failure& failure) {
        seen = failure;
        return Ending::Next;
    };
    attempt(onFailure, [] { throw std::bad_alloc(); });
    EXPECT_EQ(seen.number, 7);
    EXPECT_EQ(seen.description, "Nicht genügend Speicher");
}

}  // namespace
}  // namespace bromvale

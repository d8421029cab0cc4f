// Shrinking a failing sequence of actions.
#include "tests/proof/user/shrink.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace bromvale::proof {
namespace {

constexpr int kManyTries = 100000;

Actions numbered(int count) {
    Actions actions;
    for (int i = 1; i <= count; ++i) actions.push_back(std::to_string(i));
    return actions;
}

// Fails while all of these are done in this order.
auto needs(Actions parts) {
    return [parts = std::move(parts)](const Actions& actions) {
        auto next = parts.begin();
        for (const std::string& action : actions) {
            if (next != parts.end() && action == *next) ++next;
        }
        return next == parts.end();
    };
}

TEST(Shrink, LeavesWhatTheFaultNeedsInItsOrder) {
    EXPECT_EQ(shrink(numbered(100), needs({"3", "47", "48", "100"}), kManyTries),
              (Actions{"3", "47", "48", "100"}));
}

TEST(Shrink, OneActionOfManyIsFoundWithinAFewTries) {
    int tries = 0;
    const auto fails = [&](const Actions& actions) {
        ++tries;
        return needs({"65"})(actions);
    };
    EXPECT_EQ(shrink(numbered(128), fails, kManyTries), Actions{"65"});
    EXPECT_LT(tries, 40);
}

TEST(Shrink, AFaultWithoutAnyActionLeavesNone) {
    EXPECT_EQ(shrink(
                  numbered(7), [](const Actions&) { return true; }, kManyTries),
              Actions{});
    EXPECT_EQ(shrink(
                  {}, [](const Actions&) { return true; }, kManyTries),
              Actions{});
}

TEST(Shrink, WhatOnlyFailsAsAWholeStaysWhole) {
    const Actions all = numbered(9);
    EXPECT_EQ(shrink(all, needs(all), kManyTries), all);
}

// Actions that go together only: two that do and undo something.
TEST(Shrink, NoSingleActionCanBeTakenOutOfTheResult) {
    const auto fails = [](const Actions& actions) {
        std::map<std::string, long> times;
        for (const std::string& action : actions) ++times[action];
        return times["x"] == times["y"] && times["z"] == 1;
    };
    const Actions actions{"x", "a", "z", "b", "y", "c", "d", "e"};
    const Actions rest = shrink(actions, fails, kManyTries);
    ASSERT_TRUE(fails(rest));
    for (std::size_t i = 0; i < rest.size(); ++i) {
        Actions fewer = rest;
        fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_FALSE(fails(fewer));
    }
}

TEST(Shrink, EndsWhenItsTriesAreSpentWithWhatStillFails) {
    int tries = 0;
    const auto fails = [&](const Actions& actions) {
        ++tries;
        return needs({"9", "90"})(actions);
    };
    const Actions rest = shrink(numbered(100), fails, 5);
    EXPECT_EQ(tries, 5);
    EXPECT_TRUE(fails(rest));
    EXPECT_LT(rest.size(), 100u);
}

}  // namespace
}  // namespace bromvale::proof

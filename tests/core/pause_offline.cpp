#include "core/time.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Pausing = testing::TestMachine;
using offline::machine;

struct StillWaiting {};

TEST_F(Pausing, WaitsForItsTimeByTheClock) {
    machine().clock.set(2002, 11, 15, 7, 10, 20);
    const auto before = machine().clock.now();
    Pause(1);
    EXPECT_EQ(machine().clock.now() - before, 1000);
    Pause(0.1);
    EXPECT_EQ(machine().clock.now() - before, 1100);
    Pause(0);
    EXPECT_EQ(machine().clock.now() - before, 1100);
}

TEST_F(Pausing, ServesEventsMeanwhile) {
    int served = 0;
    atPump(1, [&] { ++served; });
    atPump(5, [&] { ++served; });
    Pause(1);
    EXPECT_EQ(served, 2);
}

TEST_F(Pausing, NeverFinishesWithATargetBeyondTheEndOfTheDay) {
    machine().clock.set(2002, 11, 15, 23, 59, 59, 500);
    atPump(100000, [] { throw StillWaiting(); });
    EXPECT_THROW(Pause(1), StillWaiting);
    EXPECT_GT(machine().clock.elapsed(), 15 * 60 * 1000);
}

TEST_F(Pausing, FinishesBeforeMidnight) {
    machine().clock.set(2002, 11, 15, 23, 59, 58, 0);
    Pause(1);
    EXPECT_EQ(secondsOfDay(), 23 * 3600 + 59 * 60 + 59);
}

TEST_F(Pausing, SecondsOfDayHaveFractions) {
    machine().clock.set(2002, 11, 15, 1, 2, 3, 250);
    EXPECT_EQ(secondsOfDay(), 3723.25);
}

TEST_F(Pausing, DatesAndTimesByPicture) {
    machine().clock.set(2002, 3, 5, 7, 4, 9);
    EXPECT_EQ(dateText(), "05.03.2002");
    EXPECT_EQ(timeText(), "07:04:09");
    EXPECT_EQ(dateText("ddMMyyyy"), "05032002");
    EXPECT_EQ(timeText("HH':'mm':'ss"), "07:04:09");
    EXPECT_EQ(timeText("HHmmss"), "070409");
}

}  // namespace
}  // namespace bromvale

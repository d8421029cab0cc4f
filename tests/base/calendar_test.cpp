#include "base/calendar.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "core/time.h"

namespace bromvale {
namespace {

int failureOf(std::string_view text) {
    try {
        static_cast<void>(dayNumber(text));
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

TEST(Calendar, DaysAreCountedByTheMidnightsBetween) {
    EXPECT_EQ(daysBetween("15.11.2026", "15.11.2026"), 0);
    EXPECT_EQ(daysBetween("14.11.2026", "15.11.2026"), 1);
    EXPECT_EQ(daysBetween("15.11.2026", "14.11.2026"), -1);
    EXPECT_EQ(daysBetween("31.12.2026", "1.1.2027"), 1);
    EXPECT_EQ(daysBetween("15.11.2025", "15.11.2026"), 365);
}

TEST(Calendar, LeapDaysCount) {
    EXPECT_EQ(daysBetween("28.2.2024", "1.3.2024"), 2);
    EXPECT_EQ(daysBetween("28.2.2023", "1.3.2023"), 1);
    EXPECT_EQ(daysBetween("28.2.1900", "1.3.1900"), 1);
    EXPECT_EQ(daysBetween("28.2.2000", "1.3.2000"), 2);
    EXPECT_EQ(daysBetween("1.1.1601", "1.1.2001"), 146097);
}

TEST(Calendar, LeadingZerosMayStandOrNot) {
    EXPECT_EQ(dayNumber("05.03.2026"), dayNumber("5.3.2026"));
}

TEST(Calendar, ATextThatIsNoDateFails) {
    for (const char* text : {"",
                             "0.0.0",
                             "1.1",
                             "1.1.",
                             "1..2026",
                             ".1.2026",
                             "1.13.2026",
                             "32.1.2026",
                             "29.2.2023",
                             "30.2.2024",
                             "31.4.2026",
                             "0.1.2026",
                             "1.0.2026",
                             "1.1.1600",
                             "1.1.30828",
                             "a.b.c",
                             "1.1.2026x",
                             " 1.1.2026",
                             "1.1.2026 12:00",
                             "-1.1.2026",
                             "1.1.99999999999"}) {
        EXPECT_EQ(failureOf(text), 13) << text;
    }
}

TEST(Calendar, DateAndTimeStandInTheUsersOwnForms) {
    EXPECT_EQ(dateTimeText({2026, 11, 0, 15, 7, 2, 9, 0}), "15.11.2026 07:02:09");
    EXPECT_EQ(dateTimeText({2026, 11, 0, 15, 0, 0, 0, 0}), "15.11.2026 00:00:00");
}

}  // namespace
}  // namespace bromvale

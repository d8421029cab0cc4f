#include "scanner/scan_report.h"

#include <cmath>
#include <cstdint>

#include "base/failure.h"
#include "base/number_parser.h"
#include "base/numbers.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using ScanReportTest = ScanTest;

TEST_F(ScanReportTest, TheRatingsHaveTheirBoundsAndAGapAtExactly5) {
    EXPECT_EQ(scanRating(0), "Hervorragend, keine Fehler gefunden.");
    EXPECT_EQ(scanRating(0.01), "Nur wenige Fehler gefunden.");
    EXPECT_EQ(scanRating(0.99), "Nur wenige Fehler gefunden.");
    EXPECT_EQ(scanRating(1), "Einige Fehler gefunden.");
    EXPECT_EQ(scanRating(2.99), "Einige Fehler gefunden.");
    EXPECT_EQ(scanRating(3), "Viele Fehler gefunden.");
    EXPECT_EQ(scanRating(4.99), "Viele Fehler gefunden.");
    EXPECT_EQ(scanRating(5), "");
    EXPECT_EQ(scanRating(5.01), "Sehr viele Fehler gefunden.");
    EXPECT_EQ(scanRating(100), "Sehr viele Fehler gefunden.");
}

TEST_F(ScanReportTest, TheShareIsRoundedToTwoDecimalsHalfToEven) {
    EXPECT_EQ(faultPercent(73, 4120), 1.77);
    EXPECT_EQ(faultPercent(99, 10000), 0.99);
    EXPECT_EQ(faultPercent(501, 10000), 5.01);
    EXPECT_EQ(faultPercent(5, 100), 5);
    EXPECT_EQ(faultPercent(1, 30000), 0);
    EXPECT_EQ(faultPercent(1, 800), 0.12);  // 0.125
    EXPECT_EQ(faultPercent(3, 800), 0.38);  // 0.375
}

// What `exact_shares` beside this file prints.
constexpr std::uint64_t kExactPercents = 0xfd52faa119080740;
constexpr std::uint64_t kExactHundredths = 0x63a54956c9ab64c9;

TEST_F(ScanReportTest, AllSharesUpTo3000EntriesAreThoseOfDoubles) {
    std::uint64_t percents = 0;
    std::uint64_t hundredths = 0;
    int odd = 0;
    for (int total = 1; total <= 3000; ++total) {
        for (int part = 0; part <= total; ++part) {
            const double share = faultPercent(part, total);
            const std::int64_t hundredth = std::llround(share * 100);
            if (share != static_cast<double>(hundredth) / 100) ++odd;
            percents = percents * 31 + static_cast<std::uint64_t>(donePercent(part, total));
            hundredths = hundredths * 31 + static_cast<std::uint64_t>(hundredth);
        }
    }
    EXPECT_EQ(percents, kExactPercents);
    EXPECT_EQ(hundredths, kExactHundredths);
    EXPECT_EQ(odd, 0);
}

// 23 / 160 * 100 lies just below the middle of two hundredths as a double, and in the middle with more
// digits.
TEST_F(ScanReportTest, TwentyThreeFaultsOf160AreRoundedDown) {
    EXPECT_EQ(scanShare(23, 160, faultPercent(23, 160)),
              std::string(" (23 von 160 Einträgen = 14") + decimalSign() + "37%)");
}

TEST_F(ScanReportTest, EachHundredthIsWrittenWithoutNeedlessDigits) {
    for (int hundredth = 0; hundredth <= 10000; ++hundredth) {
        std::string text = std::to_string(hundredth / 100);
        if (hundredth % 100 != 0) text += decimalSign() + std::to_string(hundredth / 10 % 10);
        if (hundredth % 10 != 0) text += std::to_string(hundredth % 10);
        ASSERT_EQ(numberText(static_cast<double>(hundredth) / 100), text);
    }
}

TEST_F(ScanReportTest, NoEntriesAtAllHaveNoShare) {
    try {
        static_cast<void>(faultPercent(0, 0));
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 6);
    }
}

TEST_F(ScanReportTest, WholeSharesHaveNoDecimals) {
    EXPECT_EQ(scanShare(5, 100, 5), " (5 von 100 Einträgen = 5%)");
    EXPECT_EQ(scanShare(0, 9, 0), " (0 von 9 Einträgen = 0%)");
}

}  // namespace
}  // namespace bromvale::testing

#include "scanner/scan_report.h"

#include "core/runtime.h"
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

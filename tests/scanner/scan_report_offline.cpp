// Reports with decimals: the sign is that of the locale, which the offline machine sets.
#include "platform/offline/machine.h"
#include "scanner/scan_report.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using ScanReportOfflineTest = ScanTest;

TEST_F(ScanReportOfflineTest, AGermanSystemWritesADecimalComma) {
    EXPECT_EQ(std::string(scanRating(1.77)) + scanShare(73, 4120, 1.77),
              "Einige Fehler gefunden. (73 von 4120 Einträgen = 1,77%)");
    offline::machine().locale = offline::englishLocale();
    EXPECT_EQ(scanShare(73, 4120, 1.77), " (73 von 4120 Einträgen = 1.77%)");
}

TEST_F(ScanReportOfflineTest, SeventyThreeFaultsIn4120EntriesReadAsAWhole) {
    fillRegistry(4120, 73);
    scan();
    EXPECT_EQ(report(), "Einige Fehler gefunden. (73 von 4120 Einträgen = 1,77%)");
    EXPECT_EQ(caption(), "&Entfernen");
}

TEST_F(ScanReportOfflineTest, FourOf404EntriesAreFewAndFourOf400Some) {
    fillRegistry(404, 4);
    scan();
    EXPECT_EQ(report(), "Nur wenige Fehler gefunden. (4 von 404 Einträgen = 0,99%)");
}

// A share that rounds to nothing reads as no fault at all, beside its count and with the offer to remove.
TEST_F(ScanReportOfflineTest, OneFaultIn30000EntriesIsExcellentAndCanBeRemoved) {
    fillRegistry(30000, 1);
    scan();
    EXPECT_EQ(report(), "Hervorragend, keine Fehler gefunden. (1 von 30000 Einträgen = 0%)");
    EXPECT_EQ(caption(), "&Entfernen");
    EXPECT_TRUE(form().scan.chbRegKeysShow.enabled());
}

}  // namespace
}  // namespace bromvale::testing

// The reader on hives of real machines. What it gives is compared with other readers elsewhere; here are the
// counts.
#include "platform/offline/hives/hive.h"

#include "tests/hives/hive_counts.h"
#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

struct RealCounts {
    const char* name;
    Counts counts;
};

class RealRegistryHive : public HiveFilesTest, public ::testing::WithParamInterface<RealCounts> {};

TEST_P(RealRegistryHive, HasAllKeysAndValues) {
    const std::string bytes = realHive(GetParam().name);
    const Hive hive{HiveBytes(bytes)};
    EXPECT_EQ(GetParam().counts.keys, countsOf(hive).keys);
    EXPECT_EQ(GetParam().counts.values, countsOf(hive).values);
}

INSTANTIATE_TEST_SUITE_P(
    Of, RealRegistryHive,
    ::testing::Values(RealCounts{"hivex-minimal", {1, 0}}, RealCounts{"hivex-rlenvalue_test_hive", {2, 6}},
                      RealCounts{"hivex-special", {4, 3}}, RealCounts{"made-li-SOFTWARE", {13, 5}},
                      RealCounts{"made-size0", {2, 6}}, RealCounts{"win7-SYSTEM", {30756, 73456}},
                      RealCounts{"win7-x86-SOFTWARE", {117488, 193870}},
                      RealCounts{"win81-UsrClass.dat", {7505, 19987}},
                      RealCounts{"winxp-NTUSER.DAT", {1127, 5602}},
                      RealCounts{"win10-dirty-NTUSER.DAT", {2590, 4119}},
                      RealCounts{"made-old-NTUSER.DAT", {1808, 4090}}));

}  // namespace
}  // namespace bromvale::offline

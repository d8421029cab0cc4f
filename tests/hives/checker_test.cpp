// The strict checker on whole hives: nothing to say of what Windows wrote, or the tests' writer.
#include "platform/offline/hives/checker.h"

#include "tests/hives/hive_faults.h"
#include "tests/hives/hive_files.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/made_hive.h"

namespace bromvale::offline {
namespace {

struct RealCheck {
    const char* name;
    std::size_t keys;
    std::size_t values;
    const char* faults = "";
};

class RealRegistryCheck : public HiveFilesTest, public ::testing::WithParamInterface<RealCheck> {};

TEST_P(RealRegistryCheck, FindsWhatIsThere) {
    const std::string bytes = realHive(GetParam().name);
    const HiveCheck check = checkHive(HiveBytes(bytes));
    EXPECT_EQ(GetParam().faults, faultsOf(bytes));
    EXPECT_EQ(GetParam().keys, check.keys);
    EXPECT_EQ(GetParam().values, check.values);
}

INSTANTIATE_TEST_SUITE_P(
    Of, RealRegistryCheck,
    ::testing::Values(RealCheck{"hivex-minimal", 1, 0}, RealCheck{"hivex-rlenvalue_test_hive", 2, 6},
                      RealCheck{"hivex-special", 4, 3}, RealCheck{"made-li-SOFTWARE", 13, 5},
                      RealCheck{"win7-SYSTEM", 30756, 73456}, RealCheck{"win7-x86-SOFTWARE", 117488, 193870},
                      RealCheck{"win81-UsrClass.dat", 7505, 19987}, RealCheck{"winxp-NTUSER.DAT", 1127, 5602},
                      // The data that the value had is lost.
                      RealCheck{"made-size0", 2, 6, "a cell is in use and nothing refers to it\n"},
                      RealCheck{"made-abort", 4, 3, "a value's data lies where no cell begins\n"},
                      RealCheck{"made-checksum", 1, 0, "the base block's checksum is wrong\n"},
                      RealCheck{"made-dirty-nolog", 1, 0,
                                "the sequence numbers differ: a change was not finished\n"}));

TEST(HiveChecker, FindsMadeHivesWhole) {
    for (std::uint32_t seed = 0; seed < hiveRounds(200, 1000); ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_EQ("", faultsOf(bytesOf(randomHive(seed))));
    }
}

}  // namespace
}  // namespace bromvale::offline

// What only the offline machine can stage: keys that refuse, depth, counted handles.
#include "base/failure.h"
#include "platform/offline/machine.h"
#include "tests/scanner/scan_fixture.h"

namespace bromvale::testing {
namespace {

using SearchOfflineTest = ScanTest;

TEST_F(SearchOfflineTest, AKeyThatCannotBeOpenedGivesOneLineAndNoReport) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "a", "1");
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\B", "b", "2");
    ASSERT_TRUE(offline::machine().registry.deny("HKEY_LOCAL_MACHINE\\Software\\Probe\\A"));
    EXPECT_EQ(collect("Software\\Probe"), (Texts{
                                              "-2147483646[Software\\Probe]@=",
                                              "-2147483646[Software\\Probe\\A]@=",
                                              "-2147483646[Software\\Probe\\B]b=2",
                                          }));
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(SearchOfflineTest, AQueryThatFailsLeavesItsHandleOpen) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "a", "1");
    const std::size_t before = offline::machine().registry.openHandles();
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Probe", "a"), "1");
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Fehlt", "a"), "");
    EXPECT_EQ(offline::machine().registry.openHandles(), before);
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Probe", "fehlt"), "");
    EXPECT_EQ(offline::machine().registry.openHandles(), before + 1);
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe", "lang", std::string(299, 'x'));
    EXPECT_EQ(QueryStringValue(kHiveLocalMachine, "Software\\Probe", "lang"), "");
    EXPECT_EQ(offline::machine().registry.openHandles(), before + 2);
}

// The query for the name "" of a key without values fails, and a failed query doesn't close.
TEST_F(SearchOfflineTest, AKeyWithoutValuesLeavesOneHandleOpenAndAnyOtherNone) {
    for (int i = 0; i < 20; ++i)
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\" + std::to_string(i), "w", "x");
    const std::size_t before = offline::machine().registry.openHandles();
    EXPECT_EQ(collect("Software\\Probe\\7").size(), 1u);
    EXPECT_EQ(offline::machine().registry.openHandles(), before);
    EXPECT_EQ(collect("Software\\Probe").size(), 21u);
    EXPECT_EQ(offline::machine().registry.openHandles(), before + 1);
}

// Two keys; the fourth pump is that of A's second value: before it came one for the root's, A, and A's first.
class FailureInTheMidstTest : public ScanTest {
  protected:
    FailureInTheMidstTest() {
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "a", "1");
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A", "b", "2");
        setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\B", "c", "3");
    }
    Texts collectWithFailureAt(int pump) {
        atPump(pump, [] { raise(13); });
        return collect("Software\\Probe");
    }
};

TEST_F(FailureInTheMidstTest, BeforeTheFirstLineOfAKeyItCostsWhatWasCollectedSoFar) {
    EXPECT_EQ(collectWithFailureAt(3), (Texts{
                                           "-2147483646[Software\\Probe\\A]a=1",
                                           "-2147483646[Software\\Probe\\A]b=2",
                                           "-2147483646[Software\\Probe\\B]c=3",
                                       }));
}

TEST_F(FailureInTheMidstTest, BehindTheFirstLineItCostsTheRestOfTheKey) {
    EXPECT_EQ(collectWithFailureAt(4), (Texts{
                                           "-2147483646[Software\\Probe]@=",
                                           "-2147483646[Software\\Probe\\A]a=1",
                                           "-2147483646[Software\\Probe\\B]c=3",
                                       }));
}

TEST_F(FailureInTheMidstTest, TheSubKeysOfThatKeyAreNotVisited) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A\\unten", "d", "4");
    EXPECT_EQ(collectWithFailureAt(4), (Texts{
                                           "-2147483646[Software\\Probe]@=",
                                           "-2147483646[Software\\Probe\\A]a=1",
                                           "-2147483646[Software\\Probe\\B]c=3",
                                       }));
}

TEST_F(SearchOfflineTest, AFullBufferWithoutNulIsTakenWhole) {
    setRaw(HKEY_LOCAL_MACHINE, "Software\\Probe", "w", REG_SZ, std::string(256, 'z'));
    EXPECT_EQ(collect("Software\\Probe"), (Texts{"-2147483646[Software\\Probe]w=" + std::string(256, 'z')}));
}

// The NT family opens no sub key text of more than 260 characters: there the walk ends at the first one.
TEST_F(SearchOfflineTest, FiveThousandNestedLevelsAreAllVisited) {
    std::string path = "HKEY_LOCAL_MACHINE\\Software\\Probe";
    for (int level = 0; level < 5000; ++level) path += "\\k";
    ASSERT_TRUE(offline::machine().registry.createKey(path));
    EXPECT_EQ(collect("Software\\Probe").size(), 125u);
    offline::machine().setOs(*offline::osByName("Windows ME"));
    const Texts lines = collect("Software\\Probe");
    ASSERT_EQ(lines.size(), 5001u);
    EXPECT_EQ(lines[2], "-2147483646[Software\\Probe\\k\\k]@=");
    EXPECT_EQ(lines.back().size(), std::string("-2147483646[Software\\Probe]@=").size() + 10000);
}

// A 16-bit count would end at 32767.
TEST_F(SearchOfflineTest, FortyThousandSubKeysAreAllVisited) {
    for (int i = 0; i < 40000; ++i)
        ASSERT_TRUE(offline::machine().registry.createKey("HKEY_LOCAL_MACHINE\\Software\\Probe\\" +
                                                          std::to_string(i)));
    EXPECT_EQ(collect("Software\\Probe").size(), 40001u);
}

}  // namespace
}  // namespace bromvale::testing

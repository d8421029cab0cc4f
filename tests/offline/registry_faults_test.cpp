// Fault points, shown on the registry functions.
#include <vector>

#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

class FaultTest : public RegistryTest {
  protected:
    FaultTest() { registry().setText("HKEY_CURRENT_USER\\A", "v", "x"); }
    static LONG open() {
        HKEY key = reinterpret_cast<HKEY>(0x7777);
        const LONG result = RegOpenKeyExA(HKEY_CURRENT_USER, "A", 0, KEY_READ, &key);
        EXPECT_EQ(result == ERROR_SUCCESS, key != nullptr);
        RegCloseKey(key);
        return result;
    }
};

TEST_F(FaultTest, TheNthCallFailsOnceAndTheNextWorks) {
    faults().fail("RegOpenKeyExA", 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(ERROR_ACCESS_DENIED, open());
    EXPECT_EQ(ERROR_SUCCESS, open());
    faults().fail("RegOpenKeyExA", 1, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, open());
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(5u, faults().calls("RegOpenKeyExA"));
    EXPECT_EQ(5u, faults().calls("RegCloseKey"));
    EXPECT_EQ(10u, faults().allCalls());
    EXPECT_EQ(0u, faults().calls("RegDeleteKeyA"));
}

TEST_F(FaultTest, AllCallsFailFromTheNthOn) {
    faults().failFrom("RegOpenKeyExA", 2, ERROR_KEY_DELETED);
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(ERROR_KEY_DELETED, open());
    EXPECT_EQ(ERROR_KEY_DELETED, open());
    faults().clear();
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(0u, faults().calls("RegOpenKeyExA"));
}

TEST_F(FaultTest, AFailingCallDoesNothing) {
    faults().fail("RegDeleteKeyA", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    EXPECT_TRUE(registry().exists("HKEY_CURRENT_USER\\A"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    EXPECT_FALSE(registry().exists("HKEY_CURRENT_USER\\A"));
}

TEST_F(FaultTest, TheObserverSeesEveryCallBeforeItWorks) {
    std::vector<std::string> seen;
    faults().observe([&](std::string_view operation) {
        seen.push_back(std::string(operation) +
                       (registry().exists("HKEY_CURRENT_USER\\A") ? " there" : " gone"));
    });
    HKEY key = nullptr;
    RegOpenKeyExA(HKEY_CURRENT_USER, "A", 0, 0x20000, &key);
    RegDeleteKeyA(key, "");
    RegCloseKey(key);
    EXPECT_EQ((std::vector<std::string>{"RegOpenKeyExA there", "RegDeleteKeyA there", "RegCloseKey gone"}),
              seen);
}

TEST_F(FaultTest, TheObserverMayEndItself) {
    int calls = 0;
    faults().observe([&](std::string_view) {
        ++calls;
        faults().clear();
    });
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(ERROR_SUCCESS, open());
    EXPECT_EQ(1, calls);
}

}  // namespace
}  // namespace bromvale::offline::testing

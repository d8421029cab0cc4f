// What only the offline machine shows: open handles, denied keys, the other family of systems.
#include "core/registry_layer.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

class RegistryLayerHandles : public testing::TestMachine {
  protected:
    RegistryLayerHandles() {
        fillState();
        setString(HKEY_LOCAL_MACHINE, "Software\\Test\\Unten", "Wert", "x");
        open_ = offline::machine().registry.openHandles();
    }
    [[nodiscard]] std::size_t leaked() const { return offline::machine().registry.openHandles() - open_; }

  private:
    std::size_t open_ = 0;
};

TEST_F(RegistryLayerHandles, FindValueLeavesItsKeyOpenInEitherOutcome) {
    static_cast<void>(FindValue(kHiveLocalMachine, "Software\\Test\\Unten", "Wert"));
    EXPECT_EQ(leaked(), 1u);
    static_cast<void>(FindValue(kHiveLocalMachine, "Software\\Test\\Unten", "fehlt"));
    EXPECT_EQ(leaked(), 2u);
    static_cast<void>(FindValue(kHiveLocalMachine, "Software\\Weg", "fehlt"));
    EXPECT_EQ(leaked(), 2u);
}

TEST_F(RegistryLayerHandles, AllOthersCloseWhatTheyOpened) {
    KeyExist(kHiveLocalMachine, "Software\\Test", READ_CONTROL);
    SetKeyValue(kHiveLocalMachine, "Software\\Test", "a", "b", 1, KEY_SET_VALUE);
    static_cast<void>(ReadValue(kHiveLocalMachine, "Software\\Test", "a"));
    DelKeyValue(kHiveLocalMachine, "Software\\Test", "a");
    DelKey(kHiveLocalMachine, "Software\\Test\\Unten", READ_CONTROL);
    DelKey(kHiveLocalMachine, "Software\\Weg", READ_CONTROL);
    EXPECT_EQ(leaked(), 0u);
}

TEST_F(RegistryLayerHandles, TheOldFamilyDeletesAKeyWithAllBelowIt) {
    offline::machine().registry.setNtFamily(false);
    DelKey(kHiveLocalMachine, "Software\\Test", READ_CONTROL);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Test"));
}

TEST_F(RegistryLayerHandles, AKeyThatMustNotBeReadCountsAsMissingAndStays) {
    offline::machine().registry.deny("HKEY_LOCAL_MACHINE\\Software\\Test\\Unten");
    EXPECT_EQ(KeyExist(kHiveLocalMachine, "Software\\Test\\Unten", READ_CONTROL), 0);
    DelKey(kHiveLocalMachine, "Software\\Test\\Unten", READ_CONTROL);
    EXPECT_TRUE(offline::machine().registry.exists("HKEY_LOCAL_MACHINE\\Software\\Test\\Unten"));
}

TEST_F(RegistryLayerHandles, AnEnumerationThatFailsForEverEnds) {
    offline::machine().faults.failFrom("RegEnumValueA", 1, 1018);
    EXPECT_EQ(FindValue(kHiveLocalMachine, "Software\\Test\\Unten", "Wert"), "");
}

}  // namespace
}  // namespace bromvale

#include "core/settings.h"

#include "core/log.h"
#include "core/state.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

class SettingsFaults : public testing::TestMachine {
  protected:
    SettingsFaults() {
        AppTitle = "Bromvale";
        AppVersion = "1.0.0";
        AppPath = folder();
    }
    const Lines kReport{
        "modKeyFunc; KeysNachtragen; Die Registryeinträge mussten nachgetragen werden.; 10000; Die "
        "Programmeinstellungen "
        "konnten nicht gelesen werden.",
        "Installieren Sie das Programm neu."};
};

TEST_F(SettingsFaults, AKeyThatCanBeNeitherReadNorMadeEndsWithOneReport) {
    offline::machine().faults.failFrom("RegCreateKeyExA", 1, 5);
    ReadAppSwitch();
    EXPECT_EQ(logLines(), kReport);
    EXPECT_FALSE(SettingsRead);
    EXPECT_EQ(FirstRun, 0);
    EXPECT_EQ(Form_Width, 0);
}

TEST_F(SettingsFaults, TheRepairIsLoggedAndNotShown) {
    int dialogs = 0;
    setErrorDialog([&](auto, auto, auto, auto, auto) { ++dialogs; });
    ReadAppSwitch();
    setErrorDialog(nullptr);
    EXPECT_EQ(dialogs, 0);
    EXPECT_EQ(logLines(), kReport);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(SettingsFaults, TheNextReadingTriesTheRepairAnew) {
    offline::machine().faults.fail("RegCreateKeyExA", 1, 5);
    ReadAppSwitch();
    ReadAppSwitch();
    EXPECT_EQ(Form_Width, 10515);
    EXPECT_EQ(logLines().size(), 4u);
}

TEST_F(SettingsFaults, AWriteThatFailsDoesNotStopTheOthers) {
    offline::machine().faults.fail("RegSetValueExA", 13, 5);
    ReadAppSwitch();
    EXPECT_EQ(Form_Height, 7700);
    EXPECT_EQ(Form_Width, 0);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Version"), "1.0.0");
    EXPECT_EQ(logLines(), kReport);
}

TEST_F(SettingsFaults, AFailureOtherThanTheEndCountsAsAValue) {
    setString(HKEY_CURRENT_USER, kSettingsKey, "AutoClose", "1");
    setString(HKEY_CURRENT_USER, kSettingsKey, "AutoScan", "1");
    offline::machine().faults.fail("RegEnumValueA", 1, 5);
    ReadAppSwitch();
    EXPECT_TRUE(SettingsRead);
    EXPECT_EQ(AutoClose, 0);
    EXPECT_EQ(AutoScan, 1);
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(SettingsFaults, TheRepairLeavesItsKeyOpen) {
    const std::size_t open = offline::machine().registry.openHandles();
    ReadAppSwitch();
    EXPECT_EQ(offline::machine().registry.openHandles() - open, 1u);
    ReadAppSwitch();
    EXPECT_EQ(offline::machine().registry.openHandles() - open, 1u);
}

}  // namespace
}  // namespace bromvale

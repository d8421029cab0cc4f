#include "core/settings.h"

#include "core/log.h"
#include "core/registry_layer.h"
#include "core/state.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;
using testing::StoredValue;
using namespace std::string_literals;

class Settings : public testing::TestMachine {
  protected:
    Settings() {
        AppTitle = "Bromvale";
        AppVersion = "1.0.0";
        AppPath = folder();
    }
    void set(std::string_view name, std::string_view text) {
        setString(HKEY_CURRENT_USER, kSettingsKey, name, text);
    }
    StoredValue stored(std::string_view name) { return storedValue(HKEY_CURRENT_USER, kSettingsKey, name); }
    std::string text(std::string_view name) { return stringValue(HKEY_CURRENT_USER, kSettingsKey, name); }
    static void expectRepaired() {
        EXPECT_EQ(FirstRun, 1);
        EXPECT_EQ(AgentLoad, 0);
        EXPECT_EQ(AgentType, "");
        EXPECT_EQ(AgentFile, ".acs");
        EXPECT_EQ(AutoClose, 0);
        EXPECT_EQ(AutoEntfernen, 0);
        EXPECT_EQ(AutoFileDelAfterReentry, 0);
        EXPECT_EQ(AutoRegFileDel, 0);
        EXPECT_EQ(AutoScan, 0);
        EXPECT_EQ(DelAfterDays, 0);
        EXPECT_EQ(DelFilePermanent, 0);
        EXPECT_EQ(EMail, "");
        EXPECT_EQ(Form_Height, 7700);
        EXPECT_EQ(Form_Width, 10515);
        EXPECT_EQ(Protokoll, 0);
        EXPECT_EQ(Proxy, 0);
        EXPECT_EQ(ProxyAdresse, "");
        EXPECT_EQ(ProxyPort, 0);
        EXPECT_EQ(RebootAfterDelete, 0);
        EXPECT_EQ(RebootAfterEntry, 0);
        EXPECT_EQ(ScreenSave, 0);
        EXPECT_EQ(ScreenX, 0);
        EXPECT_EQ(ScreenY, 0);
    }
    const Lines kReport{
        "modKeyFunc; KeysNachtragen; Die Registryeinträge mussten nachgetragen werden.; 10000; Die "
        "Programmeinstellungen "
        "konnten nicht gelesen werden.",
        "Installieren Sie das Programm neu."};
};

TEST_F(Settings, AMissingKeyIsRepairedWithOneReport) {
    ReadAppSwitch();
    expectRepaired();
    EXPECT_EQ(logLines(), kReport);
    EXPECT_TRUE(boxes().empty());
    EXPECT_TRUE(SettingsRead);
}

TEST_F(Settings, AKeyWithoutValuesIsRepairedTheSameWay) {
    makeKey(HKEY_CURRENT_USER, kSettingsKey);
    ReadAppSwitch();
    expectRepaired();
    EXPECT_EQ(logLines(), kReport);
}

TEST_F(Settings, TheRepairStoresTheFirstBytesOfEachDefault) {
    AppPath = "C:\\Programme\\Bromvale\\";
    ReadAppSwitch();
    EXPECT_EQ(valueNames(HKEY_CURRENT_USER, kSettingsKey), (Lines{"1stRun",
                                                                  "AgentLoad",
                                                                  "AgentType",
                                                                  "AutoClose",
                                                                  "AutoEntfernen",
                                                                  "AutoFileDelAfterReentry",
                                                                  "AutoRegFileDel",
                                                                  "AutoScan",
                                                                  "DelAfterDays",
                                                                  "DelFilePermanent",
                                                                  "EMail",
                                                                  "Form_Height",
                                                                  "Form_Width",
                                                                  "InstallDir",
                                                                  "Protokoll",
                                                                  "Proxy",
                                                                  "ProxyAdresse",
                                                                  "ProxyPort",
                                                                  "RebootAfterDelete",
                                                                  "RebootAfterEntry",
                                                                  "ScreenSave",
                                                                  "ScreenX",
                                                                  "ScreenY",
                                                                  "Version"}));
    const StoredValue zero{1, "0\0"s};
    EXPECT_EQ(stored("1stRun"), (StoredValue{1, "1\0"s}));
    EXPECT_EQ(stored("AgentLoad"), zero);
    EXPECT_EQ(stored("AgentType"), (StoredValue{1, "\0"s}));
    EXPECT_EQ(stored("AutoClose"), zero);
    EXPECT_EQ(stored("AutoEntfernen"), zero);
    EXPECT_EQ(stored("AutoFileDelAfterReentry"), zero);
    EXPECT_EQ(stored("AutoRegFileDel"), zero);
    EXPECT_EQ(stored("AutoScan"), zero);
    EXPECT_EQ(stored("DelAfterDays"), (StoredValue{1, ""}));
    EXPECT_EQ(stored("DelFilePermanent"), (StoredValue{1, ""}));
    EXPECT_EQ(stored("EMail"), (StoredValue{1, ""}));
    EXPECT_EQ(stored("Form_Height"), (StoredValue{1, "7700\0"s}));
    EXPECT_EQ(stored("Form_Width"), (StoredValue{1, "10515\0"s}));
    EXPECT_EQ(stored("InstallDir"), (StoredValue{1, "C:\\Programme\\Bromvale\\\0"s}));
    EXPECT_EQ(stored("Protokoll"), zero);
    EXPECT_EQ(stored("Proxy"), zero);
    EXPECT_EQ(stored("ProxyAdresse"), (StoredValue{1, "0"}));
    EXPECT_EQ(stored("ProxyPort"), (StoredValue{1, "8"}));
    EXPECT_EQ(stored("RebootAfterDelete"), zero);
    EXPECT_EQ(stored("RebootAfterEntry"), zero);
    EXPECT_EQ(stored("ScreenSave"), zero);
    EXPECT_EQ(stored("ScreenX"), (StoredValue{1, ""}));
    EXPECT_EQ(stored("ScreenY"), (StoredValue{1, ""}));
    EXPECT_EQ(stored("Version"), (StoredValue{1, "1.0.0\0"s}));
}

TEST_F(Settings, ARepairWhileTracingNestsTheSecondReadingInTheFirst) {
    Protokoll = 1;
    LogAlways = true;
    ReadAppSwitch();
    Lines expected{"modKeyFunc; ReadAppSwitch; started; 0; "};
    expected.insert(expected.end(), kReport.begin(), kReport.end());
    for (const char* text :
         {"started", "1stRun=1", "AgentLoad=0", "AgentType=", "AutoClose=0", "AutoEntfernen=0",
          "AutoFileDelAfterReentry=0", "AutoRegFileDel=0", "AutoScan=0",
          "DelAfterDays=", "DelFilePermanent=", "EMail=", "Form_Height=7700", "Form_Width=10515"}) {
        expected.push_back("modKeyFunc; ReadAppSwitch; "s + text + "; 0; ");
    }
    expected.push_back("modKeyFunc; ReadAppSwitch; InstallDir=" + folder() + "; 0; ");
    // The repaired key says 0, so tracing ends here, in the middle of both readings.
    expected.push_back("modKeyFunc; ReadAppSwitch; Protokoll=0; 0; ");
    EXPECT_EQ(logLines(), expected);
}

TEST_F(Settings, AllValuesReachTheirVariables) {
    set("1stRun", "1");
    set("AgentLoad", "2");
    set("AgentType", "Merlin");
    set("AutoClose", "3");
    set("AutoEntfernen", "4");
    set("AutoFileDelAfterReentry", "5");
    set("AutoRegFileDel", "6");
    set("AutoScan", "7");
    set("DelAfterDays", "30");
    set("DelFilePermanent", "8");
    set("EMail", "a@b.de");
    set("Form_Height", "9000");
    set("Form_Width", "12000");
    set("InstallDir", "D:\\anderswo\\");
    set("Proxy", "9");
    set("ProxyAdresse", "proxy.firma.de");
    set("ProxyPort", "8080");
    set("RebootAfterDelete", "10");
    set("RebootAfterEntry", "11");
    set("ScreenSave", "12");
    set("ScreenX", "-13");
    set("ScreenY", "14");
    set("Protokoll", "0");
    ReadAppSwitch();
    EXPECT_EQ(FirstRun, 1);
    EXPECT_EQ(AgentLoad, 2);
    EXPECT_EQ(AgentType, "Merlin");
    EXPECT_EQ(AgentFile, "Merlin.acs");
    EXPECT_EQ(AutoClose, 3);
    EXPECT_EQ(AutoEntfernen, 4);
    EXPECT_EQ(AutoFileDelAfterReentry, 5);
    EXPECT_EQ(AutoRegFileDel, 6);
    EXPECT_EQ(AutoScan, 7);
    EXPECT_EQ(DelAfterDays, 30);
    EXPECT_EQ(DelFilePermanent, 8);
    EXPECT_EQ(EMail, "a@b.de");
    EXPECT_EQ(Form_Height, 9000);
    EXPECT_EQ(Form_Width, 12000);
    EXPECT_EQ(AppPath, folder());
    EXPECT_EQ(Proxy, 9);
    EXPECT_EQ(ProxyAdresse, "proxy.firma.de");
    EXPECT_EQ(ProxyPort, 8080);
    EXPECT_EQ(RebootAfterDelete, 10);
    EXPECT_EQ(RebootAfterEntry, 11);
    EXPECT_EQ(ScreenSave, 12);
    EXPECT_EQ(ScreenX, -13);
    EXPECT_EQ(ScreenY, 14);
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(Settings, NamesCountByCaseAsWell) {
    set("autoscan", "1");
    set("AUTOCLOSE", "1");
    ReadAppSwitch();
    EXPECT_EQ(AutoScan, 0);
    EXPECT_EQ(AutoClose, 0);
}

TEST_F(Settings, ATextThatIsNoNumberLeavesItsVariableAndTheOthersGoOn) {
    set("ProxyPort", "8080");
    set("AutoScan", "1");
    ReadAppSwitch();
    set("ProxyPort", "achtzig");
    set("AutoScan", "");
    set("AutoClose", "1");
    ReadAppSwitch();
    EXPECT_EQ(ProxyPort, 8080);
    EXPECT_EQ(AutoScan, 1);
    EXPECT_EQ(AutoClose, 1);
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(Settings, AFormWidthFrom32768OnKeeps0) {
    set("Form_Width", "32768");
    set("Form_Height", "32767");
    ReadAppSwitch();
    EXPECT_EQ(Form_Width, 0);
    EXPECT_EQ(Form_Height, 32767);
}

TEST_F(Settings, AValueThatFitsIsReadAndALongerOneIsPassedOver) {
    set("EMail", std::string(254, 'x'));
    ReadAppSwitch();
    EXPECT_EQ(EMail, std::string(254, 'x'));
}

TEST_F(Settings, AValueOfMoreThan254BytesIsPassedOverAndTheNextIsRead) {
    set("Fremd", std::string(255, 'x'));
    set("AutoScan", "1");
    ReadAppSwitch();
    EXPECT_EQ(AutoScan, 1);
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(Settings, AValueThatDoesNotFitCountsAsOneThatWasRead) {
    set("Fremd", std::string(300, 'x'));
    ReadAppSwitch();
    EXPECT_TRUE(SettingsRead);
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(text("1stRun"), "<missing>");
}

TEST_F(Settings, AValueThatVanishedKeepsItsVariable) {
    set("AutoScan", "1");
    set("AutoClose", "1");
    ReadAppSwitch();
    DelKeyValue(kHiveCurrentUser, kSettingsKey, "AutoScan");
    ReadAppSwitch();
    EXPECT_EQ(AutoScan, 1);
    DelKey(kHiveCurrentUser, kSettingsKey, READ_CONTROL);
    ReadAppSwitch();
    EXPECT_EQ(AutoClose, 1);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, kSettingsKey));
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(Settings, WritingASettingChangesItsVariableAtTheNextReadingOnly) {
    set("AutoScan", "0");
    ReadAppSwitch();
    SetKeyValue(kHiveCurrentUser, kSettingsKey, "AutoScan", "1", 1, KEY_SET_VALUE);
    EXPECT_EQ(AutoScan, 0);
    EXPECT_EQ(text("AutoScan"), "1");
    ReadAppSwitch();
    EXPECT_EQ(AutoScan, 1);
}

// The registry keeps the name that a value has got, and names count by case.
TEST_F(Settings, ASettingWhoseValueHasItsNameInAnotherCaseIsStoredAndNeverRead) {
    set("EMAIL", "alt@b.example");
    set("Proxy", "1");
    EMail = "vorher";
    ReadAppSwitch();
    storeSetting(EMail, "neu@b.example");
    ReadAppSwitch();
    EXPECT_EQ(text("EMail"), "neu@b.example");
    EXPECT_EQ(EMail, "vorher");
    EXPECT_EQ(Proxy, 1);
}

// What is stored has no byte, not even a NUL: it is passed over like a value without data.
TEST_F(Settings, AnEmptyTextThatIsStoredLeavesItsVariable) {
    set("EMail", "a@b.example");
    ReadAppSwitch();
    storeSetting(EMail, "");
    ReadAppSwitch();
    EXPECT_EQ(stored("EMail"), (StoredValue{REG_SZ, ""}));
    EXPECT_EQ(EMail, "a@b.example");
}

TEST_F(Settings, ProtokollAt1MakesReportsBeLoggedUntilTheEnd) {
    set("Protokoll", "1");
    ReadAppSwitch();
    EXPECT_TRUE(LogAlways);
    set("Protokoll", "0");
    ReadAppSwitch();
    EXPECT_EQ(Protokoll, 0);
    EXPECT_TRUE(LogAlways);
}

TEST_F(Settings, EachValueIsTraced) {
    set("Protokoll", "1");
    set("Proxy", "0");
    setRaw(HKEY_CURRENT_USER, kSettingsKey, "ScreenX", REG_SZ, "");
    ReadAppSwitch();  // switches tracing on at its first value
    EXPECT_EQ(logLines(),
              (Lines{"modKeyFunc; ReadAppSwitch; Proxy=0; 0; ", "modKeyFunc; ReadAppSwitch; ScreenX=; 0; ",
                     "modKeyFunc; ReadAppSwitch; endet; 0; "}));
}

}  // namespace
}  // namespace bromvale

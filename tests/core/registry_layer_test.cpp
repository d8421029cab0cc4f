#include "core/registry_layer.h"

#include "base/failure.h"
#include "core/log.h"
#include "core/state.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;
using namespace std::string_literals;

class RegistryLayer : public testing::TestMachine {
  protected:
    RegistryLayer() { fillState(); }
};

TEST_F(RegistryLayer, KeyExistTellsAKeyFromAMissingOne) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Da");
    EXPECT_NE(KeyExist(kHiveLocalMachine, "Software\\Da", READ_CONTROL), 0);
    EXPECT_NE(KeyExist(kHiveLocalMachine, "software\\DA", READ_CONTROL), 0);
    EXPECT_EQ(KeyExist(kHiveLocalMachine, "Software\\Weg", READ_CONTROL), 0);
    EXPECT_EQ(KeyExist(kHiveCurrentUser, "Software\\Da", READ_CONTROL), 0);
}

TEST_F(RegistryLayer, KeyExistLogsAMissingKeyWhileTracingAlone) {
    EXPECT_EQ(KeyExist(kHiveLocalMachine, "Software\\Weg", READ_CONTROL), 0);
    EXPECT_EQ(logLines(), Lines{});
    switchTracingOn();
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Da");
    EXPECT_NE(KeyExist(kHiveLocalMachine, "Software\\Da", READ_CONTROL), 0);
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(KeyExist(kHiveLocalMachine, "Software\\Weg", READ_CONTROL), 0);
    EXPECT_EQ(logLines(), Lines{"modKeyFunc; KeyExist; -2147483646; Software\\Weg; 0; 0; "});
}

TEST_F(RegistryLayer, DelKeyDeletesTheKeyItself) {
    setString(HKEY_CURRENT_USER, "Software\\Test\\Fehler", "Wert", "x");
    DelKey(kHiveCurrentUser, "Software\\Test\\Fehler", READ_CONTROL);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, "Software\\Test\\Fehler"));
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, "Software\\Test"));
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(RegistryLayer, DelKeyLeavesAKeyWithSubKeys) {
    makeKey(HKEY_CURRENT_USER, "Software\\Test\\Unten");
    DelKey(kHiveCurrentUser, "Software\\Test", READ_CONTROL);
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, "Software\\Test\\Unten"));
}

TEST_F(RegistryLayer, DelKeyOnAMissingKeyLogsTheHandle0AndChangesNothing) {
    switchTracingOn();
    makeKey(HKEY_CURRENT_USER, "Software\\Da");
    DelKey(kHiveCurrentUser, "Software\\Weg", READ_CONTROL);
    EXPECT_EQ(logLines(), Lines{"modKeyFunc; DelKey; -2147483647; Software\\Weg; 0; 0; "});
    EXPECT_TRUE(keyExists(HKEY_CURRENT_USER, "Software\\Da"));
}

TEST_F(RegistryLayer, DelKeyValueDeletesTheValueAlone) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Run", "Bromvale", "x");
    setString(HKEY_LOCAL_MACHINE, "Software\\Run", "Anderes", "y");
    switchTracingOn();
    DelKeyValue(kHiveLocalMachine, "Software\\Run", "Bromvale");
    EXPECT_EQ(valueNames(HKEY_LOCAL_MACHINE, "Software\\Run"), Lines{"Anderes"});
    EXPECT_EQ(logLines(), Lines{"modKeyFunc; DelKeyValue; -2147483646; Software\\Run; Bromvale; 0; "});
}

TEST_F(RegistryLayer, DelKeyValueOfAMissingKeyLogsNothing) {
    switchTracingOn();
    DelKeyValue(kHiveLocalMachine, "Software\\Weg", "Bromvale");
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\Weg"));
}

TEST_F(RegistryLayer, SetKeyValueStoresTheTextWithItsNul) {
    makeKey(HKEY_CURRENT_USER, "Software\\Test");
    switchTracingOn();
    SetKeyValue(kHiveCurrentUser, "Software\\Test", "Ort", "Köln", 1, KEY_SET_VALUE);
    EXPECT_EQ(storedValue(HKEY_CURRENT_USER, "Software\\Test", "Ort"), (testing::StoredValue{1, "Köln\0"s}));
    EXPECT_EQ(logLines(), Lines{"modKeyFunc; SetKeyValue; -2147483647; Software\\Test; 1; Ort; Köln; 0; "});
}

TEST_F(RegistryLayer, SetKeyValueTakesAPartOfALongerText) {
    makeKey(HKEY_CURRENT_USER, "Software\\Test");
    SetKeyValue(kHiveCurrentUser, "Software\\Test", "Ort", std::string_view("12345").substr(1, 2), 1,
                KEY_SET_VALUE);
    EXPECT_EQ(storedValue(HKEY_CURRENT_USER, "Software\\Test", "Ort"), (testing::StoredValue{1, "23\0"s}));
}

TEST_F(RegistryLayer, SetKeyValueOnAMissingKeyChangesNothingAndLogsAsIfItHadWorked) {
    SetKeyValue(kHiveCurrentUser, "Software\\Weg", "Name", "Wert", 1, KEY_SET_VALUE);
    EXPECT_EQ(logLines(), Lines{});
    switchTracingOn();
    SetKeyValue(kHiveCurrentUser, "Software\\Weg", "Name", "Wert", 1, KEY_SET_VALUE);
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, "Software\\Weg"));
    EXPECT_EQ(logLines(), Lines{"modKeyFunc; SetKeyValue; -2147483647; Software\\Weg; 1; Name; Wert; 0; "});
}

TEST_F(RegistryLayer, SetKeyValueStoresOtherTypesAsAByteInAWord) {
    makeKey(HKEY_CURRENT_USER, "Software\\Test");
    SetKeyValue(kHiveCurrentUser, "Software\\Test", "Zahl", "255", 3, KEY_SET_VALUE);
    EXPECT_EQ(storedValue(HKEY_CURRENT_USER, "Software\\Test", "Zahl"),
              (testing::StoredValue{3, "\xFF\0\0\0"s}));
    SetKeyValue(kHiveCurrentUser, "Software\\Test", "Wort", "7", 4, KEY_SET_VALUE);
    EXPECT_EQ(storedValue(HKEY_CURRENT_USER, "Software\\Test", "Wort"),
              (testing::StoredValue{4, "\x07\0\0\0"s}));
}

TEST_F(RegistryLayer, SetKeyValueHandsAConversionThatFailsToItsCaller) {
    makeKey(HKEY_CURRENT_USER, "Software\\Test");
    for (const auto& [text, number] : {std::pair{"256", 6}, std::pair{"x", 13}}) {
        int failed = 0;
        try {
            SetKeyValue(kHiveCurrentUser, "Software\\Test", "Zahl", text, 3, KEY_SET_VALUE);
        } catch (const Failure& failure) {
            failed = failure.number;
        }
        EXPECT_EQ(failed, number) << text;
    }
    EXPECT_EQ(valueNames(HKEY_CURRENT_USER, "Software\\Test"), Lines{});
}

TEST_F(RegistryLayer, ReadValueGivesTextsNumbersAndNothingElse) {
    const char* key = "Software\\Test";
    setString(HKEY_LOCAL_MACHINE, key, "Text", "C:\\Programme");
    setRaw(HKEY_LOCAL_MACHINE, key, "Zwei", REG_SZ, "vorn\0hinten\0"s);
    setRaw(HKEY_LOCAL_MACHINE, key, "Binär", REG_BINARY, "\xFE\xFF\x01\x00"s);
    setRaw(HKEY_LOCAL_MACHINE, key, "Kurz", REG_BINARY, "\x07"s);
    setRaw(HKEY_LOCAL_MACHINE, key, "Lang", REG_BINARY, "\x01\x02\x03\x04\x05"s);
    setRaw(HKEY_LOCAL_MACHINE, key, "Wort", REG_DWORD, "\x07\0\0\0"s);
    setRaw(HKEY_LOCAL_MACHINE, key, "Variabel", REG_EXPAND_SZ, "%windir%\0"s);
    const auto read = [&](std::string_view name) { return ReadValue(kHiveLocalMachine, key, name); };
    EXPECT_EQ(read("Text"), RegistryValue("C:\\Programme"s));
    EXPECT_EQ(read("Zwei"), RegistryValue("vorn"s));
    EXPECT_EQ(read("Binär"), RegistryValue(std::int16_t{-2}));
    EXPECT_EQ(read("Kurz"), RegistryValue(std::int16_t{7}));
    EXPECT_EQ(read("Lang"), RegistryValue());
    EXPECT_EQ(read("Wort"), RegistryValue());
    EXPECT_EQ(read("Variabel"), RegistryValue());
    EXPECT_EQ(read("fehlt"), RegistryValue());
    EXPECT_EQ(ReadValue(kHiveLocalMachine, "Software\\Weg", "Text"), RegistryValue());
}

TEST_F(RegistryLayer, FindValueMindsTheCaseOfTheNameAndReadValueDoesNot) {
    setString(HKEY_LOCAL_MACHINE, "Software\\Run", "Bromvale", "Bromvale.exe -d");
    EXPECT_EQ(FindValue(kHiveLocalMachine, "Software\\Run", "Bromvale"), "Bromvale.exe -d");
    EXPECT_EQ(FindValue(kHiveLocalMachine, "Software\\Run", "bromvale"), "");
    EXPECT_EQ(ReadValue(kHiveLocalMachine, "Software\\Run", "bromvale"), RegistryValue("Bromvale.exe -d"s));
}

TEST_F(RegistryLayer, FindValueLooksPastOtherValues) {
    const char* key = "Software\\Run";
    setRaw(HKEY_LOCAL_MACHINE, key, "leer", REG_SZ, "");
    setString(HKEY_LOCAL_MACHINE, key, "Brom", "1");
    setString(HKEY_LOCAL_MACHINE, key, "Bromvale2", "2");
    setString(HKEY_LOCAL_MACHINE, key, "Lang", std::string(300, 'x'));
    setString(HKEY_LOCAL_MACHINE, key, "Bromvale", "3");
    EXPECT_EQ(FindValue(kHiveLocalMachine, key, "Bromvale"), "3");
    EXPECT_EQ(FindValue(kHiveLocalMachine, key, "leer"), "");
    EXPECT_EQ(FindValue(kHiveLocalMachine, key, "fehlt"), "");
    EXPECT_EQ(FindValue(kHiveLocalMachine, "Software\\Weg", "Bromvale"), "");
}

TEST_F(RegistryLayer, HiveNames) {
    EXPECT_EQ(HiveName(-2147483647 - 1), "HKEY_CLASSES_ROOT");
    EXPECT_EQ(HiveName(-2147483647), "HKEY_CURRENT_USER");
    EXPECT_EQ(HiveName(-2147483646), "HKEY_LOCAL_MACHINE");
    EXPECT_EQ(HiveName(-2147483645), "HKEY_USERS");
    EXPECT_EQ(HiveName(-2147483644), "HKEY_PERFORMANCE_DATA");
    EXPECT_EQ(HiveName(-2147483643), "HKEY_CURRENT_CONFIG");
    EXPECT_EQ(HiveName(-2147483642), "HKEY_DYN_DATA");
    EXPECT_EQ(HiveName(-2147483641), "");
    EXPECT_EQ(HiveName(0), "");
}

TEST_F(RegistryLayer, HivesAreTheirHandlesSignedNumbers) {
    EXPECT_EQ(hiveHandle(-2147483647), HKEY_CURRENT_USER);
    EXPECT_EQ(hiveHandle(-2147483646), HKEY_LOCAL_MACHINE);
    EXPECT_EQ(handleNumber(HKEY_LOCAL_MACHINE), -2147483646);
    EXPECT_EQ(handleNumber(nullptr), 0);
}

TEST_F(RegistryLayer, TrimNullCutsInPlaceAtTheFirstNul) {
    std::string text = "abc\0def\0"s;
    EXPECT_EQ(TrimNull(text), "abc");
    EXPECT_EQ(text, "abc");
    text = "ohne";
    EXPECT_EQ(TrimNull(text), "ohne");
    text = "\0x"s;
    EXPECT_EQ(TrimNull(text), "");
    EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace bromvale

// Keys: what every provider answers. The numbers are Windows'.
#include <array>

#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class RegistryKeys : public TestMachine {
  protected:
    static std::vector<std::string> subKeys(HKEY key) {
        std::vector<std::string> names;
        char name[256];
        for (DWORD index = 0; RegEnumKeyA(key, index, name, sizeof name) == ERROR_SUCCESS; ++index)
            names.emplace_back(name);
        return names;
    }
    static HKEY open(const char* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, access, &key), ERROR_SUCCESS);
        return key;
    }
};

TEST_F(RegistryKeys, AMissingKeyGivesTwo) {
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Nichts", 0, KEY_READ, &key), 2);
    EXPECT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, "Software\\Nichts", &key), 2);
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\Nichts"), 2);
}

TEST_F(RegistryKeys, AClosedHandleGivesSix) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A");
    const HKEY key = open("Software\\A");
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_EQ(RegCloseKey(key), 6);
    char name[256];
    EXPECT_EQ(RegEnumKeyA(key, 0, name, sizeof name), 6);
}

TEST_F(RegistryKeys, NamesCompareWithoutCaseAndKeepIt) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Farbmühle");
    const HKEY key = open("SOFTWARE\\FARBMÜHLE");
    RegCloseKey(key);
    makeKey(HKEY_LOCAL_MACHINE, "Software\\FARBMÜHLE");
    const HKEY above = open("Software");
    EXPECT_EQ(subKeys(above), std::vector<std::string>{"Farbmühle"});
    RegCloseKey(above);
}

TEST_F(RegistryKeys, SubKeysEnumerateInAlphabeticalOrder) {
    for (const char* name : {"Zeder", "ahorn", "Buche", "1", "10", "2", "{B}", "Ahornblatt"}) {
        makeKey(HKEY_LOCAL_MACHINE, std::string("Software\\") + name);
    }
    const HKEY key = open("Software");
    const std::vector<std::string> order{"1", "10", "2", "ahorn", "Ahornblatt", "Buche", "Zeder", "{B}"};
    EXPECT_EQ(subKeys(key), order);
    RegCloseKey(key);
}

TEST_F(RegistryKeys, BehindTheLastSubKeyComes259) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\Eins");
    const HKEY key = open("Software\\A");
    char name[256];
    EXPECT_EQ(RegEnumKeyA(key, 0, name, sizeof name), 0);
    EXPECT_STREQ(name, "Eins");
    EXPECT_EQ(RegEnumKeyA(key, 1, name, sizeof name), 259);
    EXPECT_EQ(RegEnumKeyA(key, 7, name, sizeof name), 259);
    RegCloseKey(key);
}

TEST_F(RegistryKeys, ANameThatDoesNotFitGives234) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\Fuenf");
    const HKEY key = open("Software\\A");
    struct Row {
        DWORD size;
        LONG result;
    };
    // The size counts the NUL.
    for (const Row row : {Row{1, 234}, Row{4, 234}, Row{6, 0}, Row{7, 0}}) {
        char name[16] = "";
        EXPECT_EQ(RegEnumKeyA(key, 0, name, row.size), row.result) << row.size;
    }
    RegCloseKey(key);
}

TEST_F(RegistryKeys, AnEmptySubKeyNameOpensTheKeyItself) {
    setString(HKEY_LOCAL_MACHINE, "Software\\A", "Wert", "hier");
    const HKEY key = open("Software\\A");
    HKEY same = nullptr;
    ASSERT_EQ(RegOpenKeyExA(key, "", 0, KEY_READ, &same), 0);
    EXPECT_NE(same, key);
    char data[16];
    DWORD size = sizeof data;
    EXPECT_EQ(RegQueryValueExA(same, "Wert", nullptr, nullptr, reinterpret_cast<LPBYTE>(data), &size), 0);
    EXPECT_STREQ(data, "hier");
    RegCloseKey(same);
    RegCloseKey(key);
}

TEST_F(RegistryKeys, CreatingTellsWhetherTheKeyIsNew) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Tief\\Tiefer", 0, nullptr, 0, KEY_SET_VALUE,
                              nullptr, &key, &disposition),
              0);
    EXPECT_EQ(disposition, 1u);
    RegCloseKey(key);
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "software\\tief", 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                              &key, &disposition),
              0);
    EXPECT_EQ(disposition, 2u);
    RegCloseKey(key);
}

TEST_F(RegistryKeys, ADoubledBackslashCountsAsOne) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\B");
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\\\A\\B"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A\\B\\"));
}

TEST_F(RegistryKeys, AKeyCanBeSeenAndDeletedWithReadControlAlone) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\B");
    const HKEY key = open("Software\\A\\B", READ_CONTROL);
    EXPECT_EQ(RegDeleteKeyA(key, ""), 0);
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A\\B"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A"));
}

TEST_F(RegistryKeys, AHandleWithoutTheRightToReadGivesFive) {
    setString(HKEY_LOCAL_MACHINE, "Software\\A", "Wert", "hier");
    const HKEY key = open("Software\\A", READ_CONTROL);
    char name[256];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumKeyA(key, 0, name, sizeof name), 5);
    EXPECT_EQ(RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(RegQueryValueExA(key, "Wert", nullptr, nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(RegSetValueExA(key, "Wert", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2), 5);
    RegCloseKey(key);
}

// The NT family; the 9x family takes the sub keys along, which only the offline machine can show.
TEST_F(RegistryKeys, AKeyWithSubKeysIsNotDeletedOnNt) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\B");
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\A"), 5);
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A\\B"));
    const HKEY key = open("Software\\A", READ_CONTROL);
    EXPECT_EQ(RegDeleteKeyA(key, ""), 5);
    RegCloseKey(key);
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A\\B"));
}

TEST_F(RegistryKeys, ADeletedKeyAnswersItsOpenHandlesWith1018) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\B");
    const HKEY key = open("Software\\A\\B");
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\A\\B"), 0);
    char name[256];
    EXPECT_EQ(RegEnumKeyA(key, 0, name, sizeof name), 1018);
    EXPECT_EQ(RegQueryValueExA(key, "", nullptr, nullptr, nullptr, nullptr), 1018);
    EXPECT_EQ(RegCloseKey(key), 0);
}

}  // namespace
}  // namespace bromvale::testing

// Values: lengths, the NUL rule, buffers that are too small.
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class RegistryValues : public TestMachine {
  protected:
    RegistryValues() {
        makeKey(HKEY_LOCAL_MACHINE, "Software\\A");
        EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\A", 0, KEY_READ | KEY_WRITE, &key_), 0);
    }
    ~RegistryValues() override { RegCloseKey(key_); }
    LONG set(const char* name, DWORD type, const char* bytes, DWORD size) {
        return RegSetValueExA(key_, name, 0, type, reinterpret_cast<const BYTE*>(bytes), size);
    }
    [[nodiscard]] DWORD storedSize(const char* name) {
        DWORD size = 0;
        return RegQueryValueExA(key_, name, nullptr, nullptr, nullptr, &size) == 0 ? size : 0xFFFFFFFFu;
    }
    HKEY key_ = nullptr;
};

TEST_F(RegistryValues, ATextIsStoredWithTheNulBehindIt) {
    struct Row {
        const char* bytes;
        DWORD given;
        DWORD stored;
    };
    // The length 3 of "abc" stops before its NUL, which is taken along; 2 stops before "c", so nothing is.
    for (const Row row : {Row{"abc", 3, 4}, Row{"abc", 4, 4}, Row{"abc", 2, 2}, Row{"", 0, 0}, Row{"", 1, 1},
                          Row{"0.0.0.0", 1, 1}, Row{"7700", 4, 5}}) {
        ASSERT_EQ(set("Wert", REG_SZ, row.bytes, row.given), 0);
        EXPECT_EQ(storedSize("Wert"), row.stored) << row.bytes << " " << row.given;
    }
}

TEST_F(RegistryValues, TheRuleHoldsForExpandableTextsAndNotForOtherTypes) {
    ASSERT_EQ(set("Text", REG_EXPAND_SZ, "%A%", 3), 0);
    ASSERT_EQ(set("Bytes", REG_BINARY, "abc", 3), 0);
    ASSERT_EQ(set("Nichts", REG_NONE, "abc", 3), 0);
    EXPECT_EQ(storedSize("Text"), 4u);
    EXPECT_EQ(storedSize("Bytes"), 3u);
    EXPECT_EQ(storedSize("Nichts"), 3u);
}

TEST_F(RegistryValues, ABufferTooSmallGives234AndTheSizeThatIsNeeded) {
    ASSERT_EQ(set("Wert", REG_SZ, "abcde", 6), 0);
    struct Row {
        DWORD size;
        LONG result;
    };
    for (const Row row : {Row{0, 234}, Row{1, 234}, Row{5, 234}, Row{6, 0}, Row{7, 0}}) {
        BYTE data[16] = {};
        DWORD size = row.size;
        DWORD type = 0;
        EXPECT_EQ(RegQueryValueExA(key_, "Wert", nullptr, &type, data, &size), row.result) << row.size;
        EXPECT_EQ(size, 6u);
        EXPECT_EQ(type, 1u);
    }
}

TEST_F(RegistryValues, AMissingValueGivesTwo) {
    BYTE data[16];
    DWORD size = sizeof data;
    EXPECT_EQ(RegQueryValueExA(key_, "Nichts", nullptr, nullptr, data, &size), 2);
    EXPECT_EQ(RegDeleteValueA(key_, "Nichts"), 2);
    // The default value of a key that has none.
    EXPECT_EQ(RegQueryValueExA(key_, "", nullptr, nullptr, data, &size), 2);
}

TEST_F(RegistryValues, NamesCompareWithoutCaseAndKeepTheFirst) {
    ASSERT_EQ(set("Größe", REG_SZ, "1", 2), 0);
    ASSERT_EQ(set("GRÖßE", REG_SZ, "22", 3), 0);
    EXPECT_EQ(storedSize("größe"), 3u);
    EXPECT_EQ(valueNames(HKEY_LOCAL_MACHINE, "Software\\A"), std::vector<std::string>{"Größe"});
}

TEST_F(RegistryValues, ValuesEnumerateInTheOrderOfTheirCreation) {
    // Alphabetical too: there are providers that order by name.
    for (const char* name : {"", "ahorn", "Buche", "Zeder"}) ASSERT_EQ(set(name, REG_SZ, "x", 2), 0);
    ASSERT_EQ(set("ahorn", REG_SZ, "neu", 4), 0);
    const std::vector<std::string> order{"", "ahorn", "Buche", "Zeder"};
    EXPECT_EQ(valueNames(HKEY_LOCAL_MACHINE, "Software\\A"), order);
}

TEST_F(RegistryValues, EnumeratingGivesNameTypeDataAndTheirLengths) {
    ASSERT_EQ(set("Wert", REG_SZ, "abc", 3), 0);
    char name[255];
    BYTE data[255];
    DWORD nameSize = sizeof name;
    DWORD dataSize = sizeof data;
    DWORD type = 0;
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, &type, data, &dataSize), 0);
    EXPECT_STREQ(name, "Wert");
    EXPECT_EQ(nameSize, 4u);  // without the NUL
    EXPECT_EQ(type, 1u);
    EXPECT_EQ(dataSize, 4u);  // with it
    nameSize = sizeof name;
    dataSize = sizeof data;
    EXPECT_EQ(RegEnumValueA(key_, 1, name, &nameSize, nullptr, &type, data, &dataSize), 259);
}

TEST_F(RegistryValues, EnumeratingIntoBuffersTooSmallGives234) {
    ASSERT_EQ(set("Wert", REG_SZ, "abcde", 6), 0);
    struct Row {
        DWORD nameSize;
        DWORD dataSize;
        LONG result;
    };
    for (const Row row : {Row{5, 6, 0}, Row{4, 6, 234}, Row{5, 5, 234}, Row{4, 5, 234}, Row{255, 256, 0}}) {
        char name[256];
        BYTE data[256];
        DWORD nameSize = row.nameSize;
        DWORD dataSize = row.dataSize;
        EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, nullptr, data, &dataSize), row.result)
            << row.nameSize << " " << row.dataSize;
    }
}

TEST_F(RegistryValues, DataOf256BytesFitWhereTheSizeSaysSo) {
    const std::string text(255, 'x');
    ASSERT_EQ(set("Wert", REG_SZ, text.c_str(), 256), 0);
    BYTE data[257];
    DWORD size = 256;
    EXPECT_EQ(RegQueryValueExA(key_, "Wert", nullptr, nullptr, data, &size), 0);
    ASSERT_EQ(set("Wert", REG_SZ, (text + "y").c_str(), 257), 0);
    size = 256;
    EXPECT_EQ(RegQueryValueExA(key_, "Wert", nullptr, nullptr, data, &size), 234);
}

TEST_F(RegistryValues, ADeletedValueIsGoneAndTheOthersKeepTheirOrder) {
    for (const char* name : {"a", "b", "c"}) ASSERT_EQ(set(name, REG_SZ, "x", 2), 0);
    EXPECT_EQ(RegDeleteValueA(key_, "b"), 0);
    const std::vector<std::string> rest{"a", "c"};
    EXPECT_EQ(valueNames(HKEY_LOCAL_MACHINE, "Software\\A"), rest);
}

}  // namespace
}  // namespace bromvale::testing

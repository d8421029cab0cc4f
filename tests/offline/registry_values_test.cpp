// Values of the offline registry: lengths, the NUL rule, buffers, order.
#include <cstring>

#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

class ValueTest : public RegistryTest {
  protected:
    ValueTest() {
        registry().createKey("HKEY_CURRENT_USER\\V");
        key_ = openedKey(HKEY_CURRENT_USER, "V");
    }

    LONG set(const char* name, DWORD type, const char* data, DWORD size) {
        return RegSetValueExA(key_, name, 0, type, reinterpret_cast<const BYTE*>(data), size);
    }
    std::string stored(std::string_view name) {
        const auto value = registry().value("HKEY_CURRENT_USER\\V", name);
        return value ? std::to_string(value->type) + " " + hexOf(value->data) : "missing";
    }

    HKEY key_ = nullptr;
};

struct NulRow {
    DWORD type;
    const char* data;  // a NUL follows
    DWORD size;
    const char* stored;
};

TEST_F(ValueTest, ATextIsStoredWithTheNulBehindItsLength) {
    const NulRow rows[] = {{REG_SZ, "abc", 3, "1 61626300"},
                           {REG_SZ, "abc", 4, "1 61626300"},
                           {REG_SZ, "abc", 2, "1 6162"},
                           {REG_SZ, "", 0, "1 "},
                           {REG_SZ, "abc", 0, "1 "},
                           {REG_SZ, "ab\0\0", 3, "1 616200"},
                           {REG_EXPAND_SZ, "%x%", 3, "2 25782500"},
                           {REG_MULTI_SZ, "a\0b\0", 3, "7 61006200"},
                           {REG_MULTI_SZ, "a\0b\0\0", 4, "7 61006200"},
                           {REG_BINARY, "ab", 2, "3 6162"},
                           {REG_DWORD, "\1\0\0", 4, "4 01000000"},
                           {99, "a", 1, "99 61"}};
    for (const NulRow& row : rows) {
        EXPECT_EQ(ERROR_SUCCESS, set("v", row.type, row.data, row.size));
        EXPECT_EQ(row.stored, stored("v"));
    }
    EXPECT_EQ(ERROR_SUCCESS, RegSetValueExA(key_, "v", 0, REG_SZ, nullptr, 0));
    EXPECT_EQ("1 ", stored("v"));
    EXPECT_EQ(ERROR_NOACCESS, RegSetValueExA(key_, "v", 0, REG_SZ, nullptr, 4));
}

TEST_F(ValueTest, ReplacingKeepsPlaceAndName) {
    set("Name", REG_SZ, "1", 1);
    set("", REG_SZ, "2", 1);
    set("last", REG_SZ, "3", 1);
    set("NAME", REG_BINARY, "4", 1);
    EXPECT_EQ("HKEY_CURRENT_USER\\V\n  Name|3|34\n  |1|3200\n  last|1|3300\n", dump(registry()));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteValueA(key_, nullptr));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteValueA(key_, ""));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteValueA(key_, "LAST"));
    EXPECT_EQ("HKEY_CURRENT_USER\\V\n  Name|3|34\n", dump(registry()));
}

struct BufferRow {
    DWORD nameSize, dataSize;
    LONG result;
    DWORD nameAfter, dataAfter;
    const char* name;
    const char* data;
};

TEST_F(ValueTest, EnumeratingReportsTheNeededSizes) {
    set("abcdef", REG_SZ, "wxyz", 4);
    const BufferRow rows[] = {
        {8, 5, ERROR_SUCCESS, 6, 5, "abcdef", "7778797a00ee"},
        {7, 6, ERROR_SUCCESS, 6, 5, "abcdef", "7778797a00ee"},
        {8, 4, ERROR_MORE_DATA, 8, 5, "########", "eeeeeeeeeeee"},
        {6, 5, ERROR_MORE_DATA, 6, 5, "abcde", "7778797a00ee"},
        {0, 5, ERROR_MORE_DATA, 0, 5, "########", "7778797a00ee"},
        {0, 0, ERROR_MORE_DATA, 0, 5, "########", "eeeeeeeeeeee"},
        {255, 256, ERROR_SUCCESS, 6, 5, "abcdef", "7778797a00ee"},
    };
    for (const BufferRow& row : rows) {
        char name[256] = "########";
        BYTE data[256];
        std::memset(data, 0xEE, sizeof data);
        DWORD nameSize = row.nameSize;
        DWORD dataSize = row.dataSize;
        DWORD type = 99;
        EXPECT_EQ(row.result, RegEnumValueA(key_, 0, name, &nameSize, nullptr, &type, data, &dataSize));
        EXPECT_EQ(row.nameAfter, nameSize);
        EXPECT_EQ(row.dataAfter, dataSize);
        EXPECT_STREQ(row.name, name);
        EXPECT_EQ(row.data, hexOf({reinterpret_cast<char*>(data), 6}));
        EXPECT_EQ(REG_SZ, type);
    }
    char name[8];
    DWORD size = sizeof name;
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumValueA(key_, 1, name, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(8u, size);
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegEnumValueA(key_, 0, nullptr, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegEnumValueA(key_, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(ValueTest, TheLimitOf256BytesIsTheBuffersAndIncludesTheNul) {
    char name[255];
    BYTE data[256];
    for (const auto& [length, result] :
         {std::pair{254, 0}, {255, 0}, {256, 234}, {257, 234}, {300, 234}, {3, 0}}) {
        registry().setText("HKEY_CURRENT_USER\\V", "v", std::string(static_cast<std::size_t>(length), 'x'));
        DWORD nameSize = 255;
        DWORD dataSize = 256;
        EXPECT_EQ(result, RegEnumValueA(key_, 0, name, &nameSize, nullptr, nullptr, data, &dataSize))
            << length;
        EXPECT_EQ(static_cast<DWORD>(length + 1), dataSize);
        dataSize = 256;
        EXPECT_EQ(result, RegQueryValueExA(key_, "v", nullptr, nullptr, data, &dataSize)) << length;
        EXPECT_EQ(static_cast<DWORD>(length + 1), dataSize);
    }
}

TEST_F(ValueTest, QueryingGivesTypeAndSizeFirstAndTheDataThen) {
    set("Wert", REG_EXPAND_SZ, "abc", 3);
    DWORD type = 99;
    DWORD size = 77;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key_, "WERT", nullptr, &type, nullptr, &size));
    EXPECT_EQ(REG_EXPAND_SZ, type);
    EXPECT_EQ(4u, size);
    BYTE data[8];
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegQueryValueExA(key_, "Wert", nullptr, &type, data, nullptr));
    size = 3;
    EXPECT_EQ(ERROR_MORE_DATA, RegQueryValueExA(key_, "Wert", nullptr, &type, data, &size));
    EXPECT_EQ(4u, size);
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key_, "Wert", nullptr, &type, data, &size));
    EXPECT_EQ("61626300", hexOf({reinterpret_cast<char*>(data), 4}));
    size = 8;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key_, "missing", nullptr, &type, data, &size));
    EXPECT_EQ(8u, size);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegQueryValueExA(key_, nullptr, nullptr, &type, nullptr, &size));
    EXPECT_EQ(0u, size);
}

TEST_F(ValueTest, ATextStoredWithoutNulGetsOneInTheBufferWhereThereIsRoom) {
    set("v", REG_SZ, "abc", 2);
    BYTE data[4] = {0xEE, 0xEE, 0xEE, 0xEE};
    DWORD size = 2;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key_, "v", nullptr, nullptr, data, &size));
    EXPECT_EQ("6162eeee", hexOf({reinterpret_cast<char*>(data), 4}));
    size = 4;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key_, "v", nullptr, nullptr, data, &size));
    EXPECT_EQ("616200ee", hexOf({reinterpret_cast<char*>(data), 4}));
    EXPECT_EQ(2u, size);
}

TEST_F(ValueTest, AKeyWithManyValuesKeepsTheirOrderThroughChangesAndDeletions) {
    std::string expected = "HKEY_CURRENT_USER\\V\n";
    for (int i = 0; i < 100; ++i) {
        const std::string name = "Value" + std::to_string(i);
        set(name.c_str(), REG_SZ, "a", 1);
        if (i % 3 == 2) continue;
        expected += "  " + name + (i % 3 == 0 ? "|3|62\n" : "|1|6100\n");
    }
    for (int i = 0; i < 100; ++i) {
        const std::string name = "VALUE" + std::to_string(i);
        if (i % 3 == 0) set(name.c_str(), REG_BINARY, "b", 1);
        if (i % 3 == 2) {
            EXPECT_EQ(ERROR_SUCCESS, RegDeleteValueA(key_, name.c_str()));
        }
    }
    EXPECT_EQ(expected, dump(registry()));
    EXPECT_EQ(67u, registry().valueCount());
    EXPECT_EQ("missing", stored("Value2"));
}

TEST_F(ValueTest, InfoCountsAndMeasures) {
    set("short", REG_SZ, "wxyz", 4);
    set("longer", REG_SZ, "a", 1);
    registry().createKey("HKEY_CURRENT_USER\\V\\Sub");
    DWORD keys = 0, longestKey = 0, values = 0, longestName = 0, longestData = 0;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryInfoKeyA(key_, nullptr, nullptr, nullptr, &keys, &longestKey, nullptr,
                                              &values, &longestName, &longestData, nullptr, nullptr));
    EXPECT_EQ(1u, keys);
    EXPECT_EQ(3u, longestKey);
    EXPECT_EQ(2u, values);
    EXPECT_EQ(6u, longestName);
    EXPECT_EQ(5u, longestData);
}

}  // namespace
}  // namespace bromvale::offline::testing

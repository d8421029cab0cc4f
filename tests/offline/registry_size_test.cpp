// Large and deep registries: nothing recurses, nothing is quadratic.
#include <algorithm>
#include <cstdio>

#include "platform/offline/reg_files/reg_file.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

std::string nestedPath(int levels) {
    std::string path = "HKEY_CURRENT_USER";
    for (int i = 0; i < levels; ++i) path += "\\n";
    return path;
}

class SizeTest : public RegistryTest {};

TEST_F(SizeTest, ThousandsOfNestedLevelsAreMadeOpenedAndDeleted) {
    const std::string path = nestedPath(5000);
    ASSERT_TRUE(registry().setText(path, "v", "deep"));
    EXPECT_EQ(5000u, registry().keyCount());
    // The wide function, since the ANSI one takes 260 characters.
    const std::u16string below(path.begin() + std::string_view("HKEY_CURRENT_USER\\").size(), path.end());
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_CURRENT_USER, below.c_str(), 0, KEY_ALL_ACCESS, &key));
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
    registry().setNtFamily(false);
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "n"));
    EXPECT_EQ(0u, registry().keyCount());
    EXPECT_EQ(ERROR_KEY_DELETED, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
}

TEST_F(SizeTest, ThousandsOfNestedLevelsAreSavedAndRead) {
    const std::string path = nestedPath(2000);
    ASSERT_TRUE(registry().setText(path, "v", "deep"));
    const std::string file = ::testing::TempDir() + "bromvale_nested.reg";
    EXPECT_FALSE(saveRegFile(registry(), file));
    registry().clear();
    EXPECT_FALSE(loadRegFile(file, registry()));
    std::remove(file.c_str());
    EXPECT_EQ(2000u, registry().keyCount());
    EXPECT_EQ("deep\0"s, registry().value(path, "v")->data);
}

TEST_F(SizeTest, ManyKeysInAnyOrderAreEnumeratedInOrderAndDeleted) {
    constexpr unsigned kKeys = 50000;
    unsigned number = 1;
    for (unsigned i = 0; i < kKeys; ++i) {
        number = (number * 20021 + 7) % 65536;  // a permutation of 0 to 65535
        char name[32];
        std::snprintf(name, sizeof name, "%cey%05u", i % 2 == 0 ? 'K' : 'k', number);
        registry().createKey("HKEY_LOCAL_MACHINE\\Many\\"s + name);
    }
    EXPECT_EQ(kKeys + 1, registry().keyCount());
    const auto names = registry().subKeys("HKEY_LOCAL_MACHINE\\Many");
    ASSERT_EQ(kKeys, names.size());
    const auto byNumber = [](const std::string& left, const std::string& right) {
        return left.substr(1) < right.substr(1);
    };
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), byNumber));
    HKEY many = openedKey(HKEY_LOCAL_MACHINE, "Many");
    for (unsigned i = 0; i < kKeys; i += 10) ASSERT_EQ(ERROR_SUCCESS, RegDeleteKeyA(many, names[i].c_str()));
    EXPECT_EQ(45001u, registry().keyCount());
    EXPECT_EQ(names[1], registry().subKeys("HKEY_LOCAL_MACHINE\\Many").front());
}

TEST_F(SizeTest, KeysMadeBetweenTwoEnumerationsTakeTheirPlace) {
    for (const char* name : {"m", "c", "x"}) registry().createKey("HKEY_CURRENT_USER\\S\\"s + name);
    EXPECT_EQ((std::vector<std::string>{"c", "m", "x"}), registry().subKeys("HKEY_CURRENT_USER\\S"));
    for (const char* name : {"Z", "D", "a"}) registry().createKey("HKEY_CURRENT_USER\\S\\"s + name);
    registry().deleteKey("HKEY_CURRENT_USER\\S\\d");
    registry().deleteKey("HKEY_CURRENT_USER\\S\\M");
    EXPECT_EQ((std::vector<std::string>{"a", "c", "x", "Z"}), registry().subKeys("HKEY_CURRENT_USER\\S"));
    registry().createKey("HKEY_CURRENT_USER\\S\\d");
    EXPECT_EQ((std::vector<std::string>{"a", "c", "d", "x", "Z"}),
              registry().subKeys("HKEY_CURRENT_USER\\S"));
}

TEST_F(SizeTest, ManyValuesOfOneKeyAreFound) {
    for (int i = 0; i < 20000; ++i) registry().setNumber("HKEY_CURRENT_USER\\V", "v" + std::to_string(i), 7);
    EXPECT_EQ(20000u, registry().valueCount());
    EXPECT_TRUE(registry().value("HKEY_CURRENT_USER\\V", "V19999"));
    EXPECT_FALSE(registry().value("HKEY_CURRENT_USER\\V", "v20000"));
    registry().deleteKey("HKEY_CURRENT_USER\\V");
    EXPECT_EQ(0u, registry().valueCount());
}

}  // namespace
}  // namespace bromvale::offline::testing

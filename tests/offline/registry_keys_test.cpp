// Keys of the offline registry: opening, access, handles, creating, deleting.
#include <memory>
#include <ostream>
#include <stdexcept>

#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

const HKEY kUntouched = reinterpret_cast<HKEY>(0x7777);

struct OpenRow {
    const char* name;
    const char* path;
    LONG result;
};

void PrintTo(const OpenRow& row, std::ostream* out) {
    *out << row.name;
}

class OpenTest : public RegistryTest, public ::testing::WithParamInterface<OpenRow> {};

TEST_P(OpenTest, APathGivesItsResultAndAGoodOneStillOpensBehindIt) {
    registry().createKey("HKEY_CURRENT_USER\\Software\\Bromvale\\Liste");
    HKEY key = kUntouched;
    EXPECT_EQ(GetParam().result, RegOpenKeyExA(HKEY_CURRENT_USER, GetParam().path, 0, KEY_READ, &key));
    EXPECT_EQ(GetParam().result == ERROR_SUCCESS, key != nullptr);
    EXPECT_NE(kUntouched, key);
    RegCloseKey(key);

    HKEY good = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Bromvale", 0, KEY_READ, &good));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(good));
    EXPECT_EQ(0u, registry().openHandles());
}

const OpenRow kOpenRows[] = {
    {"Plain", "Software\\Bromvale\\Liste", ERROR_SUCCESS},
    {"OtherCase", "SOFTWARE\\bromvale\\LISTE", ERROR_SUCCESS},
    {"TrailingBackslash", "Software\\Bromvale\\", ERROR_SUCCESS},
    {"DoubledBackslash", "Software\\\\Bromvale", ERROR_SUCCESS},
    {"DoubledTrailingBackslash", "Software\\Bromvale\\\\", ERROR_SUCCESS},
    {"TrailingBlank", "Software\\Bromvale ", ERROR_FILE_NOT_FOUND},
    {"MissingOnTheWay", "Software\\Missing\\Liste", ERROR_FILE_NOT_FOUND},
    {"MissingAtTheEnd", "Software\\Bromvale\\Liste\\Deeper", ERROR_FILE_NOT_FOUND},
    {"LeadingBackslash", "\\Software", ERROR_BAD_PATHNAME},
    {"BackslashAlone", "\\", ERROR_BAD_PATHNAME},
};

INSTANTIATE_TEST_SUITE_P(Paths, OpenTest, ::testing::ValuesIn(kOpenRows),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(RegistryTest, ALeadingBackslashIsNotFoundOnThe9xFamily) {
    registry().setNtFamily(false);
    registry().createKey("HKEY_CURRENT_USER\\Software");
    HKEY key = kUntouched;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExA(HKEY_CURRENT_USER, "\\Software", 0, KEY_READ, &key));
}

TEST_F(RegistryTest, HivesAreTheDocumentedNumbers) {
    const HKEY hives[] = {HKEY_CLASSES_ROOT,     HKEY_CURRENT_USER,   HKEY_LOCAL_MACHINE, HKEY_USERS,
                          HKEY_PERFORMANCE_DATA, HKEY_CURRENT_CONFIG, HKEY_DYN_DATA};
    const std::intptr_t numbers[] = {-2147483648LL, -2147483647, -2147483646, -2147483645,
                                     -2147483644,   -2147483643, -2147483642};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(numbers[i], reinterpret_cast<std::intptr_t>(hives[i]));
        HKEY key = nullptr;
        EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(hives[i], "", 0, KEY_READ, &key));
        EXPECT_EQ(hives[i], key);
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(hives[i]));
    }
    EXPECT_EQ(0u, registry().openHandles());
}

TEST_F(RegistryTest, HandlesAreSmallPositiveNumbersAndTheLowestFreeOneIsReused) {
    registry().createKey("HKEY_CURRENT_USER\\A");
    HKEY keys[3];
    for (HKEY& key : keys) key = openedKey(HKEY_CURRENT_USER, "A");
    EXPECT_EQ(4, reinterpret_cast<std::intptr_t>(keys[0]));
    EXPECT_EQ(8, reinterpret_cast<std::intptr_t>(keys[1]));
    EXPECT_EQ(12, reinterpret_cast<std::intptr_t>(keys[2]));
    EXPECT_EQ(3u, registry().openHandles());

    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(keys[1]));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(keys[0]));
    EXPECT_EQ(1u, registry().openHandles());
    EXPECT_EQ(keys[0], openedKey(HKEY_CURRENT_USER, "A"));
    EXPECT_EQ(keys[1], openedKey(HKEY_CURRENT_USER, "A"));
    EXPECT_EQ(3u, registry().openHandles());
}

TEST_F(RegistryTest, ClosingWhatIsNotOpenIsHarmless) {
    registry().createKey("HKEY_CURRENT_USER\\A");
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(nullptr));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(kUntouched));
    HKEY key = openedKey(HKEY_CURRENT_USER, "A");
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(key));
    EXPECT_EQ(0u, registry().openHandles());
}

TEST_F(RegistryTest, AnEmptyNameGivesTheSameHandleInTheShortFormAndANewOneInTheLongForm) {
    registry().createKey("HKEY_CURRENT_USER\\A");
    HKEY key = openedKey(HKEY_CURRENT_USER, "A");
    HKEY again = nullptr;
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyA(key, "", &again));
    EXPECT_EQ(key, again);
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(key, "", 0, KEY_READ, &again));
    EXPECT_NE(key, again);
    EXPECT_EQ(2u, registry().openHandles());
}

TEST_F(RegistryTest, ADeniedKeyDoesNotOpenButWhatLiesBelowDoes) {
    registry().createKey("HKEY_LOCAL_MACHINE\\Software\\Secret\\Below");
    ASSERT_TRUE(registry().deny("HKEY_LOCAL_MACHINE\\Software\\Secret"));
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Secret", 0, 1, &key));
    EXPECT_EQ(nullptr, key);
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\Secret"));
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software\\Secret\\New", 0, nullptr, 0,
                                                   KEY_READ, nullptr, &key, nullptr));
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Secret\\Below", 0, 1, &key));
    ASSERT_TRUE(registry().allow("HKEY_LOCAL_MACHINE\\Software\\Secret"));
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Secret", 0, 1, &key));
    EXPECT_FALSE(registry().deny("HKEY_LOCAL_MACHINE\\Software\\Missing"));
}

struct AccessRow {
    REGSAM access;
    LONG query, set, enumValue, enumKey, deleteValue;
};

TEST_F(RegistryTest, TheNtFamilyAllowsWhatTheHandleWasOpenedFor) {
    constexpr LONG kDenied = ERROR_ACCESS_DENIED;
    const AccessRow rows[] = {{0x20000, kDenied, kDenied, kDenied, kDenied, kDenied},
                              {KEY_QUERY_VALUE, 0, kDenied, 0, kDenied, kDenied},
                              {KEY_SET_VALUE, kDenied, 0, kDenied, kDenied, 0},
                              {KEY_ENUMERATE_SUB_KEYS, kDenied, kDenied, kDenied, 0, kDenied},
                              {KEY_READ, 0, kDenied, 0, 0, kDenied},
                              {GENERIC_READ, 0, kDenied, 0, 0, kDenied},
                              {MAXIMUM_ALLOWED, 0, 0, 0, 0, 0}};
    for (const AccessRow& row : rows) {
        registry().createKey("HKEY_CURRENT_USER\\A\\Sub");
        registry().setText("HKEY_CURRENT_USER\\A", "v", "x");
        HKEY key = openedKey(HKEY_CURRENT_USER, "A", row.access);
        char name[16];
        DWORD size = sizeof name;
        const BYTE text[] = "y";
        EXPECT_EQ(row.query, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr)) << row.access;
        EXPECT_EQ(row.set, RegSetValueExA(key, "v", 0, REG_SZ, text, 1)) << row.access;
        EXPECT_EQ(row.enumValue, RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
        EXPECT_EQ(row.enumKey, RegEnumKeyA(key, 0, name, sizeof name)) << row.access;
        EXPECT_EQ(row.deleteValue, RegDeleteValueA(key, "v")) << row.access;
        RegCloseKey(key);
    }
    registry().setNtFamily(false);
    HKEY key = openedKey(HKEY_CURRENT_USER, "A", 0x20000);
    const BYTE text[] = "y";
    EXPECT_EQ(ERROR_SUCCESS, RegSetValueExA(key, "v", 0, REG_SZ, text, 1));
}

TEST_F(RegistryTest, AnEmptyNameDeletesTheOpenedKeyWithReadControlAlone) {
    registry().createKey("HKEY_LOCAL_MACHINE\\Software\\Dead");
    HKEY key = openedKey(HKEY_LOCAL_MACHINE, "Software\\Dead", 0x20000);
    EXPECT_EQ(ERROR_INVALID_PARAMETER, RegDeleteKeyA(key, nullptr));
    EXPECT_TRUE(registry().exists("HKEY_LOCAL_MACHINE\\Software\\Dead"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(key, ""));
    EXPECT_FALSE(registry().exists("HKEY_LOCAL_MACHINE\\Software\\Dead"));
    EXPECT_TRUE(registry().exists("HKEY_LOCAL_MACHINE\\Software"));
    EXPECT_EQ(1u, registry().openHandles());
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    EXPECT_EQ(0u, registry().openHandles());
}

TEST_F(RegistryTest, ADeletedKeyThatIsOpenAnswersKeyDeleted) {
    registry().setText("HKEY_CURRENT_USER\\A", "v", "x");
    HKEY key = openedKey(HKEY_CURRENT_USER, "A");
    ASSERT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    char name[16];
    DWORD size = sizeof name;
    HKEY other = kUntouched;
    const BYTE text[] = "y";
    EXPECT_EQ(ERROR_KEY_DELETED, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, RegSetValueExA(key, "v", 0, REG_SZ, text, 1));
    EXPECT_EQ(ERROR_KEY_DELETED, RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_KEY_DELETED, RegEnumKeyA(key, 0, name, sizeof name));
    EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteValueA(key, "v"));
    EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteKeyA(key, ""));
    EXPECT_EQ(ERROR_KEY_DELETED, RegOpenKeyExA(key, "x", 0, KEY_READ, &other));
    EXPECT_EQ(nullptr, other);
    EXPECT_EQ(ERROR_KEY_DELETED,
              RegCreateKeyExA(key, "x", 0, nullptr, 0, KEY_READ, nullptr, &other, nullptr));

    // A new key of the same name is another key.
    registry().createKey("HKEY_CURRENT_USER\\A");
    EXPECT_EQ(ERROR_KEY_DELETED, RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
}

TEST_F(RegistryTest, TheNtFamilyRefusesToDeleteAKeyWithSubKeys) {
    registry().createKey("HKEY_CURRENT_USER\\A\\B");
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    EXPECT_TRUE(registry().exists("HKEY_CURRENT_USER\\A\\B"));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegDeleteKeyA(HKEY_CURRENT_USER, "A\\Missing"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "A\\B"));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    EXPECT_EQ(0u, registry().keyCount());
}

TEST_F(RegistryTest, The9xFamilyDeletesTheSubTree) {
    registry().setNtFamily(false);
    registry().setText("HKEY_CURRENT_USER\\A\\B\\C", "v", "x");
    registry().createKey("HKEY_CURRENT_USER\\A2");
    HKEY deep = openedKey(HKEY_CURRENT_USER, "A\\B\\C");
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CURRENT_USER, "A"));
    EXPECT_EQ("HKEY_CURRENT_USER\\A2\n", dump(registry()));
    EXPECT_EQ(1u, registry().keyCount());
    EXPECT_EQ(0u, registry().valueCount());
    EXPECT_EQ(ERROR_KEY_DELETED, RegQueryValueExA(deep, "v", nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(deep));
}

TEST_F(RegistryTest, AHiveIsNotDeleted) {
    registry().createKey("HKEY_LOCAL_MACHINE\\Software\\Classes");
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_CURRENT_USER, ""));
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegDeleteKeyA(HKEY_CLASSES_ROOT, ""));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegDeleteKeyA(nullptr, ""));
    EXPECT_FALSE(registry().deleteKey("HKEY_LOCAL_MACHINE"));
    EXPECT_TRUE(registry().exists("HKEY_LOCAL_MACHINE\\Software\\Classes"));
}

TEST_F(RegistryTest, CreatingTellsWhetherTheKeyIsNew) {
    HKEY key = nullptr;
    DWORD done = 0;
    const auto create = [&](const char* path) {
        return RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, &done);
    };
    EXPECT_EQ(ERROR_SUCCESS, create("Software\\Bromvale"));
    EXPECT_EQ(REG_CREATED_NEW_KEY, done);
    EXPECT_EQ(ERROR_SUCCESS, create("SOFTWARE\\BROMVALE"));
    EXPECT_EQ(REG_OPENED_EXISTING_KEY, done);
    EXPECT_EQ(ERROR_BAD_PATHNAME, create("\\Software\\X"));
    EXPECT_EQ(nullptr, key);
    EXPECT_EQ(ERROR_INVALID_PARAMETER, create(std::string(256, 'n').c_str()));
    EXPECT_EQ(ERROR_SUCCESS, create(std::string(255, 'n').c_str()));
    EXPECT_EQ("HKEY_CURRENT_USER\\" + std::string(255, 'n') +
                  "\nHKEY_CURRENT_USER\\Software\nHKEY_CURRENT_USER\\Software\\Bromvale\n",
              dump(registry()));
}

TEST_F(RegistryTest, ClassesRootShowsTheUsersClassesBeforeTheMachines) {
    registry().setText("HKEY_LOCAL_MACHINE\\Software\\Classes\\A", "", "machine");
    registry().setText("HKEY_LOCAL_MACHINE\\Software\\Classes\\B", "", "machine");
    registry().setText("HKEY_CURRENT_USER\\Software\\Classes\\B", "", "user");
    EXPECT_EQ("machine\0"s, registry().value("HKEY_CLASSES_ROOT\\A", "")->data);
    EXPECT_EQ("user\0"s, registry().value("HKEY_CLASSES_ROOT\\B", "")->data);
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyA(HKEY_CLASSES_ROOT, "B"));
    EXPECT_EQ("machine\0"s, registry().value("HKEY_CLASSES_ROOT\\B", "")->data);
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_SUCCESS,
              RegCreateKeyExA(HKEY_CLASSES_ROOT, "C\\D", 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr));
    EXPECT_TRUE(registry().exists("HKEY_LOCAL_MACHINE\\Software\\Classes\\C\\D"));
    EXPECT_EQ((std::vector<std::string>{"A", "B", "C"}), registry().subKeys("HKEY_CLASSES_ROOT"));
}

TEST_F(RegistryTest, ClassesRootIsEmptyWhereThereAreNoClasses) {
    char name[16];
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumKeyA(HKEY_CLASSES_ROOT, 0, name, sizeof name));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExA(HKEY_CLASSES_ROOT, "CLSID", 0, KEY_READ, &key));
}

TEST_F(RegistryTest, SubKeysEnumerateInTheOrderOfTheirUpperCasedNames) {
    for (const char* name :
         {"zeta", "_under", "Beta", "alpha", "[x]", "Ähre", "ABC", "1st", "ähnlich", "Ÿ"}) {
        registry().createKey("HKEY_CURRENT_USER\\S\\"s + name);
    }
    const std::vector<std::string> expected = {"1st", "ABC",    "alpha",   "Beta", "zeta",
                                               "[x]", "_under", "ähnlich", "Ähre", "Ÿ"};
    EXPECT_EQ(expected, registry().subKeys("HKEY_CURRENT_USER\\S"));
    HKEY key = openedKey(HKEY_CURRENT_USER, "S");
    char name[16];
    for (DWORD i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(ERROR_SUCCESS, RegEnumKeyA(key, i, name, sizeof name));
        EXPECT_EQ(expected[i], name);
    }
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumKeyA(key, 10, name, sizeof name));
}

TEST_F(RegistryTest, AKeyNameNeedsRoomForItsNul) {
    registry().createKey("HKEY_CURRENT_USER\\S\\SubKey");
    HKEY key = openedKey(HKEY_CURRENT_USER, "S");
    char name[16] = "###############";
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumKeyA(key, 0, name, 6));
    EXPECT_STREQ("###############", name);
    EXPECT_EQ(ERROR_SUCCESS, RegEnumKeyA(key, 0, name, 7));
    EXPECT_STREQ("SubKey", name);
    WCHAR wide[16] = u"";
    DWORD size = 6;
    EXPECT_EQ(ERROR_MORE_DATA, RegEnumKeyExW(key, 0, wide, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(6u, size);
    size = 7;
    EXPECT_EQ(ERROR_SUCCESS, RegEnumKeyExW(key, 0, wide, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(6u, size);
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, RegEnumKeyExW(key, 1, wide, &size, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegEnumKeyA(nullptr, 0, name, sizeof name));
}

// A key's source is a number of one byte.
class NoKeys : public KeySource {
    void fill(RegistryTree&, RegistryKey*, std::uint32_t) override {}
};

TEST_F(RegistryTest, TwoHundredAndFiftyFiveHivesAreTheMost) {
    const auto mount = [](std::shared_ptr<KeySource> source) {
        RegistryKey* const key = registry().makeKey(1, "Hive");
        registry().tree().mount(key, std::move(source), 7);
        return registry().tree().originOf(key);
    };
    const auto first = std::make_shared<NoKeys>();
    EXPECT_EQ(mount(first).source, first.get());
    std::shared_ptr<KeySource> last;
    for (int i = 1; i < 255; ++i) {
        last = std::make_shared<NoKeys>();
        EXPECT_EQ(mount(last).source, last.get()) << i;
    }
    EXPECT_EQ(mount(first).source, first.get()) << "one that is known counts once";
    EXPECT_EQ(mount(last).place, 7u);
    try {
        mount(std::make_shared<NoKeys>());
        FAIL();
    } catch (const std::length_error& error) {
        EXPECT_STREQ(error.what(), "too many hives");
    }
}

}  // namespace
}  // namespace bromvale::offline::testing

// What the functions of the offline registry answer call by call: rights of handles, sizes, wrong arguments,
// and the events that tell of changes.
#include "platform/files.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

class CallTest : public RegistryTest {
  protected:
    CallTest() {
        registry().createKey("HKEY_CURRENT_USER\\K\\Sub");
        registry().setText(u"HKEY_CURRENT_USER\\K", u"Wert", u"abc");
        key_ = openedKey(HKEY_CURRENT_USER, "K");
    }
    // What a handle that was opened so may do: "q" query, "s" set, "e" enumerate.
    static std::string allowed(REGSAM access) {
        HKEY key = nullptr;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, "K", 0, access, &key) != ERROR_SUCCESS) return "none";
        std::string result;
        char name[32];
        if (RegQueryValueExA(key, "Wert", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS) result += 'q';
        if (RegSetValueExA(key, "Neu", 0, REG_SZ, nullptr, 0) == ERROR_SUCCESS) result += 's';
        if (RegEnumKeyA(key, 0, name, sizeof name) == ERROR_SUCCESS) result += 'e';
        RegCloseKey(key);
        return result;
    }
    // "kind text caption number" of what happened.
    static std::vector<std::string> told() {
        std::vector<std::string> lines;
        for (const Event& event : machine().events.all()) {
            const char* kind = event.kind == EventKind::KeyMade        ? "made "
                               : event.kind == EventKind::KeyDeleted   ? "deleted "
                               : event.kind == EventKind::ValueSet     ? "set "
                               : event.kind == EventKind::ValueDeleted ? "lost "
                                                                       : "? ";
            lines.push_back(kind + event.text + " " + event.caption + " " + std::to_string(event.number));
        }
        return lines;
    }
    HKEY key_ = nullptr;
};

TEST_F(CallTest, AHandleMayDoWhatItWasOpenedFor) {
    EXPECT_EQ(allowed(KEY_QUERY_VALUE), "q");
    EXPECT_EQ(allowed(KEY_SET_VALUE), "s");
    EXPECT_EQ(allowed(KEY_ENUMERATE_SUB_KEYS), "e");
    EXPECT_EQ(allowed(KEY_READ), "qe");
    EXPECT_EQ(allowed(KEY_WRITE), "s");
    EXPECT_EQ(allowed(REGSAM{GENERIC_READ}), "qe");
    EXPECT_EQ(allowed(REGSAM{GENERIC_WRITE}), "s");
    EXPECT_EQ(allowed(REGSAM{GENERIC_EXECUTE}), "qe");
    EXPECT_EQ(allowed(REGSAM{GENERIC_ALL}), "qse");
    EXPECT_EQ(allowed(MAXIMUM_ALLOWED), "qse");
    EXPECT_EQ(allowed(0), "");
    registry().setNtFamily(false);
    EXPECT_EQ(allowed(0), "qse") << "the 9x family looks at no rights";
}

TEST_F(CallTest, WrongArgumentsAreRefused) {
    HKEY key = key_;
    DWORD size = 0;
    char name[32];
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "K", 0, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "K", nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegOpenKeyExA(nullptr, "K", 0, KEY_READ, &key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(key, key_) << "left alone for a null handle only";
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "fehlt", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key, nullptr);
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "K", 1, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "K", 0, nullptr, 0, KEY_READ, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExA(key_, "Wert", &size, nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
    DWORD nameSize = sizeof name;
    BYTE data[8];
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, &size, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, nullptr, data, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryInfoKeyA(key_, nullptr, nullptr, &size, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryInfoKeyA(key_, name, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    const std::string longName(16384, 'n');
    EXPECT_EQ(RegSetValueExA(key_, longName.c_str(), 0, REG_SZ, nullptr, 0), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegSetValueExA(key_, longName.c_str() + 1, 0, REG_SZ, nullptr, 0), ERROR_SUCCESS);
}

TEST_F(CallTest, AnAnsiPathHasItsLimitOnTheNtFamily) {
    const auto opened = [](std::size_t length) {
        HKEY key = nullptr;
        return RegOpenKeyExA(HKEY_CURRENT_USER, std::string(length, 'x').c_str(), 0, KEY_READ, &key);
    };
    EXPECT_EQ(opened(260), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(opened(261), ERROR_MORE_DATA);
    registry().setNtFamily(false);
    EXPECT_EQ(opened(261), ERROR_FILE_NOT_FOUND);
}

TEST_F(CallTest, InfoFillsEachOfItsAnswers) {
    registry().setText(u"HKEY_CURRENT_USER\\K", u"Gr\u00F6\u00DFe\u0141", u"\u0141\u00F3");
    char keyClass[4] = "xyz";
    DWORD classSize = 4, keys = 9, longestKey = 9, longestClass = 9, values = 9, longestName = 9,
          longestData = 9, security = 9;
    FILETIME time{7, 7};
    ASSERT_EQ(RegQueryInfoKeyA(key_, keyClass, &classSize, nullptr, &keys, &longestKey, &longestClass,
                               &values, &longestName, &longestData, &security, &time),
              ERROR_SUCCESS);
    EXPECT_EQ(keyClass[0], '\0');
    EXPECT_EQ(keyClass[1], 'y');
    EXPECT_EQ(classSize, 0u);
    EXPECT_EQ(keys, 1u);
    EXPECT_EQ(longestKey, 3u);
    EXPECT_EQ(longestClass, 0u);
    EXPECT_EQ(values, 2u);
    EXPECT_EQ(longestName, 6u);
    EXPECT_EQ(longestData, 4u) << "bytes of the code page, with the NUL";
    EXPECT_EQ(security, 0u);
    EXPECT_EQ(time.dwLowDateTime, 0u);
    EXPECT_EQ(time.dwHighDateTime, 0u);
    WCHAR wideClass[2] = {'x', 'y'};
    classSize = 2;
    ASSERT_EQ(RegQueryInfoKeyW(key_, wideClass, &classSize, nullptr, nullptr, &longestKey, nullptr, nullptr,
                               &longestName, &longestData, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(wideClass[0], u'\0');
    EXPECT_EQ(longestKey, 3u);
    EXPECT_EQ(longestName, 6u);
    EXPECT_EQ(longestData, 8u) << "two bytes a unit";
    classSize = 0;
    keyClass[0] = 'x';
    EXPECT_EQ(RegQueryInfoKeyA(key_, keyClass, &classSize, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(keyClass[0], 'x') << "no room";
}

TEST_F(CallTest, WideSubKeysAreEnumeratedWithTheirSizes) {
    WCHAR name[8] = {};
    DWORD size = 4;
    WCHAR keyClass[2] = {'x', 'y'};
    DWORD classSize = 2;
    FILETIME time{7, 7};
    EXPECT_EQ(RegEnumKeyExW(key_, 0, name, &size, nullptr, keyClass, &classSize, &time), ERROR_SUCCESS);
    EXPECT_EQ(std::u16string(name), u"Sub");
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(keyClass[0], u'\0');
    EXPECT_EQ(classSize, 0u);
    EXPECT_EQ(time.dwLowDateTime, 0u);
    size = 3;
    EXPECT_EQ(RegEnumKeyExW(key_, 0, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    EXPECT_EQ(size, 3u);
    size = 8;
    EXPECT_EQ(RegEnumKeyExW(key_, 1, name, &size, nullptr, nullptr, nullptr, nullptr), ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(RegEnumKeyExW(key_, 0, nullptr, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumKeyExW(key_, 0, name, nullptr, nullptr, nullptr, nullptr, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumKeyExW(key_, 0, name, &size, &size, nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegEnumKeyExW(nullptr, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_INVALID_HANDLE);
}

TEST_F(CallTest, WideDataComeInTwoBytesAUnitWhateverKeepsThem) {
    const auto query = [this](const WCHAR* name, DWORD room) {
        BYTE data[16];
        std::memset(data, 0xEE, sizeof data);
        DWORD size = room;
        DWORD type = 99;
        const LONG result = RegQueryValueExW(key_, name, nullptr, &type, data, &size);
        return std::to_string(result) + " " + std::to_string(type) + " " + std::to_string(size) + " " +
               hexOf({reinterpret_cast<char*>(data), room});
    };
    registry().setText(u"HKEY_CURRENT_USER\\K", u"Fern", u"\u0141");
    registry().setValue(u"HKEY_CURRENT_USER\\K", u"Ohne", REG_SZ, "a\0"sv);
    EXPECT_EQ(query(u"Wert", 8), "0 1 8 6100620063000000");
    EXPECT_EQ(query(u"Wert", 7), "234 1 8 eeeeeeeeeeeeee");
    EXPECT_EQ(query(u"Fern", 4), "0 1 4 41010000");
    EXPECT_EQ(query(u"Ohne", 2), "0 1 2 6100");
    EXPECT_EQ(query(u"Ohne", 4), "0 1 2 61000000") << "a NUL where there is room";
    EXPECT_EQ(query(u"Ohne", 3), "0 1 2 6100ee");
    DWORD size = 99;
    EXPECT_EQ(RegQueryValueExW(key_, u"Wert", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(RegQueryValueExW(key_, u"Fern", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 4u);
}

TEST_F(CallTest, ChangesAreToldAsARegistryFileWritesThem) {
    machine().events.clear();
    HKEY made = nullptr;
    DWORD disposition = 9;
    ASSERT_EQ(RegCreateKeyExA(key_, "Neu", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
    ASSERT_EQ(RegCreateKeyExA(key_, "Neu", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &made, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));
    const auto set = [made](const char* name, DWORD type, const char* data, DWORD size) {
        EXPECT_EQ(RegSetValueExA(made, name, 0, type, reinterpret_cast<const BYTE*>(data), size),
                  ERROR_SUCCESS);
    };
    set("a", REG_SZ, "abc", 3);
    set(nullptr, REG_SZ, "abc", 2);
    constexpr char kNumber[] = {'\x9F', 1, 0, 0};
    set("n", REG_DWORD, kNumber, sizeof kNumber);
    set("x", REG_EXPAND_SZ, "a", 1);
    set("l", REG_BINARY, "", 0);
    EXPECT_EQ(RegDeleteValueA(made, "A"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(made, ""), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(key_, "neu"), ERROR_SUCCESS);
    const std::string path = "HKEY_CURRENT_USER\\K\\Neu ";
    EXPECT_EQ(told(),
              (std::vector<std::string>{
                  "made " + path + " 0", "set " + path + "\"a\"=\"abc\" 1",
                  "set " + path + "@=\"ab\" without NUL 1", "set " + path + "\"n\"=hex(4):9f,01,00,00 4",
                  "set " + path + "\"x\"=hex(2):61,00 2", "set " + path + "\"l\"=hex(3): 3",
                  "lost " + path + "\"A\" 0", "lost " + path + "@ 0", "deleted " + path + " 0"}));
}

TEST_F(CallTest, ThoseWhoSetUpAMachineAreToldWhatDoesNotGo) {
    EXPECT_FALSE(registry().createKey("HKEY_NIRGENDS\\K"));
    EXPECT_FALSE(registry().createKey("HKEY_CURRENT_USER\\" + std::string(256, 'k')));
    EXPECT_TRUE(registry().createKey("HKEY_CURRENT_USER\\" + std::string(255, 'k')));
    EXPECT_FALSE(registry().setText("HKEY_CURRENT_USER\\K", std::string(16384, 'n'), "x"));
    EXPECT_TRUE(registry().setText("HKEY_CURRENT_USER\\K", std::string(16383, 'n'), "x"));
    EXPECT_FALSE(registry().setNumber("HKEY_NIRGENDS", "n", 1));
    EXPECT_TRUE(registry().setNumber("HKEY_CURRENT_USER\\K", "n", 0x12345678));
    EXPECT_EQ(hexOf(registry().value("HKEY_CURRENT_USER\\K", "N")->data), "78563412");
    EXPECT_FALSE(registry().deleteKey("HKEY_CURRENT_USER\\fehlt"));
    EXPECT_FALSE(registry().deleteKey("HKEY_CURRENT_USER"));
    EXPECT_TRUE(registry().deleteKey("HKEY_CURRENT_USER\\K\\Sub"));
    EXPECT_FALSE(registry().deleteValue("HKEY_CURRENT_USER\\fehlt", "n"));
    EXPECT_FALSE(registry().deleteValue("HKEY_CURRENT_USER\\K", "fehlt"));
    EXPECT_TRUE(registry().deleteValue("HKEY_CURRENT_USER\\K", "n"));
    EXPECT_FALSE(registry().value("HKEY_CURRENT_USER\\fehlt", "n"));
    EXPECT_TRUE(registry().values("HKEY_CURRENT_USER\\fehlt").empty());
    EXPECT_TRUE(registry().subKeys("HKEY_CURRENT_USER\\fehlt").empty());
    EXPECT_EQ(registry().subKeys("HKEY_CURRENT_USER"),
              (std::vector<std::string>{"K", std::string(255, 'k')}));
}

TEST_F(CallTest, KeysThatNobodyReadFromAFileHaveNoOrigin) {
    const RegistryTree& tree = registry().tree();
    EXPECT_EQ(tree.originOf(nullptr).source, nullptr);
    EXPECT_EQ(tree.originOf(registry().seenAt(u"HKEY_CURRENT_USER\\K")).source, nullptr);
    EXPECT_EQ(registry().seenAt(u"HKEY_CURRENT_USER\\fehlt"), nullptr);
    EXPECT_EQ(registry().seenAt(u"HKEY_NIRGENDS\\K"), nullptr);
}

// A handle of a hive is a 32-bit number, which a caller may have widened either way.
TEST_F(CallTest, OnlyTheHivesOwnNumbersAreHives) {
    const auto isHive = [](std::int64_t number) {
        return Registry::isHive(reinterpret_cast<HKEY>(static_cast<std::intptr_t>(number)));
    };
    for (const std::int64_t number : {0x80000000ll, 0x80000006ll, -0x80000000ll, -0x7FFFFFFAll})
        EXPECT_TRUE(isHive(number)) << number;
    for (const std::int64_t number : {0x7FFFFFFFll, 0x80000007ll, 0x180000000ll, -0x7FFFFFF9ll, 0ll, 1ll})
        EXPECT_FALSE(isHive(number)) << number;
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, ""), ERROR_ACCESS_DENIED);
}

}  // namespace
}  // namespace bromvale::offline::testing

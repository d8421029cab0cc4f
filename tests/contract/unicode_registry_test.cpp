// Names and texts that the code page can't hold: what the ANSI functions make of them, and the wide ones
// tell.
#include "platform/machine.h"
#include "tests/contract/unicode_machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using namespace std::string_literals;

const WCHAR* wide(const std::u16string& text) {
    return reinterpret_cast<const WCHAR*>(text.c_str());
}

std::string bytesOf(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    return bytes;
}

class UnicodeRegistry : public TestMachine {
  protected:
    UnicodeRegistry() { makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A"); }
    ~UnicodeRegistry() override {
        if (key_ != nullptr) RegCloseKey(key_);
        removeWideThings();
    }
    HKEY key() {
        if (key_ == nullptr) {
            EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\A", 0, KEY_READ, &key_), 0);
        }
        return key_;
    }
    static LONG openA(const char* path) {
        HKEY opened = nullptr;
        const LONG result = RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &opened);
        if (result == 0) RegCloseKey(opened);
        return result;
    }
    static LONG openW(const std::u16string& path) {
        HKEY opened = nullptr;
        const LONG result = RegOpenKeyExW(HKEY_LOCAL_MACHINE, wide(path), 0, KEY_READ, &opened);
        if (result == 0) RegCloseKey(opened);
        return result;
    }
    std::vector<std::u16string> wideNames() {
        std::vector<std::u16string> names;
        for (DWORD i = 0;; ++i) {
            WCHAR name[256];
            DWORD size = 256;
            if (RegEnumKeyExW(key(), i, name, &size, nullptr, nullptr, nullptr, nullptr) != 0) return names;
            names.emplace_back(reinterpret_cast<const char16_t*>(name), size);
        }
    }
    std::vector<std::string> ansiNames() {
        std::vector<std::string> names;
        char name[256];
        for (DWORD i = 0; RegEnumKeyA(key(), i, name, sizeof name) == 0; ++i) names.emplace_back(name);
        return names;
    }
    // What RegQueryValueExA gives, with its code where that is not 0.
    std::string ansiData(const char* name, DWORD room = 64) {
        char data[64];
        DWORD size = room;
        const LONG code =
            RegQueryValueExA(key(), name, nullptr, nullptr, reinterpret_cast<BYTE*>(data), &size);
        if (code != 0) return "error " + std::to_string(code) + ", size " + std::to_string(size);
        return {data, size};
    }
    void set(std::u16string_view name, DWORD type, std::string_view bytes) {
        setWideValue(HKEY_LOCAL_MACHINE, u"Software\\A", name, type, bytes);
    }

  private:
    HKEY key_ = nullptr;
};

TEST_F(UnicodeRegistry, SubKeysAreOrderedByTheirRealNames) {
    const std::vector<std::u16string> names{u"lap",      u"Zdjecia", u"Zdj\u0119cia",
                                            u"\u0142ap", u"\u03A9",  u"\uFF41"};
    for (const std::size_t i : {5, 3, 1, 4, 2, 0})
        makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\" + names[i]);
    EXPECT_EQ(wideNames(), names);
    EXPECT_EQ(ansiNames(), (std::vector<std::string>{"lap", "Zdjecia", "Zdjecia", "lap", "O", "a"}));
}

TEST_F(UnicodeRegistry, AnAnsiNameOpensOnlyWhatItNamesExactly) {
    makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\\u0142ap");
    makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\Gr\u00FC\u00DFe");
    EXPECT_EQ(openA("Software\\A\\lap"), 2);
    EXPECT_EQ(openA("Software\\A\\?ap"), 2);
    EXPECT_EQ(openA("Software\\A\\GRÜßE"), 0);
    EXPECT_EQ(openW(u"Software\\A\\\u0142ap"), 0);
    EXPECT_EQ(openW(u"Software\\A\\\u0141AP"), 0);
    EXPECT_EQ(openW(u"Software\\A\\lap"), 2);
}

TEST_F(UnicodeRegistry, NamesMatchWithoutCaseInEveryScript) {
    makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\\u0119\u03B1\u043F\u0451\u0561\uFF41");
    EXPECT_EQ(openW(u"Software\\A\\\u0118\u0391\u041F\u0401\u0531\uFF21"), 0);
    makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\\u0131\u00DF");
    EXPECT_EQ(openW(u"Software\\A\\I\u00DF"), 2);
    EXPECT_EQ(openW(u"Software\\A\\\u0131SS"), 2);
}

TEST_F(UnicodeRegistry, TextsComeAsTheNearestLettersThenAsQuestionMarks) {
    set(u"v", REG_SZ, bytesOf(u"a\u0141\u0416\u00FC\0"s));
    EXPECT_EQ(ansiData("v"), "aL?\xFC\0"s);
    EXPECT_EQ(ansiData("v", 4), "error 234, size 5");
    set(u"v", REG_EXPAND_SZ, bytesOf(u"%x%\\\uFF3C\u2024\uFF0E\0"s));
    EXPECT_EQ(ansiData("v"), "%x%\\\\\xB7.\0"s);
    set(u"v", REG_MULTI_SZ, bytesOf(u"a\0\u0141\0\0"s));
    EXPECT_EQ(ansiData("v"), "a\0L\0\0"s);
    set(u"v", REG_SZ, bytesOf(u"\U0001F600\0"s));
    EXPECT_EQ(ansiData("v"), "??\0"s);
    set(u"v", REG_BINARY, "\x41\x01\x00"s);
    EXPECT_EQ(ansiData("v"), "\x41\x01\x00"s);
}

TEST_F(UnicodeRegistry, AnOddByteAtATextsEndDoesNotCount) {
    set(u"v", REG_SZ, "a\0b"s);
    EXPECT_EQ(ansiData("v"), "a");
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExW(key(), wide(u"v"), nullptr, nullptr, nullptr, &size), 0);
    EXPECT_EQ(size, 3u);
}

TEST_F(UnicodeRegistry, WideFunctionsGiveEveryUnit) {
    const std::string text = bytesOf(u"C:\\u017Bycie\\\xD83D\0"s);
    set(u"\u017Bycie", REG_SZ, text);
    WCHAR name[32];
    BYTE data[64];
    DWORD nameSize = 32;
    DWORD dataSize = sizeof data;
    DWORD type = 0;
    EXPECT_EQ(RegEnumValueW(key(), 0, name, &nameSize, nullptr, &type, data, &dataSize), 0);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(name)), u"\u017Bycie");
    EXPECT_EQ(nameSize, 5u);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(data), dataSize), text);
    dataSize = sizeof data;
    EXPECT_EQ(RegQueryValueExW(key(), wide(u"\u017BYCIE"), nullptr, &type, data, &dataSize), 0);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(data), dataSize), text);
    char ansiName[32];
    nameSize = sizeof ansiName;
    EXPECT_EQ(RegEnumValueA(key(), 0, ansiName, &nameSize, nullptr, &type, nullptr, nullptr), 0);
    EXPECT_STREQ(ansiName, "Zycie");
    EXPECT_EQ(RegQueryValueExA(key(), "Zycie", nullptr, nullptr, nullptr, nullptr), 2);
}

TEST_F(UnicodeRegistry, SizesAreThoseOfTheOwnFamily) {
    makeWideKey(HKEY_LOCAL_MACHINE, u"Software\\A\\\u0142\u0142\u0142");
    set(u"\u017Bycie", REG_SZ, bytesOf(u"ab\u0141\0"s));
    DWORD subKey = 0;
    DWORD name = 0;
    DWORD data = 0;
    EXPECT_EQ(RegQueryInfoKeyW(key(), nullptr, nullptr, nullptr, nullptr, &subKey, nullptr, nullptr, &name,
                               &data, nullptr, nullptr),
              0);
    EXPECT_EQ(subKey, 3u);
    EXPECT_EQ(name, 5u);
    EXPECT_EQ(data, 8u);
    EXPECT_EQ(RegQueryInfoKeyA(key(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &name,
                               nullptr, nullptr, nullptr),
              0);
    EXPECT_EQ(name, 5u);
    EXPECT_EQ(ansiData("\xAF"), "error 2, size 64");
}

// It turns the text into a buffer that holds so many; the wide function has no such limit.
TEST_F(UnicodeRegistry, AnAnsiSubKeyOfMoreThan260CharactersGives234) {
    const std::string base = "Software\\A";
    const std::string part = "\\" + std::string(49, 'n');
    const std::string path = base + part + part + part + part + part;
    ASSERT_EQ(path.size(), 260u);
    makeWideKey(HKEY_LOCAL_MACHINE, std::u16string(path.begin(), path.end()));
    EXPECT_EQ(openA(path.c_str()), 0);
    EXPECT_EQ(openA((path + "\\").c_str()), 234);
    EXPECT_EQ(openA((path + "\\nichts").c_str()), 234);
    EXPECT_EQ(openW(std::u16string(path.begin(), path.end()) + u"\\nichts"), 2);
    HKEY opened = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, (path + "\\nichts").c_str(), &opened), 234);
}

}  // namespace
}  // namespace bromvale::testing

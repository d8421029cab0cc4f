// Registry files with names and texts beyond the code page: nothing merges, nothing becomes another text.
#include <cstdio>
#include <fstream>
#include <iterator>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/reg_files/reg_file.h"
#include "tests/offline/registry_test_support.h"

namespace bromvale::offline::testing {
namespace {

std::string utf16(std::u16string_view text) {
    return "\xFF\xFE" + wideBytesFromStored(storedFromWide(text));
}

std::string bytesOf(std::u16string_view text) {
    return wideBytesFromStored(storedFromWide(text));
}

class UnicodeRegFileTest : public RegistryTest {
  protected:
    ~UnicodeRegFileTest() override {
        std::remove(path_.c_str());
        textRules().codePage = 1252;
    }
    std::string saved() {
        EXPECT_FALSE(saveRegFile(registry(), path_));
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    const std::string path_ = ::testing::TempDir() + "bromvale_" +
                              ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".reg";
};

// In the order of the real names, with every kind of text. Half a character stands as bytes.
constexpr std::u16string_view kFile =
    u"Windows Registry Editor Version 5.00\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A]\r\n"
    u"\"\u0142\"=\"C:\\\\users\\\\\u0141ukasz\\\\srv.exe\"\r\n"
    u"\"l\"=\"Zdj\u0119cia\"\r\n"
    u"\"\U0001F600\"=hex(1):16,04,3d,d8,00,00\r\n"
    u"\"weit\"=hex(2):41,01,00,00\r\n"
    u"\"viele\"=hex(7):16,04,00,00,61,00,00,00,00,00\r\n"
    u"\"ungerade\"=hex(1):61,00,62\r\n"
    u"\"ohne\"=hex(1):41,01\r\n"
    u"\"zwei\"=hex(1):41,01,00,00,42,00,00,00\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A\\lap]\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A\\\u0142ap]\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A\\\u03A9]\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A\\\u0416]\r\n"
    u"\r\n[HKEY_CURRENT_USER\\A\\\uFF1F]\r\n";

TEST_F(UnicodeRegFileTest, WhatIsReadIsSavedAsItWas) {
    const std::string file = utf16(kFile);
    ASSERT_FALSE(loadRegText(file, "x.reg", registry()));
    EXPECT_EQ(6u, registry().keyCount());
    EXPECT_EQ(8u, registry().valueCount());
    const auto odd = registry().wideValue(u"HKEY_CURRENT_USER\\A", u"ungerade");
    ASSERT_TRUE(odd);
    EXPECT_EQ("a\0b"s, odd->bytes);
    EXPECT_EQ(file, saved());
}

TEST_F(UnicodeRegFileTest, NamesThatLackALetterStayApart) {
    ASSERT_FALSE(loadRegText(utf16(kFile), "x.reg", registry()));
    EXPECT_EQ((std::vector<std::u16string>{u"lap", u"\u0142ap", u"\u03A9", u"\u0416", u"\uFF1F"}),
              registry().wideSubKeys(u"HKEY_CURRENT_USER\\A"));
    const auto value = registry().wideValue(u"HKEY_CURRENT_USER\\A", u"\u0141");
    ASSERT_TRUE(value) << "without case";
    EXPECT_EQ(bytesOf(u"C:\\users\\\u0141ukasz\\srv.exe\0"s), value->bytes);
    EXPECT_EQ("C:\\users\\Lukasz\\srv.exe\0"s, registry().values("HKEY_CURRENT_USER\\A").front().data);
    EXPECT_FALSE(registry().exists("HKEY_CURRENT_USER\\A\\?"));
    EXPECT_TRUE(registry().deleteKey(u"HKEY_CURRENT_USER\\A\\\u0141AP"));
    EXPECT_TRUE(registry().exists("HKEY_CURRENT_USER\\A\\lap"));
}

TEST_F(UnicodeRegFileTest, LinesOfAnyLengthSurviveTheWindowOfTheReader) {
    std::u16string text;
    for (int i = 0; i < 60000; ++i) text += static_cast<char16_t>(0x0100 + i % 0x2000);
    registry().setText(u"HKEY_CURRENT_USER\\B", u"\u0142", text);
    const std::string file = saved();
    registry().clear();
    ASSERT_FALSE(loadRegText(file, "x.reg", registry()));
    EXPECT_TRUE(registry().wideValue(u"HKEY_CURRENT_USER\\B", u"\u0142")->bytes == bytesOf(text + u'\0'));
}

TEST_F(UnicodeRegFileTest, NameLimitsCountCharacters) {
    const std::u16string longest(255, u'\u0416');
    const std::u16string head = u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\";
    EXPECT_FALSE(loadRegText(utf16(head + longest + u"]\r\n"), "x.reg", registry()));
    const auto error = loadRegText(utf16(head + longest + u"x]\r\n"), "x.reg", registry());
    ASSERT_TRUE(error);
    EXPECT_EQ("a key name is longer than 255 characters", error->reason);
    EXPECT_TRUE(registry().createKey(u"HKEY_CURRENT_USER\\" + longest));
    EXPECT_FALSE(registry().createKey(u"HKEY_CURRENT_USER\\" + longest + u"x"));
}

TEST_F(UnicodeRegFileTest, AnAnsiFileIsOfTheMachinesCodePage) {
    textRules().codePage = 1250;
    ASSERT_FALSE(
        loadRegText("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\\xB3"
                    "ap]\r\n\"\xEA\"=\"\xA3\"\r\n",
                    "x.reg", registry()));
    EXPECT_EQ(bytesOf(u"\u0141\0"s), registry().wideValue(u"HKEY_CURRENT_USER\\\u0142ap", u"\u0119")->bytes);
    textRules().codePage = 932;
    ASSERT_FALSE(loadRegText("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\\x95\x5C]\r\n\"a\"=\"\x83\x5C\"\r\n",
                             "x.reg", registry()));
    EXPECT_EQ(bytesOf(u"\u30BD\0"s), registry().wideValue(u"HKEY_CURRENT_USER\\\u8868", u"a")->bytes);
}

TEST_F(UnicodeRegFileTest, TheShellEntersFilesOfEveryForm) {
    mergeRegText(
        utf16(u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\\u0142]\r\nfalsch\r\n"
              u"\"a\"=\"\u0416\"\r\n"),
        registry());
    EXPECT_EQ(bytesOf(u"\u0416\0"s), registry().wideValue(u"HKEY_CURRENT_USER\\\u0142", u"a")->bytes);
    textRules().codePage = 932;
    mergeRegText(
        "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\B]\r\nfalsch\r\n\"a\"=\"\x83\x5C"
        "b\"\r\n",
        registry());
    EXPECT_EQ(bytesOf(u"\u30BD"
                      u"b\0"s),
              registry().wideValue(u"HKEY_CURRENT_USER\\B", u"a")->bytes);
}

TEST_F(UnicodeRegFileTest, The9xFamilyKnowsWhatItsCodePageHolds) {
    registry().setNtFamily(false);
    ASSERT_FALSE(loadRegText(utf16(kFile), "x.reg", registry()));
    EXPECT_EQ((std::vector<std::u16string>{u"lap", u"O", u"_"}),
              registry().wideSubKeys(u"HKEY_CURRENT_USER\\A"));
    const auto values = registry().wideValues(u"HKEY_CURRENT_USER\\A");
    EXPECT_EQ(u"l", values.front().name);
    EXPECT_EQ(bytesOf(u"Zdjecia\0"s), values.front().bytes) << "the second one of this name";
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_CALL_NOT_IMPLEMENTED, RegOpenKeyExW(HKEY_CURRENT_USER, u"A", 0, KEY_READ, &key));
    WCHAR name[8];
    DWORD size = 8;
    EXPECT_EQ(ERROR_CALL_NOT_IMPLEMENTED,
              RegEnumKeyExW(HKEY_CURRENT_USER, 0, name, &size, nullptr, nullptr, nullptr, nullptr));
}

}  // namespace
}  // namespace bromvale::offline::testing

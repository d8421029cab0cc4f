// What is written for the registry editor, byte by byte.
#include "base/registry_file_text.h"

#include <gtest/gtest.h>

namespace bromvale::testing {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t kText = 1;
constexpr std::uint32_t kExpandText = 2;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;
constexpr std::uint32_t kLink = 6;
constexpr std::uint32_t kTexts = 7;

std::string narrowValue(std::string_view name, std::uint32_t type, std::string_view data,
                        bool singleBytes = true) {
    RegistryFileText<char> file(singleBytes);
    file.value(name, type, data);
    return file.bytes();
}

// UTF-16LE as Windows keeps a text.
std::string wideBytes(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

// Expected texts are given as they read; the file has two bytes a character.
std::string wideValue(std::u16string_view name, std::uint32_t type, std::string_view data) {
    RegistryFileText<char16_t> file;
    file.value(name, type, data);
    return file.bytes();
}

TEST(RegistryFileText, FilesBeginWithTheirForm) {
    EXPECT_EQ(RegistryFileText<char>::header(), "REGEDIT4\r\n");
    EXPECT_EQ(RegistryFileText<char16_t>::header(),
              "\xFF\xFE" + wideBytes(u"Windows Registry Editor Version 5.00\r\n"));
}

TEST(RegistryFileText, AKeyHasABlankLineBeforeItAndItsNameAsItIs) {
    RegistryFileText<char> file;
    file.key("HKEY_LOCAL_MACHINE\\Software\\[a]\\-b \\\xE4");
    EXPECT_EQ(file.bytes(), "\r\n[HKEY_LOCAL_MACHINE\\Software\\[a]\\-b \\\xE4]\r\n");
    RegistryFileText<char16_t> wide;
    wide.key(u"HKEY_CURRENT_USER\\\u0141\U0001F600");
    EXPECT_EQ(wide.bytes(), wideBytes(u"\r\n[HKEY_CURRENT_USER\\\u0141\U0001F600]\r\n"));
}

TEST(RegistryFileText, ATextWithOneNulAtItsEndStandsBetweenQuotes) {
    EXPECT_EQ(narrowValue("", kText, "C:\\x \"y\"\0"s), "@=\"C:\\\\x \\\"y\\\"\"\r\n");
    EXPECT_EQ(narrowValue("a\\\"", kText, "\\\0"s), "\"a\\\\\\\"\"=\"\\\\\"\r\n");
    EXPECT_EQ(narrowValue(" b ", kText, " ;x \0"s), "\" b \"=\" ;x \"\r\n");
    EXPECT_EQ(narrowValue("leer", kText, "\0"s), "\"leer\"=\"\"\r\n");
    EXPECT_EQ(narrowValue("\xE4", kText, "\xF6\x80\0"s), "\"\xE4\"=\"\xF6\x80\"\r\n");
    EXPECT_EQ(wideValue(u"\u0142", kText, wideBytes(u"\u0105\\\0"s)),
              wideBytes(u"\"\u0142\"=\"\u0105\\\\\"\r\n"));
}

TEST(RegistryFileText, EveryOtherTextStandsAsBytes) {
    EXPECT_EQ(narrowValue("n", kText, ""), "\"n\"=hex(1):\r\n");
    EXPECT_EQ(narrowValue("n", kText, "a"), "\"n\"=hex(1):61\r\n");
    EXPECT_EQ(narrowValue("n", kText, "a\0\0"s), "\"n\"=hex(1):61,00,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "a\0b\0"s), "\"n\"=hex(1):61,00,62,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "a\r\nb\0"s), "\"n\"=hex(1):61,0d,0a,62,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "\t\0"s), "\"n\"=hex(1):09,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "\x1A\0"s), "\"n\"=hex(1):1a,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "\x7F\0"s), "\"n\"=hex(1):7f,00\r\n");
    EXPECT_EQ(narrowValue("n", kExpandText, "%a%\0"s), "\"n\"=hex(2):25,61,25,00\r\n");
    EXPECT_EQ(narrowValue("n", kTexts, "a\0\0"s), "\"n\"=hex(7):61,00,00\r\n");
    EXPECT_EQ(wideValue(u"n", kExpandText, wideBytes(u"a\0"s)), wideBytes(u"\"n\"=hex(2):61,00,00,00\r\n"));
}

// An editor may take them for a line break, a mark or half a character.
TEST(RegistryFileText, UnitsThatAReaderMayTakeForSomethingElseStandAsBytes) {
    EXPECT_EQ(wideValue(u"n", kText, wideBytes(u"\u0085\0"s)), wideBytes(u"\"n\"=hex(1):85,00,00,00\r\n"));
    EXPECT_EQ(wideValue(u"n", kText, wideBytes(u"\u2028\0"s)), wideBytes(u"\"n\"=hex(1):28,20,00,00\r\n"));
    EXPECT_EQ(wideValue(u"n", kText, "\x00\xD8\0\0"s), wideBytes(u"\"n\"=hex(1):00,d8,00,00\r\n"));
    EXPECT_EQ(wideValue(u"n", kText, wideBytes(u"\uFEFF\0"s)), wideBytes(u"\"n\"=hex(1):ff,fe,00,00\r\n"));
    EXPECT_EQ(wideValue(u"n", kText, "\xFF\xFF\0\0"s), wideBytes(u"\"n\"=hex(1):ff,ff,00,00\r\n"));
}

TEST(RegistryFileText, OtherTypesGoByTheirNumber) {
    EXPECT_EQ(narrowValue("n", kNumber, "\xEF\xCD\xAB\x89"), "\"n\"=dword:89abcdef\r\n");
    EXPECT_EQ(narrowValue("n", kNumber, "\1\2\3"), "\"n\"=hex(4):01,02,03\r\n");
    EXPECT_EQ(narrowValue("n", kNumber, ""), "\"n\"=hex(4):\r\n");
    EXPECT_EQ(narrowValue("n", kBinary, ""), "\"n\"=hex:\r\n");
    EXPECT_EQ(narrowValue("n", 0, "x"), "\"n\"=hex(0):78\r\n");
    EXPECT_EQ(narrowValue("n", 11, "\1\2\3\4\5\6\7\x8"), "\"n\"=hex(b):01,02,03,04,05,06,07,08\r\n");
    EXPECT_EQ(narrowValue("n", 0x7FFFFFFF, "x"), "\"n\"=hex(7fffffff):78\r\n");
    EXPECT_EQ(narrowValue("n", 0xFFFFFFFF, "x"), "\"n\"=hex(ffffffff):78\r\n");
    EXPECT_EQ(wideValue(u"n", kLink, "a\0"s), wideBytes(u"\"n\"=hex(6):61,00\r\n"));
}

TEST(RegistryFileText, LongBytesAreFoldedAtEightyColumns) {
    EXPECT_EQ(narrowValue("lang", kBinary, std::string(30, '\x10')),
              "\"lang\"=hex:10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,10,\\\r\n"
              "  10,10,10,10,10,10,10,10\r\n");
}

// The second byte of a character may look like a quote or a backslash.
TEST(RegistryFileText, OnCodePagesOfSeveralBytesTextsStandAsBytes) {
    EXPECT_EQ(narrowValue("n", kText, "\x95\x5C\0"s, false), "\"n\"=hex(1):95,5c,00\r\n");
    EXPECT_EQ(narrowValue("n", kText, "a\\\0"s, false), "\"n\"=\"a\\\\\"\r\n");
    const RegistryFileText<char> japanese(false);
    EXPECT_FALSE(japanese.holdsName("\x95\x5C"));
    EXPECT_TRUE(japanese.holdsName("\x95\x41\\"));
    EXPECT_TRUE(RegistryFileText<char>().holdsName("\x95\x5C"));
}

TEST(RegistryFileText, ALineBreakOrANulHasNoFormInAName) {
    const RegistryFileText<char> narrow;
    const RegistryFileText<char16_t> wide;
    for (const char odd : {'\r', '\n', '\0'}) {
        const std::string name = std::string("a") + odd;
        const std::u16string wideName(name.begin(), name.end());
        EXPECT_FALSE(narrow.holdsKey(name)) << int{odd};
        EXPECT_FALSE(narrow.holdsName(name)) << int{odd};
        EXPECT_FALSE(wide.holdsKey(wideName)) << int{odd};
        EXPECT_FALSE(wide.holdsName(wideName)) << int{odd};
    }
    EXPECT_FALSE(narrow.holdsName("\x1A"));  // ends a file that is read as text
    EXPECT_TRUE(wide.holdsName(u"\x1A"));
    EXPECT_TRUE(narrow.holdsKey("-a] \t\""));
    EXPECT_TRUE(wide.holdsName(u"\u0141 \"\\"));
}

// The registry editor ends such a text by itself, so that it would come back as another one.
TEST(RegistryFileText, ATextWithoutItsNulWouldComeBackAsAnotherOne) {
    for (const std::uint32_t type : {kText, kExpandText, kTexts}) {
        EXPECT_FALSE(RegistryFileText<char>::holdsData(type, "a")) << type;
        EXPECT_TRUE(RegistryFileText<char>::holdsData(type, "a\0"s)) << type;
        EXPECT_TRUE(RegistryFileText<char>::holdsData(type, "")) << type;
        EXPECT_FALSE(RegistryFileText<char16_t>::holdsData(type, "a\0"s)) << type;
        EXPECT_FALSE(RegistryFileText<char16_t>::holdsData(type, "a\0\0"s)) << type;
        EXPECT_TRUE(RegistryFileText<char16_t>::holdsData(type, "a\0\0\0"s)) << type;
    }
    EXPECT_TRUE(RegistryFileText<char16_t>::holdsData(kBinary, "a"));
    EXPECT_TRUE(RegistryFileText<char16_t>::holdsData(kLink, "a"));
}

}  // namespace
}  // namespace bromvale::testing

// Windows-1252 and its letters.
#include <gtest/gtest.h>

#include <string>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

using namespace std::string_literals;

TEST(CodePageTest, EveryByteSurvivesTheWayThroughUnicode) {
    for (int i = 0; i < 256; ++i) {
        const std::string text(1, static_cast<char>(i));
        EXPECT_EQ(text, ansiFromUtf16(utf16FromAnsi(text))) << i;
        EXPECT_EQ(text, ansiFromUtf8(utf8FromAnsi(text))) << i;
        EXPECT_EQ(text, ansiFromUtf16Bytes(utf16BytesFromAnsi(text))) << i;
    }
}

TEST(CodePageTest, TheBytesWithoutACharacterStandForTheirOwnNumber) {
    EXPECT_EQ(u"\u0081\u008D\u008F\u0090\u009D", utf16FromAnsi("\x81\x8D\x8F\x90\x9D"));
    EXPECT_EQ("\x81\x8D\x8F\x90\x9D", ansiFromUtf16(u"\u0081\u008D\u008F\u0090\u009D"));
    EXPECT_EQ(u"\u20AC\u0178\u00DF", utf16FromAnsi("\x80\x9F\xDF"));
}

TEST(CodePageTest, WhatTheCodePageLacksBecomesAQuestionMark) {
    EXPECT_EQ("a?b", ansiFromUtf16(u"a\u0416b"));
    EXPECT_EQ("AA", ansiFromUtf16(u"A\uFF21")) << "the nearest letter";
    EXPECT_EQ("A", ansiFromUtf16(u"\u0100")) << "the first beyond the bytes";
    EXPECT_EQ("?", ansiFromUtf16(u"\u0080"));
    EXPECT_EQ("??", ansiFromUtf16(u"\U0001F600"));
    EXPECT_EQ("??", ansiFromUtf8("\xF0\x9F\x98\x80"));
    EXPECT_EQ("x?y", ansiFromUtf8("x\xFFy"));
    EXPECT_EQ("??", ansiFromUtf8("\xC0\x80")) << "too long a form";
    EXPECT_EQ("?", ansiFromUtf8("\xC3")) << "cut";
    EXPECT_EQ("ab", ansiFromUtf16Bytes("a\0b\0c"s)) << "odd last byte";
}

TEST(CodePageTest, UpperAndLowerStayWithinTheCodePage) {
    EXPECT_EQ("GRÖßE ÄÖÜ ŠŒŽŸ µƒ÷×", upper("größe äöü šœžÿ µƒ÷×"));
    EXPECT_EQ("größe äöü šœžÿ µƒ÷×", lower("GRÖßE ÄÖÜ ŠŒŽŸ µƒ÷×"));
}

int compareNoCase(std::u16string_view left, std::u16string_view right) {
    return compareStored(storedFromWide(left), storedFromWide(right));
}

TEST(CodePageTest, ComparisonIsByUpperCasedUnicodeUnits) {
    EXPECT_EQ(0, compareNoCase(u"Löschen", u"LÖSCHEN"));
    EXPECT_TRUE(equalNoCase("ÿ", "Ÿ"));
    EXPECT_FALSE(equalNoCase("ß", "SS"));
    EXPECT_LT(compareNoCase(u"a", u"B"), 0);
    EXPECT_LT(compareNoCase(u"Z", u"_"), 0);
    EXPECT_LT(compareNoCase(u"z", u"_"), 0);
    EXPECT_LT(compareNoCase(u"ab", u"abc"), 0);
    EXPECT_LT(compareNoCase(u"Ä", u"Ÿ"), 0) << "U+00C4 before U+0178";
    EXPECT_GT(compareNoCase(u"€", u"ÿ"), 0) << "U+20AC behind U+0178";
    EXPECT_LT(compareNoCase(u"\U0001F600", u"\uFF21"), 0) << "half a pair before the full width letters";
}

TEST(CodePageTest, CaseIsThatOfWindowsBeyondTheCodePage) {
    struct Row {
        const char16_t* small;
        const char16_t* capital;
    };
    for (const Row& row :
         {Row{u"łąžőﬀ", u"ŁĄŽŐﬀ"}, Row{u"αω", u"ΑΩ"}, Row{u"пётр", u"ПЁТР"}, Row{u"աֆ", u"ԱՖ"},
          Row{u"ａｚ", u"ＡＺ"}, Row{u"ễ", u"Ễ"}, Row{u"ƒ", u"Ƒ"}, Row{u"ⱥ", u"Ⱥ"}}) {
        EXPECT_EQ(storedFromWide(row.capital), upperStored(storedFromWide(row.small)));
        EXPECT_EQ(0, compareNoCase(row.small, row.capital));
    }
    EXPECT_NE(0, compareNoCase(u"\u0131", u"I")) << "the dotless i has no capital of its own";
    EXPECT_NE(0, compareNoCase(u"\u00DF", u"\u1E9E"));
}

TEST(CodePageTest, StoredTextsKeepEveryUnit) {
    std::u16string all;
    for (unsigned unit = 1; unit < 0x10000; ++unit) all += static_cast<char16_t>(unit);
    EXPECT_EQ(all, wideFromStored(storedFromWide(all)));
    EXPECT_EQ(all.size(), unitCount(storedFromWide(all)));
    EXPECT_EQ(storedFromWide(all), storedFromWideBytes(wideBytesFromStored(storedFromWide(all))));
}

TEST(CodePageTest, NamesOfTheHostComeBackWhateverTheirBytesAre) {
    for (const char* name :
         {"a.txt", "Zdj\xC4\x99\x63ia", "\xF0\x9F\x98\x80", "x\xFFy", "\xC0\x80", "\xC3", "\xED\xA0\x80"}) {
        EXPECT_EQ(name, utf8FromStored(storedFromUtf8(name)));
    }
    EXPECT_EQ(u"Zdj\u0119cia", wideFromStored(storedFromUtf8("Zdj\xC4\x99"
                                                             "cia")));
}

}  // namespace
}  // namespace bromvale::offline

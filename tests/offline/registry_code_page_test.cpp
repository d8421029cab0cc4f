// Windows-1252 and its letters.
#include <gtest/gtest.h>

#include <string>

#include "platform/offline/code_page.h"

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
    EXPECT_EQ("A?", ansiFromUtf16(u"A\uFF21")) << "no best fit";
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

TEST(CodePageTest, ComparisonIsByUpperCasedUnicodeUnits) {
    EXPECT_EQ(0, compareNoCase("Löschen", "LÖSCHEN"));
    EXPECT_TRUE(equalNoCase("ÿ", "Ÿ"));
    EXPECT_FALSE(equalNoCase("ß", "SS"));
    EXPECT_LT(compareNoCase("a", "B"), 0);
    EXPECT_LT(compareNoCase("Z", "_"), 0);
    EXPECT_LT(compareNoCase("z", "_"), 0);
    EXPECT_LT(compareNoCase("ab", "abc"), 0);
    EXPECT_LT(compareNoCase("Ä", "Ÿ"), 0) << "U+00C4 before U+0178";
    EXPECT_GT(compareNoCase("€", "ÿ"), 0) << "U+20AC behind U+0178";
}

}  // namespace
}  // namespace bromvale::offline

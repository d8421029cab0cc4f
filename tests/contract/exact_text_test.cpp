// Texts of Windows in the program's code page, with marks where it has no character. Both machines of the
// tests have Windows-1252.
#include "platform/exact/text.h"

#include "base/text.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class ExactText : public TestMachine {};

TEST_F(ExactText, WhatTheCodePageHoldsComesWithoutMarks) {
    EXPECT_EQ(exactText(u"C:\\Programme\\Jörg\\Søren €.exe"), "C:\\Programme\\Jörg\\Søren €.exe");
    EXPECT_TRUE(isExact(exactText(u"C:\\Programme\\Jörg\\Søren €.exe")));
    EXPECT_TRUE(isExact(""));
}

TEST_F(ExactText, AMissingCharacterIsMarkedByItsNumber) {
    EXPECT_EQ(exactText(u"\u0141ukasz"),
              "\x1A"
              "00321ukasz");
    EXPECT_EQ(exactText(u"a\u041Fb"),
              "a\x1A"
              "01055b");
    EXPECT_EQ(exactText(u"\u6F22"),
              "\x1A"
              "28450");
    EXPECT_FALSE(isExact(exactText(u"\u0141ukasz")));
}

// Its nearest letter is one that decides: a separator, a dot, a quote, the name of the default value.
TEST_F(ExactText, WideSeparatorsAreMarkedAndNotTheirNearestLetters) {
    EXPECT_EQ(exactText(u"a\uFF3Cb"),
              "a\x1A"
              "65340b");
    EXPECT_EQ(exactText(u"\uFF0E\uFF0E"),
              "\x1A"
              "65294\x1A"
              "65294");
    EXPECT_EQ(exactText(u"\uFF20"),
              "\x1A"
              "65312");
    EXPECT_EQ(exactText(u"Foto\u2011Alt"),
              "Foto\x1A"
              "08209Alt");
}

TEST_F(ExactText, TheMarkItselfIsMarked) {
    EXPECT_EQ(exactText(u"a\x1A"),
              "a\x1A"
              "00026");
    EXPECT_EQ(wideText("a\x1A"
                       "00026"),
              u"a\x1A");
}

TEST_F(ExactText, PlainTextIsWhatTheAnsiFunctionsGive) {
    EXPECT_EQ(plainText(exactText(u"\u0141ukasz \u015Eule")), "Lukasz Sule");
    EXPECT_EQ(plainText(exactText(u"\u041F\u0451\u0442\u0440")), "????");
    EXPECT_EQ(plainText(exactText(u"a\uFF3Cb\uFF0E")), "a\\b.");
    EXPECT_EQ(plainText(exactText(u"\U0001D11E")), "??");
    EXPECT_EQ(plainText("Jörg"), "Jörg");
}

TEST_F(ExactText, EveryUnitComesBack) {
    std::u16string all;
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) all += static_cast<char16_t>(unit);
    const std::string text = exactText(all);
    EXPECT_TRUE(wideText(text) == all);
    EXPECT_EQ(wideText(plainText(exactText(u"Grüße"))), u"Grüße");
}

TEST_F(ExactText, UpperAndLowerCaseLeaveMarksAlone) {
    const std::string text = exactText(u"C:\\\u0141ód\u017A\\Ä.EXE");
    EXPECT_EQ(LCase(text),
              "c:\\\x1A"
              "00321ód\x1A"
              "00378\\ä.exe");
    EXPECT_EQ(wideText(UCase(text)), u"C:\\\u0141ÓD\u017A\\Ä.EXE");
}

TEST_F(ExactText, SizesAreThoseOfTheAnsiFunctions) {
    EXPECT_EQ(ansiSize(u""), 0u);
    EXPECT_EQ(ansiSize(u"\u0141ód\u017A"), 4u);
}

TEST_F(ExactText, NamesOfFilesKeepTheirUmlautsHere) {
    EXPECT_EQ(fileNameText("Rückgängig_"), "Rückgängig_");
    EXPECT_EQ(systemText("Registryschlüssel"), "Registryschlüssel");
}

}  // namespace
}  // namespace bromvale::testing

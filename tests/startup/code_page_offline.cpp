// Systems whose ANSI code page is not Windows-1252. Characters that this lacks stand as numbers here.
#include "base/text.h"
#include "platform/exact/text.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class CodePage : public TestMachine {
  protected:
    static void use(unsigned number) { offline::machine().textRules.codePage = number; }
};

TEST_F(CodePage, ExactnessIsJudgedByThePolishPage) {
    use(1250);
    EXPECT_TRUE(isExact(exactText(u"C:\\\u0141ód\u017A\\\u017C.exe")));
    EXPECT_EQ(wideText(exactText(u"C:\\\u0141ód\u017A\\\u017C.exe")), u"C:\\\u0141ód\u017A\\\u017C.exe");
    EXPECT_FALSE(isExact(exactText(u"Søren")));
    EXPECT_EQ(plainText(exactText(u"\u041F\u0451\u0442\u0440")), "????");
}

// In Windows-1252 the byte of "ź" is the capital of "ÿ".
TEST_F(CodePage, CasesFollowThePolishPage) {
    use(1250);
    EXPECT_EQ(wideText(LCase(exactText(u"C:\\\u0141ÓD\u0179\\\u017Ad\u017Ab\u0142o.EXE"))),
              u"c:\\\u0142ód\u017A\\\u017Ad\u017Ab\u0142o.exe");
    EXPECT_EQ(wideText(UCase(exactText(u"\u0142ód\u017A"))), u"\u0141ÓD\u0179");
}

// The second byte of a character may look like a backslash or a letter, and the program counts bytes.
TEST_F(CodePage, OnPagesWithSeveralBytesACharacterOnlyAsciiIsExact) {
    for (const unsigned number : {932u, 65001u}) {
        use(number);
        EXPECT_TRUE(isExact(exactText(u"C:\\a.exe")));
        EXPECT_FALSE(isExact(exactText(u"C:\\\u8868\\a.exe"))) << number;
        EXPECT_FALSE(isExact(exactText(u"Jörg"))) << number;
        EXPECT_EQ(wideText(exactText(u"\u8868\u30A2-Jörg")), u"\u8868\u30A2-Jörg") << number;
        EXPECT_EQ(LCase("A\xC3\x84Z"), "a\xC3\x84z") << number;
    }
}

TEST_F(CodePage, NamesOfFilesAreExactOnEveryPage) {
    use(1250);
    EXPECT_EQ(wideText(fileNameText("Rückgängig_")), u"Rückgängig_");
    for (const unsigned number : {932u, 65001u}) {
        use(number);
        EXPECT_EQ(fileNameText("Rückgängig_"), "Rueckgaengig_");
        EXPECT_EQ(fileNameText("Vollständig_"), "Vollstaendig_");
    }
}

// There the ANSI text is the text, and the byte of the marks a character of it.
TEST_F(CodePage, OnThe9xFamilyNothingIsMarked) {
    offline::machine().setOs(*offline::osByName("Windows 98"));
    EXPECT_TRUE(
        isExact("vor\x1A"
                "00321nach"));
    EXPECT_EQ(plainText("vor\x1A"
                        "00321nach"),
              "vor\x1A"
              "00321nach");
}

// As in a line that somebody has written.
TEST_F(CodePage, AByteThatIsNoWholeMarkMeansItself) {
    EXPECT_EQ(wideText("a\x1A"
                       "12b"),
              u"a\x1A"
              "12b");
    EXPECT_EQ(wideText("\x1A"), u"\x1A");
    EXPECT_FALSE(
        isExact("a\x1A"
                "12b"));
}

}  // namespace
}  // namespace bromvale::testing

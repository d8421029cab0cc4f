// Which names lead to what they name.
#include "cleanup/entry_names.h"

#include "platform/exact/text.h"
#include "tests/cleanup/cleanup_fixture.h"

namespace bromvale::testing {
namespace {

TEST(EntryNames, ANameIsPlainThatNothingReadsOtherwise) {
    for (const char* name : {"a", "a.txt", ".a", " a", "a b", "Müll {1} [2] ~1 % & '.x", "..a"})
        EXPECT_TRUE(isPlainName(name)) << name;
}

TEST(EntryNames, NoNameIsPlainThatSeparatesStandsForManyOrLosesItsEnd) {
    for (const char* name : {"",      "..\\Dokumente\\*",
                             "a\\b",  "a/b",
                             "a:b",   "*",
                             "*.reg", "????.reg",
                             "a\"b",  "a<b",
                             "a>b",   "a|b",
                             ".",     "..",
                             "...",   "a.",
                             "a ",    ".. ",
                             "a\tb",  "a\n"}) {
        EXPECT_FALSE(isPlainName(name)) << name;
        EXPECT_FALSE(isSoundName(name)) << name;
    }
}

TEST(EntryNames, NoDeviceIsPlainWhateverItsCaseAndExtension) {
    for (const char* name : {"con", "PRN", "aux.txt", "Nul.tar.gz", "nul .txt", "COM1", "lpt9.x", "com\xB2",
                             "com0", "CONIN$", "clock$"})
        EXPECT_FALSE(isPlainName(name)) << name;
    for (const char* name : {"cone", "aux1", "xcon", "com", "com10", "lptx", "a.nul", " con"})
        EXPECT_TRUE(isPlainName(name)) << name;
}

TEST(EntryNames, ANameWithMarksIsSoundButNotPlain) {
    for (const char16_t* name : {u"Zdj\u0119cie.txt", u"\uFF0E\uFF0E", u"a\uFF3Cb", u"\uFF0A", u"a\u3000"}) {
        EXPECT_TRUE(isSoundName(exactText(name)));
        EXPECT_FALSE(isPlainName(exactText(name)));
    }
    EXPECT_FALSE(isSoundName(exactText(u"\u0119.")));
    EXPECT_FALSE(isSoundName(exactText(u"\u0119*")));
}

using EntryNamesOfAFolder = CleanupTest;

TEST_F(EntryNamesOfAFolder, AnEntryIsReachedByItsOwnName) {
    const std::string path = makeBin("Leeren");
    writeWholeFile(path + "Eine lange Datei.txt", "x");
    FoundEntry entry;
    ASSERT_EQ(findEntry(path + "Eine lange Datei.txt", entry), 0u);
    EXPECT_EQ(reachableName(path, entry), "Eine lange Datei.txt");
    EXPECT_EQ(reachableName(path, "Eine lange Datei.txt"), "Eine lange Datei.txt");
}

TEST_F(EntryNamesOfAFolder, AShortNameThatLeadsToAnotherEntryOrToNoneReachesNothing) {
    const std::string path = makeBin("Leeren");
    writeWholeFile(path + "ZDJECI~1.TXT", "x");
    FoundEntry entry;
    entry.name = exactText(u"Zdj\u0119cie.txt");
    for (const char* name : {"", "ZDJECI~1.TXT", "FEHLT~1.TXT", "..\\A~1", "???~1.TXT"}) {
        entry.shortName = name;
        EXPECT_EQ(reachableName(path, entry), "") << name;
    }
    EXPECT_EQ(reachableName(path, entry.name), "");
}

TEST_F(EntryNamesOfAFolder, ANameThatTheSystemReadsOtherwiseReachesNothing) {
    const std::string path = makeBin("Leeren");
    writeWholeFile(path + "Daten", "x");
    for (const char* name : {"Daten.", "Daten ", "*", "D?ten", ".", "..", "nul"})
        EXPECT_EQ(reachableName(path, name), "") << name;
}

}  // namespace
}  // namespace bromvale::testing

// Which names lead to what they name.
#include "cleanup/entry_names.h"

#include <cstring>

#include "tests/cleanup/cleanup_fixture.h"

namespace bromvale::testing {
namespace {

WIN32_FIND_DATAA found(const char* name, const char* shortName) {
    WIN32_FIND_DATAA data{};
    std::strcpy(data.cFileName, name);
    std::strcpy(data.cAlternateFileName, shortName);
    return data;
}

TEST(EntryNames, ANameIsPlainThatNothingReadsOtherwise) {
    for (const char* name : {"a", "a.txt", ".a", " a", "a b", "Müll {1} [2] ~1 % & '.x", "..a"})
        EXPECT_TRUE(isPlainName(name)) << name;
}

TEST(EntryNames, NoNameIsPlainThatSeparatesStandsForManyOrLosesItsEnd) {
    for (const char* name : {"", "..\\Dokumente\\*", "a\\b", "a/b", "a:b", "*", "*.reg", "????.reg", "a\"b",
                             "a<b", "a>b", "a|b", ".", "..", "...", "a.", "a ", ".. "}) {
        EXPECT_FALSE(isPlainName(name)) << name;
    }
}

TEST(EntryNames, AnEntryIsReachedByItsOwnNameElseByItsShortOne) {
    EXPECT_EQ(reachableName(found("Lange Datei.txt", "LANGED~1.TXT")), "Lange Datei.txt");
    EXPECT_EQ(reachableName(found("?????.txt", "1A2B~1.TXT")), "1A2B~1.TXT");
    EXPECT_EQ(reachableName(found("..\\x", "_X~1")), "_X~1");
    EXPECT_EQ(reachableName(found("?????.txt", "")), "");
    EXPECT_EQ(reachableName(found("?????.txt", "???~1.TXT")), "");
    EXPECT_EQ(reachableName(found("..", "")), "");
}

using EntryNamesOfAFolder = CleanupTest;

TEST_F(EntryNamesOfAFolder, AFolderOfPlainNamesHasNoForeignEntries) {
    const std::string path = makeBin("Leeren");
    writeWholeFile(path + "Eine lange Datei.txt", "x");
    makeFolderOnDisk(path + "Ein langer Ordner");
    EXPECT_TRUE(foreignEntries(path).empty());
    EXPECT_TRUE(foreignEntries(folder() + "Fehlt\\").empty());
}

}  // namespace
}  // namespace bromvale::testing

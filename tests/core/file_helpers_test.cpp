#include "core/file_helpers.h"

#include <algorithm>

#include "core/log.h"
#include "platform/exact/text.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

class FileHelpers : public testing::TestMachine {
  protected:
    FileHelpers() { fillState(); }

    // The names that FindFileAPI leaves where there were others.
    static Lines find(std::string& path, std::string_view pattern) {
        std::vector<FoundEntry> entries(2);
        entries[0].name = "alt";
        entries[1].name = "älter";
        FindFileAPI(path, pattern, entries);
        Lines names;
        for (const FoundEntry& entry : entries) names.push_back(entry.name);
        return names;
    }
};

TEST_F(FileHelpers, FileExistsTakesFilesFoldersAndWildcards) {
    writeWholeFile(folder() + "übung.dll", "x");
    makeFolderOnDisk(folder() + "ordner");
    EXPECT_TRUE(FileExists(folder() + "übung.dll"));
    EXPECT_TRUE(FileExists(folder() + "ÜBUNG.DLL"));
    EXPECT_TRUE(FileExists(folder() + "ordner"));
    EXPECT_TRUE(FileExists(folder() + "*.dll"));
    EXPECT_FALSE(FileExists(folder() + "*.ocx"));
    EXPECT_FALSE(FileExists(folder() + "fehlt.dll"));
    EXPECT_FALSE(FileExists(folder() + "fehlt\\übung.dll"));
    EXPECT_FALSE(FileExists(""));
}

TEST_F(FileHelpers, FileExistsLogsWhatIsMissingWhileTracing) {
    writeWholeFile(folder() + "da.dll", "x");
    EXPECT_FALSE(FileExists("C:\\fehlt.dll"));
    EXPECT_EQ(logLines(), Lines{});
    switchTracingOn();
    EXPECT_TRUE(FileExists(folder() + "da.dll"));
    EXPECT_FALSE(FileExists("C:\\fehlt.dll"));
    EXPECT_EQ(logLines(), Lines{"modFiles; FileExists; C:\\fehlt.dll; Falsch; 0; "});
}

TEST_F(FileHelpers, FindFileApiListsFilesAndFoldersAndOneEmptyElement) {
    makeFolderOnDisk(folder() + "Ordner");
    makeFolderOnDisk(folder() + "Ordner\\innen.reg");
    writeWholeFile(folder() + "Ordner\\a.reg", "");
    writeWholeFile(folder() + "Ordner\\b.txt", "");
    writeWholeFile(folder() + "Ordner\\innen.reg\\c.reg", "");
    std::string path = folder() + "Ordner\\";
    Lines names = find(path, "*.reg");
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(names.back(), "");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Lines{"", "a.reg", "innen.reg"}));
}

TEST_F(FileHelpers, FindFileApiAddsTheMissingBackslashInTheCallersVariable) {
    makeFolderOnDisk(folder() + "Ordner");
    std::string path = folder() + "Ordner";
    find(path, "*.*");
    EXPECT_EQ(path, folder() + "Ordner\\");
}

TEST_F(FileHelpers, AnEmptyFolderGivesTheOneEmptyElement) {
    makeFolderOnDisk(folder() + "Ordner");
    std::string path = folder() + "Ordner\\";
    EXPECT_EQ(find(path, "*.*"), Lines{""});
}

TEST_F(FileHelpers, AMissingFolderGivesTheSameAndNoReport) {
    std::string path = folder() + "fehlt\\";
    EXPECT_EQ(find(path, "*.*"), Lines{""});
    EXPECT_EQ(logLines(), Lines{});
}

TEST_F(FileHelpers, FindFileApiTellsWhatItFound) {
    makeFolderOnDisk(folder() + "Ordner");
    writeWholeFile(folder() + "Ordner\\a.reg", "");
    switchTracingOn();
    std::string path = folder() + "Ordner";
    find(path, "*.reg");
    EXPECT_EQ(logLines(), (Lines{"modFiles; FindFileAPI; started; 0; ",
                                 "modFiles; FindFileAPI; durchsuchter Ordner " + folder() + "Ordner\\; 0; ",
                                 "modFiles; FindFileAPI; Darin wurden 1 Dateien gefunden.; 0; ",
                                 "modFiles; FindFileAPI; endet; 0; "}));
}

// The names that the ANSI functions would give are those of other files, or of many.
TEST_F(FileHelpers, FindFileApiMarksNamesThatTheCodePageCannotHold) {
    makeFolderOnDisk(folder() + "Ordner");
    const std::string inside = folder() + "Ordner\\";
    writeWholeFile(wideText(inside) + u"Zdj\u0119cie.reg", "x");
    writeWholeFile(wideText(inside) + u"\uFF0A.reg", "x");
    writeWholeFile(inside + "Zdjecie.reg", "x");
    std::string path = folder() + "Ordner";
    Lines names = find(path, "*.reg");
    ASSERT_EQ(names.size(), 4u);
    EXPECT_EQ(names.back(), "");
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (Lines{"", exactText(u"\uFF0A.reg"), exactText(u"Zdj\u0119cie.reg"), "Zdjecie.reg"}));
}

TEST_F(FileHelpers, FindFileApiTellsWhatTheFolderTellsOfItsEntries) {
    makeFolderOnDisk(folder() + "Ordner");
    makeFolderOnDisk(folder() + "Ordner\\innen");
    writeWholeFile(folder() + "Ordner\\a.reg", "123");
    std::string path = folder() + "Ordner";
    std::vector<FoundEntry> entries(1);
    FindFileAPI(path, "*.*", entries);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[2].name, "");
    const FoundEntry& file = entries[entries[0].name == "a.reg" ? 0 : 1];
    const FoundEntry& inner = entries[entries[0].name == "a.reg" ? 1 : 0];
    EXPECT_EQ(file.name, "a.reg");
    EXPECT_EQ(file.size, 3u);
    EXPECT_EQ(inner.name, "innen");
    EXPECT_TRUE(inner.isFolder());
    EXPECT_FALSE(file.isFolder());
}

}  // namespace
}  // namespace bromvale

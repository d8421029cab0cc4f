// What a folder lists, by true names.
#include "platform/exact/files.h"

#include <algorithm>

#ifndef _WIN32
#include "platform/offline/machine.h"
#endif
#include "platform/exact/text.h"
#include "tests/contract/on_drives.h"

namespace bromvale::testing {
namespace {

class ExactFiles : public OnDrives {
  protected:
#ifndef _WIN32
    // A system that tells final paths.
    ExactFiles() {
        offline::machine().setOs(*offline::osByName("2.6.1.7601"));
    }
#endif
    using Names = std::vector<std::string>;

    // Sorted, without the two of the folder itself.
    static Names find(const std::string& sought) {
        Names names;
        FolderSearch search(sought);
        FoundEntry entry;
        while (search.next(entry)) {
            if (entry.name != "." && entry.name != "..") names.push_back(entry.name);
        }
        EXPECT_EQ(search.error(), 0u);
        std::sort(names.begin(), names.end());
        return names;
    }
    static DWORD errorOf(const std::string& sought) {
        FolderSearch search(sought);
        FoundEntry entry;
        EXPECT_FALSE(search.next(entry));
        return search.error();
    }
    std::string mark(std::u16string_view name) const {
        return folder() + exactText(name);
    }
};

BROMVALE_ON_DRIVES(ExactFiles);

TEST_P(ExactFiles, ANameOfTheCodePageComesAsItIsWithItsFacts) {
    writeWholeFile(folder() + "Übung.txt", "12345");
    FoundEntry entry;
    ASSERT_EQ(findEntry(folder() + "übung.TXT", entry), 0u);
    EXPECT_EQ(entry.name, "Übung.txt");
    EXPECT_EQ(entry.size, 5u);
    EXPECT_EQ(entry.attributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
    EXPECT_EQ(entry.reparseTag, 0u);
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA((folder() + "Übung.txt").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);
    EXPECT_EQ(entry.written.dwLowDateTime, found.ftLastWriteTime.dwLowDateTime);
    EXPECT_EQ(entry.written.dwHighDateTime, found.ftLastWriteTime.dwHighDateTime);
    EXPECT_EQ(entry.attributes, found.dwFileAttributes);
}

TEST_P(ExactFiles, ANameBeyondTheCodePageCarriesItsMarksBesideItsTwin) {
    writeWholeFile(wideText(folder()) + u"Zdj\u0119cie.txt", "x");
    writeWholeFile(folder() + "Zdjecie.txt", "12");
    EXPECT_EQ(find(folder() + "Zdj*"), (Names{exactText(u"Zdj\u0119cie.txt"), "Zdjecie.txt"}));
    FoundEntry entry;
    ASSERT_EQ(findEntry(mark(u"Zdj\u0119cie.txt"), entry), 0u);
    EXPECT_EQ(entry.name, exactText(u"Zdj\u0119cie.txt"));
    EXPECT_EQ(entry.size, 1u);
    ASSERT_EQ(findEntry(folder() + "Zdjecie.txt", entry), 0u);
    EXPECT_EQ(entry.size, 2u);
}

TEST_P(ExactFiles, WideSeparatorsDotsAndWildcardsArePartsOfNames) {
    for (const char16_t* name : {u"a\uFF3Cb", u"\uFF0E\uFF0E", u"\uFF0A", u"a\u2215b", u"a\uFF1Ab"}) {
        writeWholeFile(wideText(folder()) + name, "x");
        FoundEntry entry;
        ASSERT_EQ(findEntry(mark(name), entry), 0u);
        EXPECT_EQ(entry.name, exactText(name));
        EXPECT_FALSE(isExact(entry.name));
    }
    EXPECT_EQ(find(folder() + "*").size(), 5u);
}

TEST_P(ExactFiles, AFolderBeyondTheCodePageIsListedByItsMarks) {
    makeFolderOnDisk(wideText(folder()) + u"Zdj\u0119cia");
    makeFolderOnDisk(folder() + "Zdjecia");
    writeWholeFile(wideText(folder()) + u"Zdj\u0119cia\\\u0142.txt", "x");
    EXPECT_EQ(find(mark(u"Zdj\u0119cia\\*")), Names{exactText(u"\u0142.txt")});
    EXPECT_EQ(find(folder() + "Zdjecia\\*"), Names{});
}

TEST_P(ExactFiles, TheFolderItselfAndTheOneAboveHaveNoShortNames) {
    makeFolderOnDisk(wideText(folder()) + u"Zdj\u0119cia");
    FolderSearch search(mark(u"Zdj\u0119cia\\*"));
    FoundEntry entry;
    for (const char* name : {".", ".."}) {
        ASSERT_TRUE(search.next(entry));
        EXPECT_EQ(entry.name, name);
        EXPECT_EQ(entry.shortName, "");
        EXPECT_NE(entry.attributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
    }
}

TEST_P(ExactFiles, AnErrorIsToldFromTheEndOfTheList) {
    EXPECT_EQ(find(folder() + "*"), Names{});
    EXPECT_EQ(errorOf(folder() + "fehlt"), 2u);
    EXPECT_EQ(errorOf(folder() + "fehlt\\*"), 3u);
    FoundEntry entry;
    EXPECT_EQ(findEntry(mark(u"Zdj\u0119cie.txt"), entry), 2u);
    EXPECT_EQ(findEntry(mark(u"Zdj\u0119cia\\a.txt"), entry), 3u);
}

TEST_P(ExactFiles, APathFitsWithItsNulIntoTheLongestOneOfAll) {
    EXPECT_TRUE(fitsPath(std::string(259, 'a')));
    EXPECT_FALSE(fitsPath(std::string(260, 'a')));
    EXPECT_TRUE(fitsPath(std::string(258, 'a') + exactText(u"\u0119")));
    EXPECT_FALSE(fitsPath(std::string(259, 'a') + exactText(u"\u0119")));
}

// --- final paths ---

TEST_P(ExactFiles, AFinalPathEndsInTheTrueNameWhateverTheCase) {
    ASSERT_TRUE(tellsFinalPaths()) << "no final paths here";
    makeFolderOnDisk(wideText(folder()) + u"Zdj\u0119cia");
    writeWholeFile(wideText(folder()) + u"Zdj\u0119cia\\Brief.txt", "x");
    const std::u16string above = finalPath(folder(), Links::Follow);
    ASSERT_FALSE(above.empty());
    const std::u16string slash = above.back() == u'\\' ? u"" : u"\\";
    EXPECT_EQ(finalPath(mark(u"Zdj\u0119cia\\BRIEF.TXT"), Links::Open),
              above + slash + u"Zdj\u0119cia\\Brief.txt");
    EXPECT_EQ(finalPath(folder() + "Zdjecia\\Brief.txt", Links::Open), u"");
    EXPECT_EQ(finalPath(mark(u"Zdj\u0119cia\\fehlt"), Links::Open), u"");
}

}  // namespace
}  // namespace bromvale::testing

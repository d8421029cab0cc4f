#include "core/text_file.h"

#include "base/failure.h"
#include "platform/files.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

class TextFile : public testing::TestMachine {
  protected:
    template <class Statement>
    static int failureNumber(const Statement& statement) {
        try {
            statement();
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    }
    int openFailure(const std::string& path, FileMode mode) {
        return failureNumber([&] { openFile(path, mode, 1); });
    }
    std::vector<std::string> linesOf(std::string_view bytes) {
        const std::string path = folder() + "zeilen.txt";
        writeWholeFile(path, bytes);
        const int number = freeFile();
        openFile(path, FileMode::Input, number);
        std::vector<std::string> lines;
        while (!endOfFile(number)) lines.push_back(readLine(number));
        closeFile(number);
        return lines;
    }
};

using Lines = std::vector<std::string>;

TEST_F(TextFile, NumbersCountFromOneAndAreFreeAgainAfterClosing) {
    EXPECT_EQ(freeFile(), 1);
    openFile(folder() + "a.txt", FileMode::Output, 1);
    EXPECT_EQ(freeFile(), 2);
    openFile(folder() + "b.txt", FileMode::Output, 2);
    EXPECT_EQ(openFileCount(), 2);
    closeFile(1);
    EXPECT_EQ(freeFile(), 1);
    closeFile(2);
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(TextFile, ANumberInUseIsFailure55) {
    openFile(folder() + "a.txt", FileMode::Output, 1);
    EXPECT_EQ(openFailure(folder() + "b.txt", FileMode::Output), 55);
    EXPECT_EQ(readWholeFile(folder() + "b.txt"), "<missing>");
    closeFile(1);
}

TEST_F(TextFile, AMissingFileIsFailure53) {
    EXPECT_EQ(openFailure(folder() + "fehlt.txt", FileMode::Input), 53);
}

TEST_F(TextFile, AMissingFolderIsFailure76) {
    EXPECT_EQ(openFailure(folder() + "fehlt\\a.txt", FileMode::Input), 76);
    EXPECT_EQ(openFailure(folder() + "fehlt\\a.txt", FileMode::Output), 76);
    EXPECT_EQ(openFailure(folder() + "fehlt\\a.txt", FileMode::Append), 76);
}

TEST_F(TextFile, AFolderInPlaceOfTheFileIsFailure75) {
    makeFolderOnDisk(folder() + "ordner");
    EXPECT_EQ(openFailure(folder() + "ordner", FileMode::Output), 75);
    EXPECT_EQ(openFailure(folder() + "ordner", FileMode::Append), 75);
}

TEST_F(TextFile, AFileThatSomebodyElseHoldsIsFailure70) {
    const HANDLE other = CreateFileA((folder() + "fremd.txt").c_str(), GENERIC_WRITE, 0, nullptr,
                                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(openFailure(folder() + "fremd.txt", FileMode::Input), 70);
    CloseHandle(other);
}

TEST_F(TextFile, ABadNameIsFailure52) {
    EXPECT_EQ(openFailure("", FileMode::Output), 52);
    EXPECT_EQ(openFailure(folder() + "*.txt", FileMode::Input), 52);
    EXPECT_EQ(openFailure(folder() + "a?.txt", FileMode::Output), 52);
}

TEST_F(TextFile, ANumberThatIsNotOpenIsFailure52) {
    EXPECT_EQ(failureNumber([] { writeLine(3, "x"); }), 52);
    EXPECT_EQ(failureNumber([] { static_cast<void>(readLine(3)); }), 52);
    EXPECT_EQ(failureNumber([] { static_cast<void>(endOfFile(3)); }), 52);
    EXPECT_EQ(failureNumber([] { closeFile(3); }), 0);
}

TEST_F(TextFile, AFailedOpenLeavesTheNumberFree) {
    EXPECT_EQ(openFailure(folder() + "fehlt.txt", FileMode::Input), 53);
    EXPECT_EQ(freeFile(), 1);
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(TextFile, OutputEmptiesTheFileAndWritesExactlyTheBytes) {
    writeWholeFile(folder() + "a.txt", "alter, langer Inhalt");
    openFile(folder() + "a.txt", FileMode::Output, 1);
    writeFile(1, "ohne Ende");
    writeLine(1, "mit Ende");
    writeLine(1, "");
    EXPECT_EQ(readWholeFile(folder() + "a.txt"), "ohne Endemit Ende\r\n\r\n");  // already on disk
    closeFile(1);
    EXPECT_EQ(readWholeFile(folder() + "a.txt"), "ohne Endemit Ende\r\n\r\n");
}

TEST_F(TextFile, AppendMakesTheFileAndThenWritesBehindIt) {
    for (const char* line : {"eins", "zwei"}) {
        openFile(folder() + "a.txt", FileMode::Append, 1);
        writeLine(1, line);
        closeFile(1);
    }
    EXPECT_EQ(readWholeFile(folder() + "a.txt"), "eins\r\nzwei\r\n");
}

TEST_F(TextFile, LinesEndInCrOrLfOrBoth) {
    EXPECT_EQ(linesOf("eins\r\nzwei\ndrei\rvier"), (Lines{"eins", "zwei", "drei", "vier"}));
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("\r\n"), Lines{""});
    EXPECT_EQ(linesOf("eins\r\n"), Lines{"eins"});
    EXPECT_EQ(linesOf("eins\r"), Lines{"eins"});
    EXPECT_EQ(linesOf("\r\r\n\n"), (Lines{"", "", ""}));
    EXPECT_EQ(linesOf(std::string_view("a\0b\r\n", 5)), Lines{std::string("a\0b", 3)});
}

TEST_F(TextFile, ALineEndThatFallsOnTwoBlocksIsOne) {
    for (const std::size_t length : {4094u, 4095u, 4096u, 4097u, 8191u}) {
        const std::string line(length, 'x');
        EXPECT_EQ(linesOf(line + "\r\nzwei"), (Lines{line, "zwei"})) << length;
        EXPECT_EQ(linesOf(line + "\r"), Lines{line}) << length;
    }
}

TEST_F(TextFile, ReadingBehindTheEndIsFailure62) {
    writeWholeFile(folder() + "a.txt", "eins\r\n");
    openFile(folder() + "a.txt", FileMode::Input, 1);
    EXPECT_EQ(readLine(1), "eins");
    EXPECT_TRUE(endOfFile(1));
    EXPECT_EQ(failureNumber([] { static_cast<void>(readLine(1)); }), 62);
    closeFile(1);
}

TEST_F(TextFile, NamesMayHoldUmlauts) {
    makeFolderOnDisk(folder() + "Übung");
    openFile(folder() + "Übung\\Rückgängig_ß.reg", FileMode::Output, 1);
    writeLine(1, "äöü");
    closeFile(1);
    EXPECT_EQ(filesIn(folder() + "Übung\\", "*"), Lines{"Rückgängig_ß.reg"});
    openFile(folder() + "Übung\\Rückgängig_ß.reg", FileMode::Input, 1);
    EXPECT_EQ(readLine(1), "äöü");
    closeFile(1);
}

TEST_F(TextFile, TheStartOfAFileIsWhatItHasAtMost) {
    writeWholeFile(folder() + "kurz", "abc");
    const auto start = fileStart(folder() + "kurz", 10);
    ASSERT_TRUE(start.has_value());
    EXPECT_EQ(start->bytes, "abc");
    EXPECT_EQ(start->size, 3u);
    EXPECT_EQ(fileStart(folder() + "kurz", 2)->bytes, "ab");
    EXPECT_FALSE(fileStart(folder() + "fehlt", 2).has_value());
}

TEST_F(TextFile, MakingAFolder) {
    EXPECT_EQ(failureNumber([&] { makeFolder(folder() + "neu"); }), 0);
    EXPECT_EQ(failureNumber([&] { makeFolder(folder() + "neu"); }), 75);
    EXPECT_EQ(failureNumber([&] { makeFolder(folder() + "fehlt\\neu"); }), 76);
    EXPECT_EQ(failureNumber([&] { makeFolder(""); }), 76);
    EXPECT_EQ(filesIn(folder(), "*"), Lines{"neu"});
}

}  // namespace
}  // namespace bromvale

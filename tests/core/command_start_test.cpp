// Command lines that start nothing, on both providers.
#include "core/command_start.h"

#include "base/failure.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class CommandStartTest : public TestMachine {
  protected:
    // The failure's number, 0 where the command was started.
    static int failureOf(const std::string& commandLine) {
        try {
            startCommand(commandLine, 1);
        } catch (const Failure& failure) {
            return failure.number;
        }
        return 0;
    }
};

TEST_F(CommandStartTest, AnEmptyCommandLineIsAnInvalidCall) {
    for (const char* line : {"", " ", " \t "}) EXPECT_EQ(failureOf(line), 5) << '"' << line << '"';
}

TEST_F(CommandStartTest, AProgramThatIsNotThereIsAMissingFile) {
    const std::string path = folder() + "fehlt.exe";
    for (const std::string& line : {path, path + " /still", "\"" + path + "\"", "\"" + path + "\" /still",
                                    folder() + "Ein Ordner\\fehlt.exe /x", std::string("gibtesnicht.exe /x"),
                                    std::string("gibtesnicht")}) {
        EXPECT_EQ(failureOf(line), 53) << line;
    }
}

TEST_F(CommandStartTest, BlanksBeforeTheLineDoNotCount) {
    const std::string path = folder() + "fehlt.exe";
    for (const std::string& line : {"  " + path, "\t\"" + path + "\" /still", " \t " + path + " /still"})
        EXPECT_EQ(failureOf(line), 53) << line;
}

// Unplugged, or known to another user only: the program may be there all the same.
TEST_F(CommandStartTest, ADriveOrShareThatIsNotThereSaysNothingAboutItsPrograms) {
    for (const char* line : {"Q:\\weg.exe", "q:\\Ein Ordner\\weg.exe /still", "\"Q:\\weg.exe\"", "Q:weg.exe"})
        EXPECT_EQ(failureOf(line), 71) << line;
    for (const char* line :
         {"\\\\gibtesnicht\\teil\\weg.exe", "\"\\\\gibtesnicht\\teil\\Ein Ordner\\weg.exe\""})
        EXPECT_EQ(failureOf(line), 76) << line;
    EXPECT_EQ(failureOf("C:\\Gibt es nicht\\weg.exe"), 53);
}

TEST_F(CommandStartTest, ALineThatTheCodePageLacksIsNotStarted) {
    const std::string line =
        "\"C:\\W\x1A"
        "00321\\weg.exe\" /x";
    EXPECT_FALSE(isExactCommand(line));
    EXPECT_EQ(failureOf(line), 52);
    EXPECT_TRUE(isExactCommand("C:\\Jörg\\weg.exe"));
}

TEST_F(CommandStartTest, AFolderIsNoProgram) {
    makeFolderOnDisk(folder() + "Ordner");
    EXPECT_NE(failureOf(folder() + "Ordner"), 0);
    EXPECT_NE(failureOf(folder() + "Ordner /x"), 0);
}

}  // namespace
}  // namespace bromvale::testing

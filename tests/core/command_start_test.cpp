// Command lines that start nothing, on both providers.
#include "core/command_start.h"

#include "platform/failure.h"
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

TEST_F(CommandStartTest, AFolderIsNoProgram) {
    makeFolderOnDisk(folder() + "Ordner");
    EXPECT_NE(failureOf(folder() + "Ordner"), 0);
    EXPECT_NE(failureOf(folder() + "Ordner /x"), 0);
}

}  // namespace
}  // namespace bromvale::testing

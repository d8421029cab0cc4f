// Real programs, started by the system: what arrives as their arguments tells how the line was taken apart.
// The program is a copy of the system's command interpreter under names of its own.
#include "base/failure.h"
#include "core/command_start.h"
#include "platform/win32/system/windows.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

class CommandStartWin32Test : public TestMachine {
  protected:
    CommandStartWin32Test() {
        makeFolderOnDisk(folder() + "Ein Ordner");
        program_ = folder() + "Ein Ordner\\weg mit.exe";
        char system[MAX_PATH] = "";
        GetSystemDirectoryA(system, MAX_PATH);
        EXPECT_TRUE(CopyFileA((std::string(system) + "\\cmd.exe").c_str(), program_.c_str(), FALSE));
    }

    [[nodiscard]] std::string answerFile() const { return folder() + "antwort.txt"; }
    // Has the started interpreter write a word into the answer file.
    [[nodiscard]] std::string switches(const std::string& word) const {
        return " /c echo " + word + ">" + answerFile();
    }

    // Waits for the file with the word; the program that writes it isn't waited for by the start.
    std::string answer() {
        for (int tries = 0; tries < 300; ++tries) {
            std::string text = readWholeFile(answerFile());
            if (text != "<missing>" && text.ends_with("\n")) return text;
            Sleep(50);
        }
        return "<none>";
    }

    std::string program_;
};

TEST_F(CommandStartWin32Test, AQuotedProgramWithSwitchesRuns) {
    startCommand("\"" + program_ + "\"" + switches("eins"), SW_HIDE);
    EXPECT_EQ(answer(), "eins\r\n");
}

TEST_F(CommandStartWin32Test, AnUnquotedPathWithBlanksRuns) {
    startCommand(program_ + switches("zwei"), SW_HIDE);
    EXPECT_EQ(answer(), "zwei\r\n");
}

TEST_F(CommandStartWin32Test, AnExtensionIsAdded) {
    startCommand(program_.substr(0, program_.size() - 4) + switches("drei"), SW_HIDE);
    EXPECT_EQ(answer(), "drei\r\n");
}

TEST_F(CommandStartWin32Test, ANameWithoutFolderIsLookedForInTheSystemsFolders) {
    startCommand("cmd.exe" + switches("vier"), SW_HIDE);
    EXPECT_EQ(answer(), "vier\r\n");
}

TEST_F(CommandStartWin32Test, VariablesAreReplaced) {
    ASSERT_TRUE(SetEnvironmentVariableA("BROMVALE_TEST", folder().c_str()));
    startCommand("\"%BROMVALE_TEST%Ein Ordner\\weg mit.exe\"" + switches("fünf"), SW_HIDE);
    EXPECT_NE(answer(), "<none>");
}

TEST_F(CommandStartWin32Test, TheStartDoesNotWait) {
    const DWORD before = GetTickCount();
    startCommand("cmd.exe /c ping -n 6 127.0.0.1", SW_HIDE);
    EXPECT_LT(GetTickCount() - before, 5000u);
}

TEST_F(CommandStartWin32Test, AFileThatIsNoProgramIsNoMissingFile) {
    writeWholeFile(folder() + "text.exe", "Das ist kein Programm.");
    try {
        startCommand(folder() + "text.exe", SW_HIDE);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_NE(failure.number, 53);
    }
}

}  // namespace
}  // namespace bromvale::testing

#include "platform/offline/desktop/process_api.h"

#include <gtest/gtest.h>

#include "platform/offline/machine.h"

namespace bromvale::offline {
namespace {

class CommandLineTest : public ::testing::Test {
  protected:
    CommandLineTest() {
        for (const char* path :
             {"C:\\Programme Neu\\Ein Haus\\weg.exe", "C:\\Programme\\a.exe", "C:\\WINDOWS\\regedit.exe",
              "C:\\WINDOWS\\SYSTEM32\\msiexec.exe", "C:\\Programme\\stapel.bat"})
            machine().drives.writeFile(path, "MZ");
    }
};

TEST_F(CommandLineTest, AQuotedProgramIsTakenWhole) {
    EXPECT_EQ(programOf("\"C:\\Programme Neu\\Ein Haus\\weg.exe\" /still"),
              "C:\\Programme Neu\\Ein Haus\\weg.exe");
    EXPECT_EQ(programOf("\"C:\\Programme Neu\\Ein Haus\\weg\" /still"),
              "C:\\Programme Neu\\Ein Haus\\weg.exe");
    EXPECT_EQ(programOf("\"C:\\Programme\\a.exe"), "C:\\Programme\\a.exe");
    EXPECT_EQ(programOf("\"C:\\Programme\\a.exe /x\""), "");
}

TEST_F(CommandLineTest, AnUnquotedPathIsTriedUpToEachBlank) {
    EXPECT_EQ(programOf("C:\\Programme Neu\\Ein Haus\\weg.exe /still /alles"),
              "C:\\Programme Neu\\Ein Haus\\weg.exe");
    EXPECT_EQ(programOf("C:\\Programme Neu\\Ein Haus\\weg /still"), "C:\\Programme Neu\\Ein Haus\\weg.exe");
    EXPECT_EQ(programOf("C:\\Programme\\a.exe\t/x"), "C:\\Programme\\a.exe");
    machine().drives.writeFile("C:\\Programme.exe", "MZ");
    EXPECT_EQ(programOf("C:\\Programme Neu\\Ein Haus\\weg.exe"), "C:\\Programme.exe");
}

TEST_F(CommandLineTest, AFolderIsNoProgram) {
    EXPECT_EQ(programOf("C:\\Programme"), "");
    EXPECT_EQ(programOf("C:\\Programme Neu"), "");
    machine().drives.makeFolder("C:\\Programme\\ordner.exe");
    EXPECT_EQ(programOf("C:\\Programme\\ordner.exe"), "");
}

TEST_F(CommandLineTest, ANameWithoutFolderIsLookedForInTheSystemsFolders) {
    EXPECT_EQ(programOf("MsiExec.exe /X{1}"), "C:\\WINDOWS\\SYSTEM32\\MsiExec.exe");
    EXPECT_EQ(programOf("regedit /s x.reg"), "C:\\WINDOWS\\regedit.exe");
    EXPECT_EQ(programOf("fehlt /s"), "");
}

TEST_F(CommandLineTest, AnExtensionIsOnlyAddedToANameWithoutADot) {
    EXPECT_EQ(programOf("C:\\Programme\\stapel.bat /x"), "C:\\Programme\\stapel.bat");
    EXPECT_EQ(programOf("C:\\Programme\\a."), "");
    EXPECT_EQ(programOf("C:\\Programme\\stapel"), "");
}

TEST_F(CommandLineTest, NothingIsNoProgram) {
    for (const char* line : {"", " ", "\t", "\"\"", "\""}) EXPECT_EQ(programOf(line), "") << line;
}

TEST(EnvironmentTest, KnownVariablesAreReplacedAndOthersStay) {
    char buffer[200];
    const auto expanded = [&](const char* text) {
        const DWORD size = ExpandEnvironmentStringsA(text, buffer, sizeof buffer);
        EXPECT_EQ(size, std::string(buffer).size() + 1);
        return std::string(buffer);
    };
    EXPECT_EQ(expanded("%SystemRoot%\\x.exe"), "C:\\WINDOWS\\x.exe");
    EXPECT_EQ(expanded("\"%programfiles%\\A\\weg.exe\" /x"), "\"C:\\Programme\\A\\weg.exe\" /x");
    EXPECT_EQ(expanded("100% sicher, %fehlt% %windir%"), "100% sicher, %fehlt% C:\\WINDOWS");
    EXPECT_EQ(expanded(""), "");
    EXPECT_EQ(ExpandEnvironmentStringsA("%windir%", buffer, 3), 11u);
}

}  // namespace
}  // namespace bromvale::offline

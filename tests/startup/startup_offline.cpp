// What Main reads, refuses and leaves in the log, whichever road it takes.
#include "core/startup/arguments.h"
#include "core/text_file.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "platform/offline/files/api.h"
#include "tests/startup/startup_fixture.h"
#include "ui/frm_login.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

using StartUp = StartUpTest;

TEST_F(StartUp, ASecondStartEndsAtOnceWithoutALogLine) {
    machine().previousInstance = true;
    Main();
    EXPECT_EQ(filesIn(folder(), "*"), Lines{});
    EXPECT_EQ(AppTitle, "");
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(formNames(), Lines{});
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, kSettingsKey));
}

TEST_F(StartUp, ASecondStartThatMayNotOpenTheFirstOnesMutexEndsAtOnce) {
    machine().faults.fail("CreateMutexA", 1, ERROR_ACCESS_DENIED);
    Main();
    EXPECT_EQ(filesIn(folder(), "*"), Lines{});
    EXPECT_EQ(AppTitle, "");
    EXPECT_EQ(formNames(), Lines{});
    EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, kSettingsKey));
}

TEST_F(StartUp, AMutexThatCannotBeMadeForAnotherReasonIsNoSecondStart) {
    machine().faults.fail("CreateMutexA", 1, ERROR_NOT_ENOUGH_MEMORY);
    Main();
    EXPECT_EQ(AppTitle, "Bromvale");
}

TEST_F(StartUp, TheStateIsFilled) {
    set("AutoScan", "0");
    set("Proxy", "1");
    Main();
    EXPECT_EQ(AppTitle, "Bromvale");
    EXPECT_EQ(AppVersion, BROMVALE_VERSION);
    EXPECT_EQ(AppTarget, "für Windows 98/ME und NT4");
    EXPECT_EQ(AppPath, "C:\\Programme\\Bromvale\\");
    EXPECT_EQ(BackupPath, "C:\\Programme\\Bromvale\\Backup\\");
    EXPECT_EQ(ComputerName, "RECHNER");
    EXPECT_EQ(UserName, "Benutzer");
    EXPECT_EQ(WinDir, "C:\\WINDOWS\\");
    EXPECT_EQ(AgentDir, "C:\\WINDOWS\\msagent\\");
    EXPECT_EQ(AgentCharsDir, "C:\\WINDOWS\\msagent\\chars\\");
    EXPECT_EQ(SysDir, "C:\\WINDOWS\\SYSTEM32\\");
    EXPECT_EQ(TmpDir, "C:\\WINDOWS\\TEMP\\");
    EXPECT_EQ(ProgramFilesDir, "C:\\Programme\\");
    EXPECT_EQ(OSName, "Windows XP");
    EXPECT_EQ(OSBuild, "2600");
    EXPECT_EQ(Proxy, 1);
    EXPECT_EQ(logLines(), Lines{kStarted});
    EXPECT_EQ(formNames(), Lines{"frmMain"});
    EXPECT_TRUE(frmMain().visible());
}

TEST_F(StartUp, AMissingProgramFilesDirGivesABackslash) {
    machine().registry.deleteValue("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion",
                                   "ProgramFilesDir");
    set("AutoScan", "0");
    Main();
    EXPECT_EQ(ProgramFilesDir, "\\");
}

// With the marks of what the code page lacks; its ANSI text names another folder.
TEST_F(StartUp, AProgramFilesDirBeyondTheCodePageIsKnownExactly) {
    machine().registry.setText(u"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion",
                               u"ProgramFilesDir", u"C:\\Prog\u0141");
    set("AutoScan", "0");
    Main();
    EXPECT_EQ(ProgramFilesDir, exactText(u"C:\\Prog\u0141") + "\\");
    EXPECT_NE(ProgramFilesDir, "C:\\ProgL\\");
}

TEST_F(StartUp, TheFirstRecordLandsInTheCurrentDirectoryAndAllLaterOnesInTheProgramFolder) {
    SetCurrentDirectoryA("C:\\WINDOWS\\TEMP");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(readWholeFile("C:\\WINDOWS\\TEMP\\bromvale.log"),
              "15.11.2002 07:10:20; started; Bromvale; " BROMVALE_VERSION "; für Windows 98/ME und NT4\r\n");
    ASSERT_EQ(logLines().size(), 3u);  // the repair, in two lines, and the missing liste.txt
    EXPECT_EQ(logLines()[0].substr(0, 26), "modKeyFunc; KeysNachtragen");
    EXPECT_EQ(logLines()[2].substr(0, 13), "modMain; Main");
}

TEST_F(StartUp, Windows95IsRefusedAfterItsSettingsWereRepaired) {
    machine().setOs({1, 4, 0, 0x040003B6});
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Windows 95 wird nicht unterstützt.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 64u);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "1stRun"), "1");
    EXPECT_EQ(
        logLines(),
        (Lines{kStarted,
               "modKeyFunc; KeysNachtragen; Die Registryeinträge mussten nachgetragen werden.; 10000; Die "
               "Programmeinstellungen konnten nicht gelesen werden.",
               "Installieren Sie das Programm neu."}));
    EXPECT_EQ(formNames(), Lines{});
}

TEST_F(StartUp, Windows95IsRefusedOnTheEmptyingRoadToo) {
    machine().setOs({1, 4, 0, 0x040003B6});
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(boxes().size(), 1u);
    EXPECT_TRUE(filesIn(folder(), "liste.txt").empty());
}

TEST_F(StartUp, AProgramFolderThatNoNameReachesIsToldAndEndsTheStart) {
    machine().setAppPath(u"C:\\Paw\u0142owski");
    machine().drives.makeFolder(u"C:\\Paw\u0142owski");
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        boxes()[0].text,
        "Der Name des Ordners, in dem Bromvale liegt, enthält Zeichen, die das Programm auf diesem System "
        "nicht verwenden kann:\r\nC:\\Pawlowski\\\r\n\r\nDas Protokoll und die Sicherungsdateien könnten "
        "dort nicht angelegt werden. Verschieben Sie das Programm in einen anderen Ordner und starten Sie "
        "es erneut.");
    EXPECT_EQ(boxes()[0].style, 48u);
    EXPECT_TRUE(loadedForms().empty());
}

TEST_F(StartUp, AProgramFolderIsReachedByItsShortName) {
    machine().drives.shortNames = true;
    machine().drives.writeFile(u"C:\\Paw\u0142owski\\Bromvale.exe", "MZ");
    machine().setAppPath(u"C:\\Paw\u0142owski");
    machine().drives.currentDirectory = "C:\\";
    set("Protokoll", "1");
    Main();
    EXPECT_TRUE(isExact(AppPath)) << AppPath;
    EXPECT_TRUE(machine().drives.exists(u"C:\\Paw\u0142owski\\bromvale.log"));
    EXPECT_FALSE(loadedForms().empty());
}

TEST_F(StartUp, A9xSystemOfSeveralBytesACharacterIsRefused) {
    machine().setOs(*offline::osByName("Windows 98"));
    machine().textRules.codePage = 932;
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        boxes()[0].text,
        "Bromvale kann auf diesem System nicht arbeiten: Seine Schriftzeichen bestehen aus mehreren Bytes, "
        "und die Namen von Schlüsseln und Dateien wären nicht sicher zu lesen.");
    EXPECT_EQ(boxes()[0].style, 48u);
    EXPECT_TRUE(loadedForms().empty());
}

TEST_F(StartUp, AnUnknownSystemPasses) {
    machine().setOs({2, 6, 1, 7601});
    set("AutoScan", "0");
    Main();
    EXPECT_EQ(OSName, "Unbekanntes Betriebssystem");
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

// The way to the program stands before its arguments, in quotes where it has blanks.
TEST_F(StartUp, AFolderWithBlanksIsNoArgument) {
    for (const char* path : {"C:\\Programme\\Bromvale 1 -d", "C:\\Programme\\Bromvale"}) {
        machine().setAppPath(path);
        machine().commandLine = "-d";
        EXPECT_EQ(arguments(), "-d") << path;
        machine().commandLine = "";
        EXPECT_EQ(arguments(), "") << path;
    }
}

class OtherCommandLine : public StartUp, public ::testing::WithParamInterface<const char*> {};

TEST_P(OtherCommandLine, OpensTheMainWindow) {
    machine().commandLine = GetParam();
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n");
    machine().drives.writeFile("C:\\Müll\\a.txt", "x");
    set("AutoScan", "0");
    Main();
    EXPECT_EQ(formNames(), Lines{"frmMain"});
    EXPECT_EQ(filesIn("C:\\Müll\\", "*"), Lines{"a.txt"});
}

INSTANTIATE_TEST_SUITE_P(StartUp, OtherCommandLine,
                         ::testing::Values("", "-d ", "-D", "-d x", "/d", "--d", "\"-d\""));

}  // namespace
}  // namespace bromvale

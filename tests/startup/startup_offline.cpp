// Starts of the whole program: what Main reads, refuses, empties, shows and leaves in the log.
#include <algorithm>

#include "core/log.h"
#include "core/settings.h"
#include "core/startup/main.h"
#include "core/state.h"
#include "core/text_file.h"
#include "platform/controls/form.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "platform/offline/files/api.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"
#include "ui/frm_login.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;
using offline::machine;

const char* const kCurrentVersion = "Software\\Microsoft\\Windows\\CurrentVersion";

class StartUp : public testing::TestMachine {
  protected:
    StartUp() {
        setString(HKEY_LOCAL_MACHINE, kCurrentVersion, "ProgramFilesDir", "C:\\Programme");
        makeComponents("C:\\WINDOWS\\SYSTEM32\\");
        machine().clock.set(2002, 11, 15, 7, 10, 20);
        setErrorDialog(
            [this](auto, auto funktion, std::int32_t nummer, auto beschreibung, std::int32_t stil) {
                dialogs.push_back(std::string(funktion) + "|" + std::to_string(nummer) + "|" +
                                  std::string(beschreibung) + "|" + std::to_string(stil));
            });
    }
    ~StartUp() override { setErrorDialog(nullptr); }
    void set(std::string_view name, std::string_view text) {
        setString(HKEY_CURRENT_USER, kSettingsKey, name, text);
    }
    static Lines formNames() {
        Lines names;
        for (const Form* form : loadedForms()) names.push_back(form->name());
        return names;
    }
    Lines dialogs;
};

const char* const kStarted = "started; Bromvale; 1.0.0; für Windows 98/ME und NT4";

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
    EXPECT_EQ(AppVersion, "1.0.0");
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

TEST_F(StartUp, TheFirstRecordLandsInTheCurrentDirectoryAndAllLaterOnesInTheProgramFolder) {
    SetCurrentDirectoryA("C:\\WINDOWS\\TEMP");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(readWholeFile("C:\\WINDOWS\\TEMP\\bromvale.log"),
              "15.11.2002 07:10:20; started; Bromvale; 1.0.0; für Windows 98/ME und NT4\r\n");
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
    EXPECT_FALSE(filesIn(folder(), "liste.txt").size() > 0);
}

TEST_F(StartUp, AProgramFolderThatNoNameReachesIsToldAndEndsTheStart) {
    machine().setAppPath(u"C:\\Paw\u0142owski");
    machine().drives.makeFolder(u"C:\\Paw\u0142owski");
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_NE(boxes()[0].text.find("C:\\Pawlowski"), std::string::npos);
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
    EXPECT_NE(boxes()[0].text.find("mehreren Bytes"), std::string::npos);
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

// --- the emptying road ---

TEST_F(StartUp, AMissingListIsMadeAndGivesAnEmptyRun) {
    set("AutoScan", "0");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(logLines(), (Lines{kStarted,
                                 "modMain; Main; C:\\Programme\\Bromvale\\liste.txt musste angelegt werden.; "
                                 "53; Datei nicht gefunden"}));
    EXPECT_EQ(readWholeFile(folder() + "liste.txt"), "");
    EXPECT_EQ(formNames(), Lines{});
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(StartUp, TheFoldersOfTheListAreEmptiedIntoTheRecycleBin) {
    machine().drives.writeFile("C:\\Müll\\a.txt", "x");
    machine().drives.writeFile("C:\\Müll\\unten\\b.txt", "y");
    machine().drives.addMemory('D');
    machine().drives.writeFile("D:\\Rest\\c.txt", "z");
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n\r\nC:\\fehlt\r\nD:\\Rest\\\r\n");
    set("DelFilePermanent", "0");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(filesIn("C:\\Müll\\", "*"), Lines{});
    EXPECT_TRUE(machine().drives.exists("C:\\Müll"));
    EXPECT_EQ(filesIn("D:\\Rest\\", "*"), Lines{});
    Lines recycled;
    for (const auto& entry : machine().drives.recycled) recycled.push_back(entry.path);
    EXPECT_EQ(recycled, (Lines{"C:\\Müll\\a.txt", "C:\\Müll\\unten", "D:\\Rest\\c.txt"}));
    EXPECT_EQ(formNames(), Lines{});
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(StartUp, WithDelFilePermanentFilesAreGoneAndAFilledSubFolderStaysWhole) {
    machine().drives.writeFile("C:\\Müll\\a.txt", "x");
    machine().drives.writeFile("C:\\Müll\\voll\\b.txt", "y");
    machine().drives.makeFolder("C:\\Müll\\leer");
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n");
    set("DelFilePermanent", "1");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(filesIn("C:\\Müll\\", "*"), Lines{"voll"});
    EXPECT_EQ(filesIn("C:\\Müll\\voll\\", "*"), Lines{"b.txt"});
    EXPECT_TRUE(machine().drives.recycled.empty());
}

TEST_F(StartUp, TheEmptyingRoadShowsTheWaitingWindowForATenthOfASecond) {
    set("AutoScan", "0");
    writeWholeFile(folder() + "liste.txt", "");
    machine().commandLine = "-d";
    std::string shown;
    atPump(1, [&] {
        EXPECT_TRUE(frmLogin().visible());
        shown = frmLogin().lblLogin.caption();
    });
    const auto before = machine().clock.now();
    Main();
    EXPECT_EQ(shown, "Bromvale 1.0.0\r\nDie gewählten Ordner werden geleert. Bitte warten...");
    EXPECT_EQ(machine().clock.now() - before, 100);
    EXPECT_EQ(formNames(), Lines{});
}

TEST_F(StartUp, TheEmptyingRoadTracesItsWay) {
    set("Protokoll", "1");
    machine().drives.writeFile("C:\\Müll\\a.txt", "x");
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(logLines(),
              (Lines{
                  kStarted,
                  "modMain; Main; Protokollierung=1; 0; ",
                  "modKeyFunc; ReadAppSwitch; started; 0; ",
                  "modKeyFunc; ReadAppSwitch; Protokoll=1; 0; ",
                  "modKeyFunc; ReadAppSwitch; endet; 0; ",
                  "modMain; Main; C:\\Programme\\Bromvale\\; 0; ",
                  "modMain; Main; C:\\Programme\\Bromvale\\Backup\\; 0; ",
                  "modMain; Main; RECHNER; 0; ",
                  "modMain; Main; Benutzer; 0; ",
                  "modMain; Main; C:\\WINDOWS\\; 0; ",
                  "modMain; Main; C:\\WINDOWS\\msagent\\; 0; ",
                  "modMain; Main; C:\\WINDOWS\\SYSTEM32\\; 0; ",
                  "modMain; Main; C:\\WINDOWS\\TEMP\\; 0; ",
                  "modMain; Main; C:\\Programme\\; 0; ",
                  "modMain; Main; Windows XP Build: 2600; 0; ",
                  "modLibRegister; CheckLibs; started; 0; ",
                  "modLibRegister; CheckLibs; endet; 0; ",
                  "modMain; Main; Tempfiledelete startet; 0; ",
                  "modMain; Main; Tempfiledelete: C:\\Programme\\Bromvale\\\\liste.txt geöffnet; 0; ",
                  "modFiles; FindFileAPI; started; 0; ",
                  "modFiles; FindFileAPI; durchsuchter Ordner C:\\Müll\\; 0; ",
                  "modFiles; FindFileAPI; Darin wurden 1 Dateien gefunden.; 0; ",
                  "modFiles; FindFileAPI; endet; 0; ",
                  "modFiles; FileDel; Dateien permanent löschen=0; 0; ",
                  "modFiles; FileDel; Versuch die Datei C:\\Müll\\a.txt zu löschen; Ergebnis unbekannt; 0; ",
                  "modMain; Main; Tempfiledelete: Dateien und Ordner gelöscht; 0; ",
                  "modMain; Main; Tempfiledelete endet; 0; ",
              }));
    EXPECT_TRUE(boxes().empty());
}

// Without a word on the screen, tracing or not; the other lines are worked on.
TEST_F(StartUp, TheEmptyingRoadLogsTheLinesThatLeadElsewhere) {
    set("AutoScan", "0");
    for (const char* path :
         {"C:\\Leeren\\a.txt", "C:\\Leeren\\Daten\\a.txt", "C:\\WINDOWS\\b.txt", "C:\\Müll\\a.txt"})
        machine().drives.writeFile(path, "x");
    SetCurrentDirectoryA("C:\\WINDOWS");
    writeWholeFile(folder() + "liste.txt",
                   "C:\\Leeren\\Daten.\r\nC:\\Leeren\\Daten\\..\r\n.\r\nC:\\Leeren\\\\\r\nC:\\Müll\r\n");
    machine().commandLine = "-d";
    Main();
    EXPECT_EQ(filesIn("C:\\Müll\\", "*"), Lines{});
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), (Lines{"Daten", "a.txt"}));
    EXPECT_EQ(filesIn("C:\\Leeren\\Daten\\", "*"), Lines{"a.txt"});
    EXPECT_TRUE(machine().drives.exists("C:\\WINDOWS\\b.txt"));
    EXPECT_TRUE(boxes().empty());
    const std::string start = "modMain; Main; Tempfiledelete: ";
    EXPECT_EQ(
        logLines(),
        (Lines{
            start + "C:\\Leeren\\Daten. wird nicht geleert. Windows liest den Teil \"Daten.\" des Pfads "
                    "anders, als er dort steht.; 0; ",
            start +
                "C:\\Leeren\\Daten\\.. wird nicht geleert. Windows liest den Teil \"..\" des Pfads anders, "
                "als er dort steht.; 0; ",
            start + ". wird nicht geleert. Der Pfad ist nicht vollständig: er beginnt weder mit einem "
                    "Laufwerk noch mit einer Netzwerkfreigabe.; 0; ",
            start +
                "C:\\Leeren\\\\ wird nicht geleert. Im Pfad stehen zwei Trennzeichen hintereinander.; 0; "}));
}

// --- failures ---

TEST_F(StartUp, AnyOtherFailureLeavesTheErrorDialogAndSkipsTheRest) {
    set("AutoScan", "0");
    writeWholeFile(folder() + "liste.txt", "C:\\WINDOWS\r\n");
    const HANDLE other = CreateFileA("C:\\Programme\\Bromvale\\liste.txt", GENERIC_READ | GENERIC_WRITE, 0,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    machine().commandLine = "-d";
    Main();
    CloseHandle(other);
    EXPECT_EQ(logLines(), (Lines{kStarted, "modMain; Main; ; 70; Zugriff verweigert"}));
    EXPECT_EQ(dialogs, Lines{"Main|70|Zugriff verweigert|16"});
    EXPECT_EQ(readWholeFile(folder() + "liste.txt"), "C:\\WINDOWS\r\n");
}

TEST_F(StartUp, MemoryThatRunsOutIsToldBeforeTheReport) {
    set("AutoScan", "0");
    machine().commandLine = "-d";
    atPump(1, [] { throw std::bad_alloc(); });
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(
        boxes()[0].text,
        "Es ist mehr Speicher erforderlich, als verfügbar ist.\r"
        "Es sind zu viele Anwendungen, Dokumente oder Quelldateien geöffnet.\r"
        "Schließen Sie alle geöffneten Anwendungen, Dokumente oder Quelldateien, die Sie nicht benötigen.\r"
        "Starten Sie ggf. den Rechner neu.");
    EXPECT_EQ(boxes()[0].style, 16u);
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(dialogs, Lines{"Main|7|Nicht genügend Speicher|16"});
    EXPECT_EQ(logLines(), (Lines{kStarted, "modMain; Main; ; 7; Nicht genügend Speicher"}));
}

TEST_F(StartUp, AFailureThatNobodyCatchesIsShownAndTheProgramGoesOn) {
    set("AutoScan", "0");
    runProgram();
    dispatchUserEvent([] { raise(9); });
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Laufzeitfehler '9':\r\n\r\nIndex außerhalb des gültigen Bereichs");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 16u);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(StartUp, MemoryThatRunsOutInAnEventIsShownAndTheProgramGoesOn) {
    set("AutoScan", "0");
    runProgram();
    dispatchUserEvent([] { throw std::bad_alloc(); });
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Laufzeitfehler '7':\r\n\r\nNicht genügend Speicher");
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(StartUp, AListThatCannotBeMadeIsAFailureThatNobodyCatches) {
    set("AutoScan", "0");
    machine().commandLine = "-d";
    // Opened are the log, the list, the log, and then the list to be made.
    machine().faults.fail("CreateFileA", 4, ERROR_ACCESS_DENIED);
    runProgram();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Laufzeitfehler '75':\r\n\r\nFehler beim Zugriff auf Pfad/Datei");
    EXPECT_EQ(formNames(), Lines{});  // with the waiting window the process would never end
}

TEST_F(StartUp, AfterAnyOtherFailureOfTheEmptyingRoadOnlyTheErrorDialogIsLeft) {
    set("AutoScan", "0");
    writeWholeFile(folder() + "liste.txt", "C:\\WINDOWS\r\n");
    machine().commandLine = "-d";
    machine().faults.fail("ReadFile", 1, ERROR_ACCESS_DENIED);
    runProgram();
    EXPECT_EQ(formNames(), Lines{"frmError"});
}

TEST_F(StartUp, TheEmptyingRoadEndsThoughAComponentHadToBeRegistered) {
    set("AutoScan", "0");
    writeWholeFile(folder() + "liste.txt", "");
    EXPECT_EQ(
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{71A27032-C7D8-11D2-BEF8-525400DFB47A}"),
        0);
    writeWholeFile("C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll", "");
    machine().commandLine = "-d";
    runProgram();
    EXPECT_EQ(machine().events.of(offline::EventKind::Library).size(), 1u);
    EXPECT_EQ(formNames(), Lines{});
}

TEST_F(StartUp, TheWindowThatMenusOpenFromStaysWithTheMainWindow) {
    set("AutoScan", "0");
    EXPECT_EQ(
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\{71A27032-C7D8-11D2-BEF8-525400DFB47A}"),
        0);
    writeWholeFile("C:\\WINDOWS\\SYSTEM32\\SSubTmr6.dll", "");
    runProgram();
    EXPECT_EQ(formNames(), (Lines{"frmPopUp", "frmMain"}));
}

// --- the normal road ---

TEST_F(StartUp, TheFirstRunShowsTheHelpOnce) {
    set("1stRun", "1");
    Main();
    const auto help = machine().events.of(offline::EventKind::Help);
    ASSERT_EQ(help.size(), 1u);
    EXPECT_EQ(help[0].text, "Bromvale.chm");
    EXPECT_EQ(help[0].number, 0u);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "1stRun"), "0");
    EXPECT_EQ(FirstRun, 1);
    EXPECT_EQ(formNames(), Lines{"frmMain"});
}

TEST_F(StartUp, ALaterRunShowsNoHelp) {
    set("1stRun", "0");
    Main();
    EXPECT_EQ(machine().events.count(offline::EventKind::Help), 0u);
}

TEST_F(StartUp, AFreshUserGetsTheHelp) {
    Main();
    EXPECT_EQ(machine().events.count(offline::EventKind::Help), 1u);
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "1stRun"), "0");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(StartUp, TracingIsToldBeforeTheWindowOpens) {
    set("Protokoll", "1");
    Main();
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Die Protokollierung ist aktiviert.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 64u);
}

TEST_F(StartUp, TheNormalRoadTracesItsWay) {
    set("Protokoll", "1");
    set("1stRun", "1");
    Main();
    Lines lines = logLines();
    const auto checked = std::find(lines.begin(), lines.end(), "modLibRegister; CheckLibs; endet; 0; ");
    ASSERT_NE(checked, lines.end());
    lines.erase(lines.begin(), checked + 1);
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("frmMain; Form_Resize"); });
    EXPECT_EQ(lines, (Lines{
                         "modMain; CheckFirstRun; started; 0; ",
                         "frmMain; Form_Load; started; 0; ",
                         "frmMain; Form_Load; endet; 0; ",
                         "modKeyFunc; SetKeyValue; -2147483647; Software\\Bromvale; 1; 1stRun; 0; 0; ",
                         "modMain; CheckFirstRun; endet; 0; ",
                     }));
}

// --- the window's place ---

TEST_F(StartUp, ScreenSaveRestoresAndSavesThePlaceWithCrossedNames) {
    set("ScreenSave", "1");
    set("ScreenX", "300");
    set("ScreenY", "600");
    set("Form_Height", "9000");
    set("Form_Width", "12000");
    Main();
    EXPECT_EQ(frmMain().top(), 300);
    EXPECT_EQ(frmMain().left(), 600);
    EXPECT_EQ(frmMain().height(), 9000);
    EXPECT_EQ(frmMain().width(), 12000);
    frmMain().setTop(150);
    frmMain().setLeft(450);
    frmMain().setHeight(8100);
    frmMain().setWidth(11100);
    machine().terminateReturns = true;
    frmMain().unload();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenX"), "150");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenY"), "450");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Height"), "8100");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Width"), "11100");
    EXPECT_EQ(machine().events.count(offline::EventKind::End), 1u);
}

TEST_F(StartUp, WithoutScreenSaveNothingIsRestoredAndNothingSaved) {
    set("ScreenSave", "0");
    set("ScreenX", "300");
    set("ScreenY", "600");
    set("Form_Height", "9000");
    set("Form_Width", "12000");
    Main();
    EXPECT_NE(frmMain().top(), 300);
    EXPECT_NE(frmMain().left(), 600);
    EXPECT_NE(frmMain().height(), 9000);
    EXPECT_NE(frmMain().width(), 12000);
    frmMain().setTop(150);
    machine().terminateReturns = true;
    frmMain().unload();
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "ScreenX"), "300");
    EXPECT_EQ(stringValue(HKEY_CURRENT_USER, kSettingsKey, "Form_Width"), "12000");
}

TEST_F(StartUp, AStoredWidthOfTheWholeScreenOpensTheWindowMaximised) {
    set("ScreenSave", "1");
    set("Form_Width", "15360");  // 1024 pixels
    set("Form_Height", "9000");
    Main();
    EXPECT_EQ(frmMain().windowState(), WindowState::Maximised);
}

}  // namespace
}  // namespace bromvale

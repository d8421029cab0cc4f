// The start that empties folders.
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
    EXPECT_EQ(shown, "Bromvale " BROMVALE_VERSION "\r\nDie gewählten Ordner werden geleert. Bitte warten...");
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

}  // namespace
}  // namespace bromvale

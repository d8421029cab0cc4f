// Starts that fail: what is shown, and what goes on.
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

}  // namespace
}  // namespace bromvale

// Clock, faults and Windows family are set here.
#include "platform/offline/machine.h"
#include "tests/repair/removal_fixture.h"
#include "ui/frm_error.h"

namespace bromvale::testing {
namespace {

class RemovalOfflineTest : public RemovalTest {
  protected:
    RemovalOfflineTest() { offline::machine().clock.set(2026, 11, 15, 7, 12, 9); }
    const std::string path =
        "C:\\Programme\\Bromvale\\Backup\\R\xFC"
        "ckg\xE4ngig_15112026_071209.reg";
    static std::string header(const std::string& system, const std::string& name) {
        return system +
               "\r\n\r\n\r\n"
               "; Die nachfolgenden  Registryschl\xFCssel wurden von Bromvale Version 1.0.0\r\n"
               "; als falsch erkannt und entfernt.\r\n"
               "; Mit einem Doppelklick im Windows-Explorer auf diese Datei, werden die hier\r\n"
               "; gesicherten Registryschl\xFCssel wieder in die Registrierungs-Datenbank eingetragen.\r\n"
               "\r\n"
               "\r\n"
               "; erstellt am: Sonntag, 15. Nov 2026 - 07:12:09\r\n"
               "; erstellt von: Benutzer Computername: RECHNER\r\n"
               "; Betriebssystem: " +
               name +
               "\r\n"
               "\r\r\n";
    }
    const std::string recordA = "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"\r\n\r\n";
};

TEST_F(RemovalOfflineTest, TheWholeFileOfWindowsXp) {
    addKey("A");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(readWholeFile(path), header("Windows Registry Editor Version 5.00", "Windows XP") + recordA);
}

TEST_F(RemovalOfflineTest, TheWholeFileOfWindows98) {
    RegFileHeader = "REGEDIT4\r\n\r\n";
    OSName = "Windows 98";
    addKey("A");
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(readWholeFile(path), header("REGEDIT4", "Windows 98") + recordA);
}

TEST_F(RemovalOfflineTest, AFileWithoutRecordEndsBehindItsHeader) {
    removeMarked();
    EXPECT_EQ(readWholeFile(path), header("Windows Registry Editor Version 5.00", "Windows XP"));
}

TEST_F(RemovalOfflineTest, TwoRemovalsInOneSecondShareOneFileWithTwoHeaders) {
    addKey("A");
    form().scan.ProblemeEntfernen();
    addKey("B");
    form().scan.ProblemeEntfernen();
    const std::string head = header("Windows Registry Editor Version 5.00", "Windows XP");
    EXPECT_EQ(readWholeFile(path),
              head + recordA + head + "[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]\r\n@=\"Wert B\"\r\n\r\n");
}

TEST_F(RemovalOfflineTest, DaysAndMonthsOfOneDigitGetTheirZeroAndTheLocalesNames) {
    offline::machine().clock.set(2027, 3, 1, 0, 5, 7);
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(filesIn(BackupPath, "*"), (Texts{"R\xFC"
                                               "ckg\xE4ngig_01032027_000507.reg"}));
    EXPECT_NE(undoFile().find("; erstellt am: Montag, 01. Mrz 2027 - 00:05:07\r\n"), std::string::npos);
}

TEST_F(RemovalOfflineTest, TheLogOfARemovalReadsSo) {
    addKey("A");
    switchTracingOn();
    form().scan.ProblemeEntfernen();
    Texts log = logLines();
    for (std::string& line : log) {
        if (line.starts_with("modKeyFunc; DelKey;")) line = "modKeyFunc; DelKey; ...";  // a handle's number
    }
    // The record's own line ends are written as they are.
    EXPECT_EQ(log, (Texts{
                       "frmMain; ProblemeEntfernen; started; 0; ",
                       "frmMain; ProblemeEntfernen; Sicherungsdatei: Rückgängig_15112026_071209.reg; 0; ",
                       "frmMain; ProblemeEntfernen; Alle Fehler entfernen wurde aktiviert.; 0; ",
                       "modCheckKeys; ProblemeEntfernen; [HKEY_LOCAL_MACHINE\\Software\\Probe\\A]",
                       "0; ",
                       "modKeyFunc; DelKey; ...",
                       "frmMain; ProblemeEntfernen; endet; 0; ",
                   }));
    const std::string bytes = readWholeFile(AppPath + "bromvale.log");
    EXPECT_NE(
        bytes.find(
            "; modCheckKeys; ProblemeEntfernen; [HKEY_LOCAL_MACHINE\\Software\\Probe\\A]\r\n@=\"Wert A\"; "
            "0; \r\n"),
        std::string::npos);
}

TEST_F(RemovalOfflineTest, MarkedRowsAreAnnouncedInTheLog) {
    addKey("A");
    switchTracingOn();
    removeMarked();
    const Texts log = logLines();
    EXPECT_EQ(log.at(2), "frmMain; ProblemeEntfernen; Einzelne Fehler entfernen wurde aktiviert.; 0; ");
}

// Access denied becomes failure 75; the folder is there, so making it fails with 75 as well, which is the
// caller's.
TEST_F(RemovalOfflineTest, AFileThatMayNotBeOpenedInAnExistingFolderIsTheCallersFailure) {
    addKey("A");
    offline::faults().failFrom("CreateFileA", 1, ERROR_ACCESS_DENIED);
    try {
        form().scan.ProblemeEntfernen();
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 75);
    }
    EXPECT_FALSE(isGone("A"));
}

TEST_F(RemovalOfflineTest, AnyOtherFailureOfTheOpenShowsTheDialogAndLeavesTheRows) {
    addKey("A");
    offline::faults().fail("CreateFileA", 1, ERROR_SHARING_VIOLATION);
    form().scan.ProblemeEntfernen();
    EXPECT_EQ(logLines(), (Texts{"frmMain; ProblemeEntfernen; ; 70; Zugriff verweigert"}));
    EXPECT_EQ(list().count(), 1);
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(form().scan.lblScanBericht.caption(), "");
}

TEST_F(RemovalOfflineTest, TheDialogOfSuchAFailureIsShown) {
    static_cast<void>(form());
    registerErrorDialog();
    offline::faults().fail("CreateFileA", 1, ERROR_SHARING_VIOLATION);
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(frmError().visible());
}

TEST_F(RemovalOfflineTest, AFullDiskStopsInTheMiddleWithAllRowsStillListed) {
    for (const char* name : {"A", "B", "C"}) addKey(name);
    // The header is seven writes, then come C and its copy, then B.
    offline::faults().fail("WriteFile", 7 + 3, 112);
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("C"));
    EXPECT_FALSE(isGone("B"));
    EXPECT_FALSE(isGone("A"));
    EXPECT_EQ(list().count(), 3);
    EXPECT_EQ(undoRecords(), "[HKEY_LOCAL_MACHINE\\Software\\Probe\\C]\r\n@=\"Wert C\"\r\n\r\n");
    EXPECT_EQ(openFileCount(), 1);
    EXPECT_EQ(form().scan.lblScanBericht.caption(), "");
    EXPECT_EQ(logLines().size(), 1u);
}

TEST_F(RemovalOfflineTest, OfMarkedRowsThoseRemovedBeforeAFailureAreGoneFromTheList) {
    for (const char* name : {"A", "B", "C"}) addKey(name);
    select({"\\A]", "\\B]", "\\C]"});
    offline::faults().fail("WriteFile", 7 + 3, 112);
    removeMarked();
    EXPECT_EQ(rowKeys(), (Texts{"[HKEY_LOCAL_MACHINE\\Software\\Probe\\B]",
                                "[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]"}));
}

TEST_F(RemovalOfflineTest, OnThe9xFamilyTheSubTreeGoesAlong) {
    offline::machine().setOs(*offline::osByName("Windows 98"));
    offline::machine().registry.setNtFamily(false);
    setString(HKEY_LOCAL_MACHINE, "Software\\Probe\\A\\Unten\\Tiefer", "", "u");
    add("[HKEY_LOCAL_MACHINE\\Software\\Probe\\A]", "@", "");
    form().scan.ProblemeEntfernen();
    EXPECT_TRUE(isGone("A"));
}

// Of the row into the undo file, then of the whole key into the copy.
TEST_F(RemovalOfflineTest, EachRecordIsOneWriteBeforeItsDeletion) {
    for (const char* name : {"A", "B"}) addKey(name);
    static_cast<void>(form());
    Texts calls;
    offline::faults().observe([&](std::string_view operation) {
        if (operation == "WriteFile" || operation == "RegDeleteKeyA") calls.emplace_back(operation);
    });
    form().scan.ProblemeEntfernen();
    offline::faults().clear();
    EXPECT_EQ(calls, (Texts{"WriteFile", "WriteFile", "WriteFile", "WriteFile", "WriteFile", "WriteFile",
                            "WriteFile", "WriteFile", "WriteFile", "RegDeleteKeyA", "WriteFile", "WriteFile",
                            "RegDeleteKeyA"}));
}

TEST_F(RemovalOfflineTest, NothingPumpsEventsDuringARemoval) {
    for (const char* name : {"A", "B"}) addKey(name);
    bool pumped = false;
    atPump(1, [&] { pumped = true; });
    form().scan.ProblemeEntfernen();
    EXPECT_FALSE(pumped);
}

}  // namespace
}  // namespace bromvale::testing

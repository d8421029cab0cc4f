// Adding a folder to the list, and what the page starts or opens.
#include "cleanup/browse_for_folder.h"
#include "tests/cleanup/cleanup_fixture.h"
#include "tests/support/recorded_offline.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class FolderChoosing : public CleanupTest {
  protected:
    // The user clicks "Ordner wählen" and chooses this folder.
    void choose(const std::string& path) {
        machine().folders = {path};
        form().cleanup.cmdOrdnerWählen.userClick();
    }
    static Texts started() { return recorded(EventKind::Run); }
};

TEST_F(FolderChoosing, TheDialogsTitleSaysWhatItIsFor) {
    openPage("");
    choose("C:\\Temp");
    ASSERT_EQ(machine().events.count(EventKind::Browse), 1u);
    EXPECT_EQ(machine().events.of(EventKind::Browse)[0].text,
              "Wähle den Ordner, aus den die Dateien gelöscht werden sollen.");
    EXPECT_EQ(machine().lastRequests.folderDialog.ulFlags, 1u);
    EXPECT_EQ(machine().lastRequests.folderDialog.hwndOwner, form().window());
}

TEST_F(FolderChoosing, TheDialogBelongsToTheWindowThatAsks) {
    auto* const owner = reinterpret_cast<WindowHandle>(std::uintptr_t{0x1234});
    EXPECT_EQ(BrowseForFolder(owner), "");
    EXPECT_EQ(machine().lastRequests.folderDialog.hwndOwner, owner);
}

TEST_F(FolderChoosing, ACancelledDialogOnlyReadsTheListAnew) {
    openPage("C:\\a\r\n");
    writeWholeFile(listPath(), "C:\\b\r\n");
    choose("");
    EXPECT_EQ(rows(), Texts{"C:\\b"});
    EXPECT_EQ(listFile(), "C:\\b\r\n");
    EXPECT_TRUE(boxes().empty());
}

struct RefusedChoice {
    const char16_t* path;
    const char* words;
};

constexpr const char* kInexact =
    " kann nicht in die Liste aufgenommen werden.\r\nDer Pfad enthält Zeichen, die dieses Programm nicht "
    "genau "
    "wiedergeben kann.";

// Their plain texts are those of other folders, which are there.
TEST_F(FolderChoosing, AFolderWhosePathLeadsElsewhereIsRefusedAndTheUserIsToldWhy) {
    for (const char* other : {"C:\\Leeren", "C:\\a\\b", "C:\\Zdjecia", "C:\\Foto-Alt"})
        machine().drives.makeFolder(other);
    const RefusedChoice choices[] = {
        {u"C:\\Leeren\\\uFF0E\uFF0E", "C:\\Leeren\\.."},
        {u"C:\\a\uFF3Cb", "C:\\a\\b"},
        {u"C:\\Zdj\u0119cia", "C:\\Zdjecia"},
        {u"C:\\Foto\u2011Alt", "C:\\Foto-Alt"},
        {u"C:\\Ablage\\\u041F\u0430", "C:\\Ablage\\??"},
    };
    for (const RefusedChoice& row : choices) {
        openPage("C:\\Temp\r\n");
        machine().events.clear();
        machine().folders = {row.path};
        form().cleanup.cmdOrdnerWählen.userClick();
        ASSERT_EQ(boxes().size(), 1u) << row.words;
        EXPECT_EQ(boxes()[0].text, std::string("Der Ordner ") + row.words + kInexact);
        EXPECT_EQ(boxes()[0].caption, "Bromvale");
        EXPECT_EQ(boxes()[0].style, 64u);
        EXPECT_EQ(listFile(), "C:\\Temp\r\n");
        EXPECT_EQ(rows(), Texts{"C:\\Temp"});
    }
}

TEST_F(FolderChoosing, AFolderOfAPathThatIsReadOtherwiseIsRefused) {
    for (const char* path : {"C:\\Ablage\\\\", "C:\\Ablage\\????", "C:\\Ablage\\x/y", "C:\\Ablage\\*",
                             "C:\\Ablage\\..", "C:\\Ablage\\Daten.", "C:\\Ablage\\Daten "}) {
        openPage("");
        machine().events.clear();
        choose(path);
        EXPECT_EQ(listFile(), "") << path;
        EXPECT_EQ(boxes().size(), 1u) << path;
    }
}

TEST_F(FolderChoosing, AFolderOfAShareIsTaken) {
    openPage("");
    answer(IDYES);
    choose("\\\\Rechner\\Ablage");
    EXPECT_EQ(listFile(), "\\\\Rechner\\Ablage\r\n");
}

TEST_F(FolderChoosing, AFolderThatIsNotForTemporaryFilesIsAskedFor) {
    openPage("C:\\Temp\r\n");
    answer(IDYES);
    choose("D:\\Müll");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text,
              "Sind Sie sich sicher, das Sie den Ordner\r\nD:\\Müll zur Liste hinzufügen wollen?");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 36u);
    EXPECT_EQ(listFile(), "C:\\Temp\r\nD:\\Müll\r\n");
    EXPECT_EQ(rows(), (Texts{"C:\\Temp", "D:\\Müll"}));
    EXPECT_TRUE(form().cleanup.chbTempFilesDel.enabled());
}

TEST_F(FolderChoosing, NoLeavesTheListAlone) {
    openPage("C:\\Temp\r\n");
    answer(IDNO);
    choose("D:\\Müll");
    EXPECT_EQ(listFile(), "C:\\Temp\r\n");
    EXPECT_EQ(rows(), Texts{"C:\\Temp"});
}

TEST_F(FolderChoosing, AFolderWithTmpOrTempBehindABackslashIsTakenWithoutAQuestion) {
    Texts expected;
    for (const char* path : {"C:\\Temp", "C:\\TMP", "D:\\Eigenes\\temp\\alt", "C:\\Temporary",
                             "C:\\tmpfiles\\x", "C:\\TEMPEL"}) {
        openPage("");
        choose(path);
        EXPECT_EQ(listFile(), std::string(path) + "\r\n");
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FolderChoosing, AFolderWithTmpElsewhereInItsNameIsAskedFor) {
    for (const char* path : {"C:\\Mytemp", "D:\\", "C:\\attempt", "C:\\x.tmp"}) {
        openPage("");
        choose(path);
        EXPECT_EQ(listFile(), "") << path;
    }
    EXPECT_EQ(boxes().size(), 4u);
}

TEST_F(FolderChoosing, AFolderOfTheListIsToldAndNothingElseHappens) {
    openPage("C:\\Temp\r\nC:\\Müll\r\n");
    writeWholeFile(listPath(), "C:\\anders\r\n");
    switchTracingOn();
    choose("C:\\Müll");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Der Ordner C:\\Müll befindet sich bereits in der Liste.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(boxes()[0].style, 64u);
    EXPECT_EQ(rows(), (Texts{"C:\\Temp", "C:\\Müll"}));
    EXPECT_EQ(listFile(), "C:\\anders\r\n");
    EXPECT_EQ(logOf("cmdOrdnerWählen_Click"), Texts{"started; 0; "});
}

TEST_F(FolderChoosing, TheSamePathInAnotherCaseIsASecondFolder) {
    openPage("C:\\Temp\r\n");
    choose("C:\\TEMP");
    EXPECT_EQ(listFile(), "C:\\Temp\r\nC:\\TEMP\r\n");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FolderChoosing, AFolderIsAddedToTheListOfTheProgramsFolderThoughAnotherOneIsShown) {
    openPage("C:\\eins\r\n");
    machine().drives.writeFile("C:\\WINDOWS\\liste.txt", "C:\\zwei\r\n");
    SetCurrentDirectoryA("C:\\WINDOWS");
    choose("C:\\temp");
    EXPECT_EQ(listFile(), "C:\\eins\r\nC:\\temp\r\n");
    EXPECT_EQ(rows(), Texts{"C:\\zwei"});
}

TEST_F(FolderChoosing, AddingTracesTheFolder) {
    openPage("");
    switchTracingOn();
    choose("C:\\temp");
    EXPECT_EQ(logOf("cmdOrdnerWählen_Click"),
              (Texts{"started; 0; ", "C:\\temp zum automatischen Leeren vorgesehen; 0; ", "endet; 0; "}));
}

TEST_F(FolderChoosing, AListThatCannotBeWrittenIsReportedAndTheRoutineGoesOn) {
    openPage("C:\\a\r\n");
    LogAlways = true;
    machine().faults.fail("CreateFileA", 1, ERROR_ACCESS_DENIED);
    choose("C:\\temp");
    EXPECT_EQ(listFile(), "C:\\a\r\n");
    EXPECT_EQ(rows(), Texts{"C:\\a"});
    EXPECT_EQ(logLines(), Texts{"frmMain; cmdOrdnerWählen_Click; ; 75; Fehler beim Zugriff auf Pfad/Datei"});
}

TEST_F(FolderChoosing, AFolderWithoutAPathOfItsOwnIsNotTaken) {
    openPage("C:\\a\r\n");
    machine().faults.fail("SHGetPathFromIDListA", 1, 0);
    choose("C:\\temp");
    EXPECT_EQ(listFile(), "C:\\a\r\n");
}

// --- failures when a folder is taken out ---

TEST_F(FolderChoosing, AListThatCannotBeReadIsNotRewritten) {
    for (const char* call : {"CreateFileA", "ReadFile"}) {
        openPage("C:\\a\r\nC:\\b\r\n");
        list().userSelect({1});
        machine().faults.fail(call, 1, ERROR_ACCESS_DENIED);
        form().cleanup.cmdOrdnerLöschen.userClick();
        machine().faults.clear();
        EXPECT_EQ(listFile(), "C:\\a\r\nC:\\b\r\n") << call;
        EXPECT_EQ(rows(), (Texts{"C:\\a", "C:\\b"})) << call;
    }
    EXPECT_EQ(logOf("cmdOrdnerLöschen_Click").size(), 2u);
}

TEST_F(FolderChoosing, AListThatCannotBeMadeIsReported) {
    machine().faults.fail("CreateFileA", 2, ERROR_ACCESS_DENIED);
    form().cleanup.Ordnerliste_laden();
    EXPECT_EQ(logLines(), Texts{"modFiles; Ordnerliste_laden; ; 53; Datei nicht gefunden"});
    EXPECT_TRUE(boxes().empty());
}

// --- what the page starts and opens ---

TEST_F(FolderChoosing, ADoubleClickOpensTheFolder) {
    machine().drives.writeFile("C:\\WINDOWS\\Explorer.exe", "MZ");
    openPage("C:\\a\r\nD:\\b c\r\n");
    list().userSelect({2});
    list().userDoubleClick();
    list().userKeyDown(13);
    list().userKeyDown(43);
    EXPECT_EQ(started(), (Texts{"C:\\WINDOWS\\Explorer.exe D:\\b c", "C:\\WINDOWS\\Explorer.exe D:\\b c",
                                "C:\\WINDOWS\\Explorer.exe D:\\b c"}));
}

TEST_F(FolderChoosing, ADoubleClickBesideTheRowsDoesNothing) {
    openPage("");
    list().userDoubleClick();
    EXPECT_EQ(started(), Texts{});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(FolderChoosing, F6Chooses) {
    openPage("");
    machine().folders = {"C:\\temp"};
    list().userKeyDown(117);
    EXPECT_EQ(rows(), Texts{"C:\\temp"});
}

TEST_F(FolderChoosing, OtherKeysDoNothing) {
    openPage("C:\\a\r\n");
    list().userSelect({1});
    machine().events.clear();
    for (const int key : {112, 113, 114, 119, 120, 27, 8, 65}) list().userKeyDown(key);
    EXPECT_TRUE(machine().events.all().empty());
    EXPECT_EQ(rows(), Texts{"C:\\a"});
}

TEST_F(FolderChoosing, TheRightButtonOpensTheMenuOfTheList) {
    openPage("");
    list().userMouseUp(kRight);
    ASSERT_EQ(machine().events.count(EventKind::Menu), 1u);
    const auto menu = machine().events.of(EventKind::Menu)[0];
    EXPECT_EQ(menu.text,
              "neuen Ordner der Liste &hinzufügen | markierten &Ordner aus Liste entfernen | "
              "mark&ierten Ordner leeren | alle Ordner l&eeren");
    EXPECT_EQ(menu.caption, "");
    list().userMouseUp(kLeft);
    EXPECT_EQ(machine().events.count(EventKind::Menu), 1u);
}

TEST_F(FolderChoosing, TheMenusEntriesDoAsTheButtons) {
    openPage("C:\\a\r\n");
    machine().drives.writeFile("C:\\a\\eins.txt", "1");
    machine().drives.writeFile("C:\\temp\\zwei.txt", "2");
    machine().folders = {"C:\\temp"};
    machine().menuChoices = {"mnuPopUpOrdnerHinzufügen", "mnuPopUpOrdnerEinzeln", "mnuPopUpOrdnerAlle",
                             "mnuPopUpOrdnerEntfernen"};
    list().userMouseUp(kRight);
    EXPECT_EQ(rows(), (Texts{"C:\\a", "C:\\temp"}));
    list().userSelect({2});
    list().userMouseUp(kRight);
    EXPECT_TRUE(exists("C:\\a\\eins.txt"));
    EXPECT_FALSE(exists("C:\\temp\\zwei.txt"));
    list().userMouseUp(kRight);
    EXPECT_FALSE(exists("C:\\a\\eins.txt"));
    list().userMouseUp(kRight);
    EXPECT_EQ(listFile(), "C:\\a\r\n");
}

struct CleanerRow {
    const char* system;
    const char* program;
};

class Cleaner : public CleanupTest, public ::testing::WithParamInterface<CleanerRow> {};

TEST_P(Cleaner, IsStartedFromTheFolderWhereTheSystemKeepsIt) {
    OSName = GetParam().system;
    machine().drives.writeFile("C:\\WINDOWS\\cleanmgr.exe", "MZ");
    machine().drives.writeFile("C:\\WINDOWS\\SYSTEM32\\cleanmgr.exe", "MZ");
    openPage("");
    form().cleanup.cmdHDDBereinigen.userClick();
    ASSERT_EQ(machine().events.count(EventKind::Run), 1u);
    EXPECT_EQ(machine().events.of(EventKind::Run)[0].text, GetParam().program);
    EXPECT_EQ(machine().lastRequests.startState, 1);
}
INSTANTIATE_TEST_SUITE_P(Systems, Cleaner,
                         ::testing::Values(CleanerRow{"Windows 98", "C:\\WINDOWS\\cleanmgr.exe"},
                                           CleanerRow{"Windows 98 SE", "C:\\WINDOWS\\cleanmgr.exe"},
                                           CleanerRow{"Windows ME", "C:\\WINDOWS\\cleanmgr.exe"},
                                           CleanerRow{"Windows NT4", "C:\\WINDOWS\\SYSTEM32\\cleanmgr.exe"},
                                           CleanerRow{"Windows XP", "C:\\WINDOWS\\SYSTEM32\\cleanmgr.exe"},
                                           CleanerRow{"Unbekanntes Betriebssystem",
                                                      "C:\\WINDOWS\\SYSTEM32\\cleanmgr.exe"}));

TEST_F(FolderChoosing, AMissingCleanerIsPassedOver) {
    openPage("");
    form().cleanup.cmdHDDBereinigen.userClick();
    EXPECT_EQ(machine().events.count(EventKind::Run), 0u);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(logLines(), Texts{});
}

}  // namespace
}  // namespace bromvale::testing

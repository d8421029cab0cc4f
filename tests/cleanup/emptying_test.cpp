// Emptying folders: what goes, what stays, and that nothing stops the rest.
#include "tests/cleanup/cleanup_fixture.h"
#include "ui/frm_login.h"

namespace bromvale::testing {
namespace {

class Emptying : public CleanupTest {
  protected:
    // A folder with two files, an empty folder and a filled one.
    std::string fill(const std::string& name) {
        std::string path = makeBin(name);
        writeWholeFile(path + "eins.txt", "1");
        writeWholeFile(path + "zwei", "2");
        makeFolderOnDisk(path + "leer");
        makeFolderOnDisk(path + "voll");
        writeWholeFile(path + "voll\\drei.txt", "3");
        return path;
    }
};

TEST_F(Emptying, ForGoodAFilledSubFolderStaysWhole) {
    DelFilePermanent = 1;
    std::string path = fill("Müll");
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), Texts{"voll"});
    EXPECT_EQ(readWholeFile(path + "voll\\drei.txt"), "3");
}

TEST_F(Emptying, IntoTheBinAllGoesAndTheFolderStays) {
    std::string path = fill("Müll");
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), Texts{});
    EXPECT_TRUE(exists(path));
}

TEST_F(Emptying, AFolderWithoutItsBackslashGetsIt) {
    DelFilePermanent = 1;
    const std::string path = fill("Müll");
    std::string given = path.substr(0, path.size() - 1);
    FileDel(given, "");
    EXPECT_EQ(given, path);
    EXPECT_EQ(filesIn(path, "*"), Texts{"voll"});
}

TEST_F(Emptying, HiddenAndSystemFilesGoTooAndAReadOnlyOneStaysWhenDeletedForGood) {
    DelFilePermanent = 1;
    std::string path = makeBin("Müll");
    writeWholeFile(path + "a-fest", "1");
    writeWholeFile(path + "b-versteckt", "2");
    writeWholeFile(path + "c-system", "3");
    SetFileAttributesA((path + "a-fest").c_str(), FILE_ATTRIBUTE_READONLY);
    SetFileAttributesA((path + "b-versteckt").c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetFileAttributesA((path + "c-system").c_str(), FILE_ATTRIBUTE_SYSTEM);
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), Texts{"a-fest"});
    SetFileAttributesA((path + "a-fest").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Emptying, AReadOnlyFileGoesIntoTheBinWithoutAQuestion) {
    std::string path = makeBin("Müll");
    writeWholeFile(path + "a-fest", "1");
    writeWholeFile(path + "b", "2");
    SetFileAttributesA((path + "a-fest").c_str(), FILE_ATTRIBUTE_READONLY);
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), Texts{});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Emptying, ALockedFileStaysAndTheNextOnesGo) {
    DelFilePermanent = 1;
    std::string path = makeBin("Müll");
    for (const char* name : {"a", "b", "c"}) writeWholeFile(path + name, "x");
    const HANDLE lock = CreateFileA((path + "b").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    FileDel(path, "");
    CloseHandle(lock);
    EXPECT_EQ(filesIn(path, "*"), Texts{"b"});
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(Emptying, AFolderThatDoesNotExistIsPassedOver) {
    std::string path = folder() + "fehlt";
    FileDel(path, "");
    EXPECT_EQ(logLines(), Texts{});
    EXPECT_FALSE(exists(path));
}

TEST_F(Emptying, TracesTheSettingAndEachAttempt) {
    std::string path = makeBin("Müll");
    writeWholeFile(path + "a", "x");
    writeWholeFile(path + "b", "x");
    switchTracingOn();
    DelFilePermanent = 1;
    FileDel(path, "");
    EXPECT_EQ(
        logLines(),
        (Texts{"modFiles; FindFileAPI; started; 0; ",
               "modFiles; FindFileAPI; durchsuchter Ordner " + path + "; 0; ",
               "modFiles; FindFileAPI; Darin wurden 2 Dateien gefunden.; 0; ",
               "modFiles; FindFileAPI; endet; 0; ", "modFiles; FileDel; Dateien permanent löschen=1; 0; ",
               "modFiles; FileDel; Versuch die Datei " + path + "a zu löschen; Ergebnis unbekannt; 0; ",
               "modFiles; FileDel; Versuch die Datei " + path + "b zu löschen; Ergebnis unbekannt; 0; "}));
}

TEST_F(Emptying, ANamedFileGoesAloneAndTracesItsAttempt) {
    std::string path = makeBin("Müll");
    writeWholeFile(path + "a", "x");
    writeWholeFile(path + "ab", "x");
    switchTracingOn();
    FileDel(path, "a");
    EXPECT_EQ(filesIn(path, "*"), Texts{"ab"});
    EXPECT_EQ(logLines(), Texts{"modFiles; FileDel; Versuch die Datei " + path +
                                "a zu löschen; Ergebnis unbekannt; 0; "});
}

// --- the button and the menu ---

TEST_F(Emptying, TheButtonEmptiesAllFoldersOfTheFileWhateverTheListShows) {
    DelFilePermanent = 1;
    const std::string first = fill("eins");
    const std::string second = fill("zwei");
    openPage("");
    writeWholeFile(listPath(),
                   first.substr(0, first.size() - 1) + "\r\n\r\n" + folder() + "fehlt\r\n" + second);
    EXPECT_EQ(rows(), Texts{});
    form().cleanup.cmdInhaltLöschen.userClick();
    EXPECT_EQ(filesIn(first, "*"), Texts{"voll"});
    EXPECT_EQ(filesIn(second, "*"), Texts{"voll"});
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(Emptying, TheWaitingWindowStandsWhileTheWorkBeginsAndGoes) {
    openPage("");
    std::string shown;
    atPump(1, [&] {
        EXPECT_TRUE(frmLogin().visible());
        shown = frmLogin().lblLogin.caption();
    });
    form().cleanup.cmdInhaltLöschen.userClick();
    EXPECT_EQ(shown, "Bromvale 1.0.0\r\nDie gewählten Ordner werden geleert. Bitte warten...");
    ASSERT_EQ(loadedForms().size(), 1u);
    EXPECT_EQ(loadedForms()[0]->name(), "frmMain");
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Emptying, EmptyLinesAreNothingToEmpty) {
    const std::string bin = makeBin("Leeren");
    writeWholeFile(bin + "a.txt", "x");
    openPage("\r\n" + bin + "\r\n\r\n");
    form().cleanup.cmdInhaltLöschen_Click();
    EXPECT_FALSE(exists(bin + "a.txt"));
    EXPECT_EQ(asked(), Texts{});
}

TEST_F(Emptying, AMissingListIsReportedAndTheWaitingWindowGoes) {
    openPage("C:\\a\r\n");
    DeleteFileA(listPath().c_str());
    form().cleanup.cmdInhaltLöschen.userClick();
    EXPECT_EQ(logLines(), Texts{"frmMain; cmdInhaltLöschen_Click; ; 53; Datei nicht gefunden"});
    EXPECT_EQ(loadedForms().size(), 1u);
    EXPECT_FALSE(exists(listPath()));
}

TEST_F(Emptying, F7Empties) {
    const std::string path = fill("eins");
    openPage(path + "\r\n");
    list().userKeyDown(118);
    EXPECT_EQ(filesIn(path, "*"), Texts{});
}

TEST_F(Emptying, TheMenuEmptiesTheMarkedFoldersOnly) {
    const std::string first = fill("eins");
    const std::string second = fill("zwei");
    const std::string third = fill("drei");
    openPage(first + "\r\n" + second.substr(0, second.size() - 1) + "\r\n" + third + "\r\n");
    list().userSelect({2, 3});
    DeleteFileA(listPath().c_str());
    std::string shown;
    atPump(1, [&] { shown = frmLogin().lblLogin.caption(); });
    form().cleanup.mnuPopUpOrdnerEinzeln.userChoose();
    EXPECT_EQ(filesIn(first, "*"), (Texts{"eins.txt", "leer", "voll", "zwei"}));
    EXPECT_EQ(filesIn(second, "*"), Texts{});
    EXPECT_EQ(filesIn(third, "*"), Texts{});
    EXPECT_EQ(shown, "Bromvale 1.0.0\r\nDie gewählten Ordner werden geleert. Bitte warten...");
    EXPECT_EQ(loadedForms().size(), 1u);
    EXPECT_EQ(list().item(2).text(), second.substr(0, second.size() - 1));
}

TEST_F(Emptying, ARowThatGoesMeanwhileIsPassedOver) {
    const std::string first = fill("eins");
    openPage(first + "\r\nC:\\b\r\n");
    list().userSelect({1, 2});
    atPump(1, [&] { list().remove(2); });
    form().cleanup.mnuPopUpOrdnerEinzeln.userChoose();
    EXPECT_EQ(filesIn(first, "*"), Texts{});
    EXPECT_EQ(logLines(), Texts{});
    EXPECT_EQ(loadedForms().size(), 1u);
}

}  // namespace
}  // namespace bromvale::testing

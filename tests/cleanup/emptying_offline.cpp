// Emptying: what lands in the bin, links, and each call of the system failing in turn.
#include <functional>

#include "base/failure.h"
#include "core/log.h"
#include "tests/cleanup/host_drive_offline.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class EmptyingOffline : public CleanupTest {
  protected:
    static void put(const std::string& path) { machine().drives.writeFile(path, "x"); }
};

TEST_F(EmptyingOffline, TheBinGetsFilesAndWholeSubFolders) {
    put("C:\\Müll\\a.txt");
    put("C:\\Müll\\unten\\b.txt");
    empty("C:\\Müll");
    EXPECT_EQ(recycled(), (Texts{"C:\\Müll\\a.txt", "C:\\Müll\\unten"}));
}

TEST_F(EmptyingOffline, TheWindowsAreServedForEachEntry) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        for (const char* name : {"a", "b", "c"}) put(std::string("C:\\Müll\\") + name);
        for (const char* name : {"a", "b", "c"}) put(std::string("C:\\Müll\\unten\\") + name);
        const auto before = machine().pump.windowServings();
        empty("C:\\Müll\\");
        EXPECT_GE(machine().pump.windowServings() - before, DelFilePermanent == 1 ? 4u : 7u);
    }
}

TEST_F(EmptyingOffline, ForGoodNothingReachesTheBin) {
    DelFilePermanent = 1;
    put("C:\\Müll\\a.txt");
    empty("C:\\Müll\\");
    EXPECT_EQ(recycled(), Texts{});
}

TEST_F(EmptyingOffline, ANamedFileReachesTheBinThoughFilesAreDeletedForGood) {
    DelFilePermanent = 1;
    put("C:\\Programme\\Bromvale\\Backup\\a.reg");
    FileDel(BackupPath, "a.reg");
    EXPECT_EQ(recycled(), Texts{"C:\\Programme\\Bromvale\\Backup\\a.reg"});
}

TEST_F(EmptyingOffline, ALockedFileStaysAndTheNextOnesReachTheBin) {
    for (const char* name : {"a", "b", "c"}) put(std::string("C:\\Müll\\") + name);
    machine().faults.fail("SHFileOperationA", 2, ERROR_SHARING_VIOLATION);
    std::string path = "C:\\Müll\\";
    FileDel(path, "");
    EXPECT_EQ(recycled(), (Texts{"C:\\Müll\\a", "C:\\Müll\\c"}));
    EXPECT_EQ(filesIn(path, "*"), Texts{"b"});
}

TEST_F(EmptyingOffline, AFileThatVanishesIsPassedOverAndTheNextOnesGo) {
    for (const std::int16_t permanent : {std::int16_t{0}, std::int16_t{1}}) {
        DelFilePermanent = permanent;
        for (const char* name : {"a", "b", "c"}) put(std::string("C:\\Müll\\") + name);
        const char* const call = permanent == 1 ? "DeleteFileA" : "SHFileOperationA";
        machine().faults.observe([&](std::string_view operation) {
            if (operation == call) machine().drives.erase("C:\\Müll\\b");
        });
        std::string path = "C:\\Müll\\";
        FileDel(path, "");
        machine().faults.clear();
        EXPECT_EQ(filesIn(path, "*"), Texts{}) << permanent;
    }
    EXPECT_EQ(logLines(), Texts{});
}

struct Fault {
    const char* call;
    long result;
};

class EmptyingFaults : public EmptyingOffline, public ::testing::WithParamInterface<Fault> {};

// Whichever call of deletion fails, one entry stays at most and all others go.
TEST_P(EmptyingFaults, ForGoodOnlyTheOneEntryStays) {
    DelFilePermanent = 1;
    // Without its first search a folder is not read at all.
    const bool search = std::string_view(GetParam().call) == "FindFirstFileA";
    for (unsigned nth = search ? 2 : 1; nth <= 4; ++nth) {
        for (const char* name : {"a", "b", "c", "d"}) put(std::string("C:\\Müll\\") + name);
        machine().drives.makeFolder("C:\\Müll\\e");
        machine().faults.clear();
        machine().faults.fail(GetParam().call, nth, GetParam().result);
        std::string path = "C:\\Müll\\";
        FileDel(path, "");
        EXPECT_LE(filesIn(path, "*").size(), 1u) << nth;
        EXPECT_EQ(logLines(), Texts{});
    }
}
TEST_P(EmptyingFaults, OnTheWayToTheBinOnlyTheOneEntryStays) {
    for (unsigned nth = 2; nth <= 6; ++nth) {
        for (const char* name : {"a", "b", "c", "d"}) put(std::string("C:\\Müll\\") + name);
        put("C:\\Müll\\e\\f");
        machine().faults.clear();
        machine().faults.fail(GetParam().call, nth, GetParam().result);
        std::string path = "C:\\Müll\\";
        FileDel(path, "");
        machine().faults.clear();
        EXPECT_LE(filesIn(path, "*").size(), 1u) << nth;
        EXPECT_EQ(logLines(), Texts{});
    }
}
INSTANTIATE_TEST_SUITE_P(Calls, EmptyingFaults,
                         ::testing::Values(Fault{"DeleteFileA", ERROR_FILE_NOT_FOUND},
                                           Fault{"DeleteFileA", ERROR_ACCESS_DENIED},
                                           Fault{"DeleteFileA", ERROR_SHARING_VIOLATION},
                                           Fault{"RemoveDirectoryA", ERROR_ACCESS_DENIED},
                                           Fault{"RemoveDirectoryA", ERROR_PATH_NOT_FOUND},
                                           Fault{"FindFirstFileA", ERROR_ACCESS_DENIED},
                                           Fault{"FindFirstFileA", ERROR_FILE_NOT_FOUND},
                                           Fault{"SHFileOperationA", 5}, Fault{"SHFileOperationA", 2},
                                           Fault{"SHFileOperationA", 0x78}, Fault{"FindClose", 6}));

TEST_F(EmptyingOffline, AFolderThatCannotBeReadIsPassedOverAndTheNextOneEmptied) {
    put("C:\\eins\\a");
    put("C:\\zwei\\b");
    openPage("C:\\eins\r\nC:\\zwei\r\n");
    machine().faults.fail("FindFirstFileA", 1, ERROR_ACCESS_DENIED);
    form().cleanup.cmdInhaltLöschen.userClick();
    EXPECT_TRUE(exists("C:\\eins\\a"));
    EXPECT_FALSE(exists("C:\\zwei\\b"));
    EXPECT_EQ(loadedForms().size(), 1u);
}

TEST_F(EmptyingOffline, ASearchThatBreaksOffEmptiesWhatItHasFound) {
    for (const char* name : {"a", "b", "c"}) put(std::string("C:\\Müll\\") + name);
    // "." and ".." come first.
    machine().faults.fail("FindNextFileA", 4, ERROR_ACCESS_DENIED);
    std::string path = "C:\\Müll\\";
    FileDel(path, "");
    EXPECT_EQ(recycled(), (Texts{"C:\\Müll\\a", "C:\\Müll\\b"}));
    EXPECT_EQ(filesIn(path, "*"), Texts{"c"});
}

TEST_F(EmptyingOffline, AListThatCannotBeReadToItsEndIsReportedAndClosed) {
    put("C:\\eins\\a");
    openPage("C:\\eins\r\n");
    for (const char* call : {"CreateFileA", "ReadFile"}) {
        machine().faults.clear();
        machine().faults.fail(call, 1, ERROR_ACCESS_DENIED);
        form().cleanup.cmdInhaltLöschen.userClick();
        EXPECT_TRUE(exists("C:\\eins\\a")) << call;
        EXPECT_EQ(loadedForms().size(), 1u) << call;
    }
    EXPECT_EQ(logOf("cmdInhaltLöschen_Click").size(), 2u);
    EXPECT_EQ(offline::machine().openFiles(), 0u);
}

TEST_F(EmptyingOffline, TheWaitingWindowWaitsATenthOfASecond) {
    openPage("");
    const auto before = machine().clock.now();
    form().cleanup.cmdInhaltLöschen.userClick();
    EXPECT_EQ(machine().clock.now() - before, 100);
}

TEST_F(EmptyingOffline, TheShellIsAskedForTheBinWithoutAQuestionAndUnderThePagesTitle) {
    put("C:\\Müll\\a");
    std::string path = "C:\\Müll\\";
    machine().faults.startCounting();
    FileDel(path, "");
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 1u);
    EXPECT_EQ(machine().faults.calls("DeleteFileA"), 0u);
    EXPECT_EQ(machine().events.of(EventKind::FileDeleted).back().caption, "Papierkorb");
    const auto& request = machine().lastRequests;
    EXPECT_EQ(request.deletion.hwnd, nullptr);
    EXPECT_EQ(request.deletion.wFunc, 3u);
    EXPECT_EQ(request.deletion.fFlags, 0x50u);
    EXPECT_EQ(request.deletionTitle, "Bromvale leert die gewählten Ordner.");
}

TEST_F(EmptyingOffline, TheShellIsAskedForANamedFileInTheSameWords) {
    put("C:\\Programme\\Bromvale\\Backup\\a.reg");
    FileDel(BackupPath, "a.reg");
    EXPECT_EQ(machine().lastRequests.deletion.fFlags, 0x50u);
    EXPECT_EQ(machine().lastRequests.deletionTitle, "Bromvale leert die gewählten Ordner.");
}

// What goes wrong on this page is for the log.
TEST_F(EmptyingOffline, NoFailureShowsTheErrorDialog) {
    int dialogs = 0;
    setErrorDialog([&](auto, auto, auto, auto, auto) { ++dialogs; });
    openPage("C:\\eins\r\n");
    const std::function<void()> clicks[] = {
        [] { form().cleanup.Ordnerliste_laden(); },
        [] { form().cleanup.cmdInhaltLöschen.userClick(); },
        [] {
            machine().folders = {"C:\\temp"};
            form().cleanup.cmdOrdnerWählen.userClick();
        },
        [] {
            list().userSelect({1});
            form().cleanup.cmdOrdnerLöschen.userClick();
        },
    };
    for (const auto& click : clicks) {
        machine().faults.clear();
        machine().faults.fail("CreateFileA", 1, ERROR_ACCESS_DENIED);
        click();
    }
    machine().faults.clear();
    const auto raising = [](std::string_view operation) {
        if (operation == "SHFileOperationA") raise(7);
    };
    put("C:\\eins\\a");
    machine().faults.observe(raising);
    form().cleanup.cmdInhaltLöschen.userClick();
    machine().faults.clear();
    setErrorDialog(nullptr);
    EXPECT_EQ(dialogs, 0);
    for (const char* routine : {"Ordnerliste_laden", "cmdInhaltLöschen_Click", "cmdOrdnerWählen_Click",
                                "cmdOrdnerLöschen_Click", "FileDel"}) {
        EXPECT_EQ(logOf(routine).size(), 1u) << routine;
    }
}

// --- links ---

class Links : public HostDriveTest {
  protected:
    Links() {
        write("Ziel/bleibt.txt");
        write("Ziel/tief/bleibt.txt");
    }
    void expectTargetWhole() const {
        EXPECT_TRUE(onHost("Ziel/bleibt.txt"));
        EXPECT_TRUE(onHost("Ziel/tief/bleibt.txt"));
    }
    [[nodiscard]] bool linkExists(const fs::path& name) const { return fs::is_symlink(drive() / name); }
};

TEST_F(Links, AreRemovedAsLinksWhateverTheSetting) {
    for (const std::int16_t permanent : {std::int16_t{0}, std::int16_t{1}}) {
        DelFilePermanent = permanent;
        link("Ziel", "Leeren/a-Ordner");
        link("Ziel/bleibt.txt", "Leeren/b-Datei");
        write("Leeren/c.txt");
        emptyDrive();
        EXPECT_EQ(filesIn("D:\\Leeren\\", "*"), Texts{}) << permanent;
        EXPECT_FALSE(linkExists("Leeren/a-Ordner")) << permanent;
        expectTargetWhole();
    }
}

// Each entry below a folder is looked at before that goes.
TEST_F(Links, AreLookedForWhileTheWindowsAreServed) {
    for (int i = 0; i < 100; ++i) write("Leeren/unten/" + std::to_string(i) + ".txt");
    const auto before = offline::machine().pump.windowServings();
    emptyDrive();
    EXPECT_GE(offline::machine().pump.windowServings() - before, 100u);
}

TEST_F(Links, ToFoldersNeverReachTheShell) {
    link("Ziel", "Leeren/Ordner");
    machine().faults.startCounting();
    emptyDrive();
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u);
    EXPECT_EQ(machine().faults.calls("RemoveDirectoryA"), 1u);
    expectTargetWhole();
}

TEST_F(Links, BelowASubFolderAreTakenOutBeforeItGoes) {
    write("Leeren/unten/tief/d.txt");
    link("Ziel", "Leeren/unten/Verweis");
    link("Ziel", "Leeren/unten/tief/Verweis");
    emptyDrive();
    EXPECT_EQ(filesIn("D:\\Leeren\\", "*"), Texts{});
    EXPECT_EQ(recycled(), Texts{"D:\\Leeren\\unten"});
    EXPECT_TRUE(fs::exists(bin() / "unten/tief/d.txt"));
    EXPECT_FALSE(fs::is_symlink(bin() / "unten/Verweis"));
    expectTargetWhole();
}

TEST_F(Links, ThatCannotBeRemovedKeepTheirFolderFromTheShell) {
    write("Leeren/b/datei.txt");
    link("Ziel", "Leeren/b/Verweis");
    write("Leeren/c.txt");
    machine().faults.failFrom("RemoveDirectoryA", 1, ERROR_ACCESS_DENIED);
    emptyDrive();
    EXPECT_EQ(filesIn("D:\\Leeren\\", "*"), Texts{"b"});
    EXPECT_EQ(filesIn("D:\\Leeren\\b\\", "*"), (Texts{"Verweis", "datei.txt"}));
    expectTargetWhole();
}

TEST_F(Links, OfAFilledSubFolderStayWithItWhenDeletedForGood) {
    DelFilePermanent = 1;
    write("Leeren/b/datei.txt");
    link("Ziel", "Leeren/b/Verweis");
    emptyDrive();
    EXPECT_TRUE(linkExists("Leeren/b/Verweis"));
    expectTargetWhole();
}

TEST_F(Links, AFolderOfTheListThatIsOneIsEmptied) {
    fs::remove_all(drive() / "Leeren");
    write("Echt/a.txt");
    link("Echt", "Leeren");
    emptyDrive();
    EXPECT_EQ(filesIn("D:\\Echt\\", "*"), Texts{});
    EXPECT_TRUE(linkExists("Leeren"));
}

TEST_F(Links, AFolderOfTheListThatIsOneIsEmptiedWhereFinalPathsAreTold) {
    machine().setOs(*offline::osByName("2.6.1.7601"));
    fs::remove_all(drive() / "Leeren");
    write("Echt/a.txt");
    link("Echt", "Leeren");
    emptyDrive();
    EXPECT_EQ(filesIn("D:\\Echt\\", "*"), Texts{});
    EXPECT_TRUE(linkExists("Leeren"));
}

TEST_F(Links, InACircleEndWithTheLink) {
    write("Leeren/b/datei.txt");
    link("Leeren", "Leeren/b/zurueck");
    emptyDrive();
    EXPECT_EQ(filesIn("D:\\Leeren\\", "*"), Texts{});
    expectTargetWhole();
}

}  // namespace
}  // namespace bromvale::testing

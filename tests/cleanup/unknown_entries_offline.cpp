// What can't be looked at isn't deleted: folders that can't be opened, paths that are too long, final paths
// that can't be told, and any call that fails.
#include "tests/cleanup/host_drive_offline.h"

namespace bromvale::testing {
namespace {

using offline::machine;

constexpr offline::OsVersion kWindows7{2, 6, 1, 7601};
constexpr offline::OsVersion kWindowsXp{2, 5, 1, 2600};

class UnknownEntries : public CleanupTest {
  protected:
    // A system that tells final paths.
    UnknownEntries() { machine().setOs(kWindows7); }

    static void put(const std::string& path) { machine().drives.writeFile(path, "x"); }
    static void emptyLeeren() { empty("C:\\Leeren"); }
    static void emptyForGood() {
        DelFilePermanent = 1;
        emptyLeeren();
        DelFilePermanent = 0;
    }
    // The call fails that comes next when the folder C:\Leeren\a\b is listed.
    static void failListingOf(long error) {
        put("C:\\Leeren\\a\\b\\c.txt");
        // The folder itself, the entry a, what it holds, what b holds.
        machine().faults.fail("FindFirstFileA", 4, error);
    }
};

TEST_F(UnknownEntries, AFolderBelowThatCannotBeOpenedKeepsTheWholeFolder) {
    for (const long error : {ERROR_ACCESS_DENIED, ERROR_PATH_NOT_FOUND, ERROR_FILE_NOT_FOUND}) {
        failListingOf(error);
        machine().faults.startCounting();
        emptyLeeren();
        EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u) << error;
        machine().faults.clear();
        EXPECT_TRUE(exists("C:\\Leeren\\a\\b\\c.txt")) << error;
    }
    emptyLeeren();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
}

TEST_F(UnknownEntries, AFolderThatIsKeptIsToldByTheLog) {
    switchTracingOn();
    failListingOf(ERROR_ACCESS_DENIED);
    emptyLeeren();
    EXPECT_EQ(logOf("FileDel").back(),
              "Die Datei C:\\Leeren\\a bleibt stehen: nicht alles an ihr ließ sich ansehen oder als Verweis "
              "entfernen; "
              "0; ");
}

TEST_F(UnknownEntries, AFileThatIsNotSurelyTheListedOneIsToldByTheLog) {
    switchTracingOn();
    put("C:\\Leeren\\a.txt");
    machine().faults.failFrom("GetFinalPathNameByHandleW", 1, ERROR_ACCESS_DENIED);
    emptyForGood();
    EXPECT_EQ(
        logOf("FileDel").back(),
        "Die Datei C:\\Leeren\\a.txt bleibt stehen: ob ihr Name zu ihr selbst führt, ist nicht bekannt; 0; ");
}

TEST_F(UnknownEntries, AFileWithoutANameThatReachesItIsToldByTheLog) {
    switchTracingOn();
    machine().drives.shortNames = false;
    machine().drives.writeFile(u"C:\\Leeren\\\u041F", "x");
    for (const bool forGood : {false, true}) {
        forGood ? emptyForGood() : emptyLeeren();
        EXPECT_EQ(logOf("FileDel").back(),
                  "Die Datei C:\\Leeren\\? bleibt stehen: ihr Name ist nicht genau bekannt, und "
                  "kein Kurzname führt zu ihr; 0; ");
    }
}

TEST_F(UnknownEntries, AFolderBelowThatVanishesMeanwhileKeepsNothing) {
    failListingOf(ERROR_PATH_NOT_FOUND);
    unsigned searches = 0;
    machine().faults.observe([&](std::string_view operation) {
        if (operation == "FindFirstFileA" && ++searches == 4) {
            machine().drives.erase("C:\\Leeren\\a\\b\\c.txt");
            machine().drives.erase("C:\\Leeren\\a\\b");
        }
    });
    emptyLeeren();
    machine().faults.clear();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
    EXPECT_EQ(logLines(), Texts{});
}

// Some systems find nothing behind the longest path, and some of their functions cut what they are given.
TEST_F(UnknownEntries, APathThatIsTooLongIsHandedToNobody) {
    const std::string folder = "C:\\Leeren\\" + std::string(120, 'o');
    const std::string deep = folder + "\\" + std::string(126, 'd');
    put(deep + "\\a");  // 259 characters: the longest path
    put(deep + "\\ab");
    std::string path = deep;
    machine().faults.startCounting();
    FileDel(path, "");
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 1u);
    EXPECT_TRUE(machine().drives.exists(deep + "\\ab"));
    EXPECT_FALSE(machine().drives.exists(deep + "\\a"));
    DelFilePermanent = 1;
    FileDel(path, "");
    EXPECT_TRUE(machine().drives.exists(deep + "\\ab"));
    DelFilePermanent = 0;
    emptyLeeren();
    EXPECT_TRUE(machine().drives.exists(deep + "\\ab"));
    machine().drives.erase(deep + "\\ab");
    emptyLeeren();
    EXPECT_FALSE(machine().drives.exists(folder));
}

TEST_F(UnknownEntries, ANamedFileOfAPathThatIsTooLongStays) {
    BackupPath = "C:\\" + std::string(250, 'b') + "\\";
    put(BackupPath + "a.reg");
    put(BackupPath + "ab.reg");
    FileDel(BackupPath, "ab.reg");
    EXPECT_TRUE(machine().drives.exists(BackupPath + "ab.reg"));
    EXPECT_FALSE(machine().events.count(offline::EventKind::FileDeleted) > 0);
}

TEST_F(UnknownEntries, AFinalPathThatCannotBeToldIsNoPermission) {
    put("C:\\Leeren\\a.txt");
    put("C:\\Leeren\\b\\c.txt");
    for (const char* call : {"GetFinalPathNameByHandleW", "CreateFileA"}) {
        machine().faults.failFrom(call, 1, ERROR_ACCESS_DENIED);
        emptyLeeren();
        emptyForGood();
        machine().faults.clear();
        EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), (Texts{"a.txt", "b"})) << call;
    }
    emptyLeeren();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
}

TEST_F(UnknownEntries, AreTakenAtTheirWordBySystemsThatHaveNoFinalPathsAtAll) {
    for (const auto& os : {kWindowsXp, *offline::osByName("Windows 98")}) {
        machine().setOs(os);
        machine().faults.failFrom("GetFinalPathNameByHandleW", 1, ERROR_ACCESS_DENIED);
        for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
            put("C:\\Leeren\\a.txt");
            put("C:\\Leeren\\b\\c.txt");
            emptyLeeren();
            EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), DelFilePermanent == 1 ? Texts{"b"} : Texts{});
        }
    }
}

TEST_F(UnknownEntries, ThatAreNamedLikeADeviceStay) {
    machine().drives.shortNames = false;
    for (const char* name : {"nul.txt", "con", "COM1.log"}) put(std::string("C:\\Leeren\\") + name);
    put("C:\\Leeren\\b\\aux.txt");
    put("C:\\Leeren\\z.txt");
    emptyLeeren();
    emptyForGood();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), (Texts{"COM1.log", "b", "con", "nul.txt"}));
}

// --- what changes meanwhile ---

// The n-th of these calls from now is the moment at which a link to C:\Ziel takes the folder's place.
class SwappedEntries : public UnknownEntries {
  protected:
    SwappedEntries() {
        put("C:\\Leeren\\a\\b\\c.txt");
        put("C:\\Ziel\\bleibt.txt");
        machine().drives.makeFolder("C:\\Anderes");
        machine().drives.linkFolder(u"C:\\Ziel\\Verweis", u"C:\\Anderes");
    }
    void swapAt(std::string_view call, unsigned nth, const std::string& folder) {
        machine().faults.observe([this, call, nth, folder](std::string_view operation) {
            if (operation != call || ++calls_ != nth) return;
            machine().drives.erase("C:\\Leeren\\a\\b\\c.txt");
            machine().drives.erase("C:\\Leeren\\a\\b");
            machine().drives.erase(folder);
            ASSERT_TRUE(
                machine().drives.linkFolder(std::u16string(folder.begin(), folder.end()), u"C:\\Ziel"));
        });
    }
    static void expectTargetWhole() {
        EXPECT_TRUE(machine().drives.exists("C:\\Ziel\\bleibt.txt"));
        EXPECT_TRUE(machine().drives.exists("C:\\Ziel\\Verweis"));
        EXPECT_TRUE(machine().drives.exists("C:\\Anderes"));
    }

    unsigned calls_ = 0;
};

TEST_F(SwappedEntries, ALinkThatTakesTheFoldersPlaceWhileItIsLookedThroughIsNotFollowed) {
    swapAt("FindFirstFileA", 4, "C:\\Leeren\\a\\b");
    emptyLeeren();
    machine().faults.clear();
    EXPECT_GE(calls_, 4u);
    expectTargetWhole();
}

// The list is read, the entry looked up, and the folder a listed to its end.
TEST_F(SwappedEntries, ALinkThatTakesTheFoldersPlaceBeforeItIsListedIsNotFollowed) {
    swapAt("FindClose", 3, "C:\\Leeren\\a\\b");
    emptyLeeren();
    machine().faults.clear();
    EXPECT_GE(calls_, 3u);
    expectTargetWhole();
}

TEST_F(SwappedEntries, ALinkThatHasTakenTheFoldersPlaceIsNotHandedToTheShell) {
    machine().faults.startCounting();
    swapAt("FindFirstFileA", 5, "C:\\Leeren\\a");
    emptyLeeren();
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u);
    machine().faults.clear();
    EXPECT_EQ(calls_, 5u);
    expectTargetWhole();
}

// --- every call fails once ---

struct FailingCall {
    const char* call;
    unsigned most;  // how often it is called at most
};
void PrintTo(const FailingCall& row, std::ostream* out) {
    *out << row.call;
}

class AnyFailure : public HostDriveTest, public ::testing::WithParamInterface<FailingCall> {
  protected:
    AnyFailure() {
        write("Ziel/bleibt.txt");
        write("Ziel/tief/bleibt.txt");
        write("Neben/bleibt.txt");
    }
    void fill() const {
        write("Leeren/a.txt");
        write(
            "Leeren/Zdj\xC4\x99"
            "cia/b.txt");
        write("Leeren/unten/tief/c.txt");
        write("Leeren/unten/\xC5\x82/d.txt");
        link("Ziel", "Leeren/Verweis");
        link("Ziel",
             "Leeren/Zdj\xC4\x99"
             "cia/Verweis");
        link("Ziel/tief", "Leeren/unten/tief/Verweis");
        link("Neben/bleibt.txt", "Leeren/unten/\xC5\x82/Verweis");
    }
    void expectTheRestWhole(const std::string& where) const {
        for (const char* name : {"Ziel/bleibt.txt", "Ziel/tief/bleibt.txt", "Neben/bleibt.txt"})
            EXPECT_TRUE(onHost(name)) << where << " " << name;
    }
    void failOnce(unsigned nth, long error) const {
        fill();
        machine().faults.fail(GetParam().call, nth, error);
        emptyDrive();
        machine().faults.clear();
        expectTheRestWhole(GetParam().call + std::to_string(nth) + "/" + std::to_string(error));
    }
};

TEST_P(AnyFailure, LeavesWhatLiesOutsideTheFolderAlone) {
    for (const auto& os : {kWindows7, kWindowsXp}) {
        machine().setOs(os);
        for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
            for (const long error : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED}) {
                for (unsigned nth = 1; nth <= GetParam().most; ++nth) failOnce(nth, error);
            }
        }
    }
    EXPECT_EQ(offline::machine().openFiles(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Calls, AnyFailure,
                         ::testing::Values(FailingCall{"FindFirstFileA", 20},
                                           FailingCall{"FindNextFileA", 30}, FailingCall{"CreateFileA", 30},
                                           FailingCall{"GetFinalPathNameByHandleW", 30},
                                           FailingCall{"RemoveDirectoryA", 6}, FailingCall{"DeleteFileA", 6},
                                           FailingCall{"SHFileOperationA", 4}, FailingCall{"FindClose", 20}));

}  // namespace
}  // namespace bromvale::testing

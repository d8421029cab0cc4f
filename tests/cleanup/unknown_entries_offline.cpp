// What can't be looked at isn't deleted: folders that can't be opened, paths that are too long, final paths
// that can't be told, and any call that fails.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "cleanup/file_del.h"
#include "platform/offline/machine.h"
#include "tests/cleanup/cleanup_fixture.h"

namespace bromvale::testing {
namespace {

namespace fs = std::filesystem;
using offline::machine;

class UnknownEntries : public CleanupTest {
  protected:
    // A system that tells final paths.
    UnknownEntries() { machine().setOs(kWindows7); }
    static constexpr offline::OsVersion kWindows7{2, 6, 1, 7601};
    static constexpr offline::OsVersion kWindowsXp{2, 5, 1, 2600};

    static void put(const std::string& path) { machine().drives.writeFile(path, "x"); }
    static void empty() {
        std::string path = "C:\\Leeren";
        FileDel(path, "");
    }
    static void emptyForGood() {
        DelFilePermanent = 1;
        empty();
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
        empty();
        EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u) << error;
        machine().faults.clear();
        EXPECT_TRUE(exists("C:\\Leeren\\a\\b\\c.txt")) << error;
    }
    empty();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
}

TEST_F(UnknownEntries, AFolderThatIsKeptIsToldByTheLog) {
    switchTracingOn();
    failListingOf(ERROR_ACCESS_DENIED);
    empty();
    EXPECT_EQ(logOf("FileDel").back(),
              "Die Datei C:\\Leeren\\a bleibt stehen: nicht alles an ihr ließ sich ansehen oder als Verweis "
              "entfernen; "
              "0; ");
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
    empty();
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
    empty();
    EXPECT_TRUE(machine().drives.exists(deep + "\\ab"));
    machine().drives.erase(deep + "\\ab");
    empty();
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
        empty();
        emptyForGood();
        machine().faults.clear();
        EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), (Texts{"a.txt", "b"})) << call;
    }
    empty();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
}

TEST_F(UnknownEntries, AreTakenAtTheirWordBySystemsThatHaveNoFinalPathsAtAll) {
    for (const auto& os : {kWindowsXp, *offline::osByName("Windows 98")}) {
        machine().setOs(os);
        machine().faults.failFrom("GetFinalPathNameByHandleW", 1, ERROR_ACCESS_DENIED);
        for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
            put("C:\\Leeren\\a.txt");
            put("C:\\Leeren\\b\\c.txt");
            empty();
            EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), DelFilePermanent == 1 ? Texts{"b"} : Texts{});
        }
    }
}

TEST_F(UnknownEntries, ThatAreNamedLikeADeviceStay) {
    machine().drives.shortNames = false;
    for (const char* name : {"nul.txt", "con", "COM1.log"}) put(std::string("C:\\Leeren\\") + name);
    put("C:\\Leeren\\b\\aux.txt");
    put("C:\\Leeren\\z.txt");
    empty();
    emptyForGood();
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), (Texts{"COM1.log", "b", "con", "nul.txt"}));
}

// --- what changes meanwhile ---

// The n-th search from now is the moment at which a link to C:\Ziel takes the folder's place.
class SwappedEntries : public UnknownEntries {
  protected:
    SwappedEntries() {
        put("C:\\Leeren\\a\\b\\c.txt");
        put("C:\\Ziel\\bleibt.txt");
        machine().drives.makeFolder("C:\\Anderes");
        machine().drives.linkFolder(u"C:\\Ziel\\Verweis", u"C:\\Anderes");
    }
    void swapAt(unsigned search, const std::string& folder) {
        machine().faults.observe([this, search, folder](std::string_view operation) {
            if (operation != "FindFirstFileA" || ++searches_ != search) return;
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

    unsigned searches_ = 0;
};

TEST_F(SwappedEntries, ALinkThatTakesTheFoldersPlaceWhileItIsLookedThroughIsNotFollowed) {
    swapAt(4, "C:\\Leeren\\a\\b");
    empty();
    machine().faults.clear();
    EXPECT_GE(searches_, 4u);
    expectTargetWhole();
}

TEST_F(SwappedEntries, ALinkThatHasTakenTheFoldersPlaceIsNotHandedToTheShell) {
    machine().faults.startCounting();
    swapAt(5, "C:\\Leeren\\a");
    empty();
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u);
    machine().faults.clear();
    EXPECT_EQ(searches_, 5u);
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

class AnyFailure : public UnknownEntries, public ::testing::WithParamInterface<FailingCall> {
  protected:
    AnyFailure() {
        std::string pattern = (fs::temp_directory_path() / "bromvale-faults-XXXXXX").string();
        host_ = ::mkdtemp(pattern.data());
        machine().drives.addFolder('D', (host_ / "laufwerk").string());
        write("Ziel/bleibt.txt");
        write("Ziel/tief/bleibt.txt");
        write("Neben/bleibt.txt");
    }
    ~AnyFailure() override { fs::remove_all(host_); }

    void write(const fs::path& name) const {
        fs::create_directories((host_ / "laufwerk" / name).parent_path());
        std::ofstream(host_ / "laufwerk" / name) << "x";
    }
    void link(const char* target, const fs::path& name) const {
        const fs::path path = host_ / "laufwerk" / name;
        fs::remove(path);
        fs::create_symlink(host_ / "laufwerk" / target, path);
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
            EXPECT_TRUE(fs::exists(host_ / "laufwerk" / name)) << where << " " << name;
    }
    void failOnce(unsigned nth, long error) const {
        fill();
        machine().faults.fail(GetParam().call, nth, error);
        std::string path = "D:\\Leeren";
        FileDel(path, "");
        machine().faults.clear();
        expectTheRestWhole(GetParam().call + std::to_string(nth) + "/" + std::to_string(error));
    }
    fs::path host_;
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
    EXPECT_EQ(offline::openFileHandles(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Calls, AnyFailure,
                         ::testing::Values(FailingCall{"FindFirstFileA", 20},
                                           FailingCall{"FindNextFileA", 30}, FailingCall{"CreateFileA", 30},
                                           FailingCall{"GetFinalPathNameByHandleW", 30},
                                           FailingCall{"RemoveDirectoryA", 6}, FailingCall{"DeleteFileA", 6},
                                           FailingCall{"SHFileOperationA", 4}, FailingCall{"FindClose", 20}));

}  // namespace
}  // namespace bromvale::testing

// Emptying folders whose entries have names that the program's code page can't tell: on a folder of the host,
// which keeps short names for them, and in memory, which keeps none.
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

// UTF-8, as the host names them.
constexpr const char* kFolder = "\xD0\x9F\xD0\xB0\xD0\xBF\xD0\xBA\xD0\xB0";    // five Cyrillic letters
constexpr const char* kFile = "\xD0\x9F\xD0\xB0\xD0\xBF\xD0\xBA\xD0\xB0.txt";  // the same with an extension
constexpr const char* kStar = "\xEF\xBC\x8A";                                  // a wide star

class ForeignNames : public CleanupTest {
  protected:
    ForeignNames() {
        std::string pattern = (fs::temp_directory_path() / "bromvale-names-XXXXXX").string();
        host_ = ::mkdtemp(pattern.data());
        fs::create_directories(drive() / "Leeren");
        machine().drives.addFolder('D', drive().string());
    }
    ~ForeignNames() override { fs::remove_all(host_); }

    [[nodiscard]] fs::path drive() const { return host_ / "laufwerk"; }
    [[nodiscard]] fs::path bin() const { return host_ / "laufwerk.Papierkorb"; }
    void write(const fs::path& name) const {
        fs::create_directories((drive() / name).parent_path());
        std::ofstream(drive() / name) << "x";
    }
    static void empty() {
        std::string path = "D:\\Leeren";
        FileDel(path, "");
    }
    [[nodiscard]] bool isEmpty() const { return fs::is_empty(drive() / "Leeren"); }

    fs::path host_;
};

TEST_F(ForeignNames, GoIntoTheBinUnderTheirOwnNames) {
    write(fs::path("Leeren") / kFile);
    write(fs::path("Leeren") / kStar);
    write(fs::path("Leeren") / kFolder / "unten.txt");
    write("Leeren/a.txt");
    empty();
    EXPECT_TRUE(isEmpty());
    for (const char* name : {kFile, kStar, kFolder, "a.txt"}) EXPECT_TRUE(fs::exists(bin() / name)) << name;
    EXPECT_TRUE(fs::exists(bin() / kFolder / "unten.txt"));
}

TEST_F(ForeignNames, GoForGoodButAFilledFolderStays) {
    DelFilePermanent = 1;
    write(fs::path("Leeren") / kFile);
    write(fs::path("Leeren") / kFolder / "unten.txt");
    empty();
    EXPECT_FALSE(fs::exists(drive() / "Leeren" / kFile));
    EXPECT_TRUE(fs::exists(drive() / "Leeren" / kFolder / "unten.txt"));
    EXPECT_FALSE(fs::exists(bin()));
}

TEST_F(ForeignNames, BelowASubFolderGoIntoTheBinWithIt) {
    write(fs::path("Leeren/unten") / kFolder / kFile);
    write(fs::path("Leeren/unten") / kFile);
    empty();
    EXPECT_TRUE(isEmpty());
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFolder / kFile));
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFile));
}

TEST_F(ForeignNames, OfLinksGoAsLinksAtAnyDepth) {
    write("Ziel/bleibt.txt");
    write(fs::path("Leeren/unten") / kFolder / "x.txt");
    fs::create_symlink(drive() / "Ziel", drive() / "Leeren" / kFolder);
    fs::create_symlink(drive() / "Ziel", drive() / "Leeren/unten" / kFolder / kStar);
    empty();
    EXPECT_TRUE(isEmpty());
    EXPECT_TRUE(fs::exists(drive() / "Ziel/bleibt.txt"));
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFolder / "x.txt"));
    EXPECT_FALSE(fs::exists(fs::symlink_status(bin() / "unten" / kFolder / kStar)));
}

TEST_F(ForeignNames, WithABackslashNeverLeaveTheFolder) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        write("Dokumente/brief.txt");
        write("Leeren/..\\Dokumente\\brief.txt");
        write("Leeren/..\\Dokumente\\*");
        write("Leeren/z.txt");
        empty();
        EXPECT_TRUE(isEmpty()) << DelFilePermanent;
        EXPECT_TRUE(fs::exists(drive() / "Dokumente/brief.txt")) << DelFilePermanent;
    }
}

TEST_F(ForeignNames, AreTracedAsTheyAreListedAndAsTheyAreReached) {
    write(fs::path("Leeren") / kFile);
    switchTracingOn();
    empty();
    const Texts lines = logOf("FileDel");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1], "Versuch die Datei D:\\Leeren\\?????.txt zu löschen; Ergebnis unbekannt; 0; ");
    EXPECT_EQ(lines[2].substr(0, 28), "Versuch die Datei D:\\Leeren\\");
    EXPECT_EQ(lines[2].substr(34), "~1.TXT zu löschen; Ergebnis unbekannt; 0; ");
}

// A drive without short names.
TEST_F(ForeignNames, WithoutAShortNameStayWithTheFolderThatHoldsThem) {
    for (const char* name : {"C:\\Leeren\\?.txt", "C:\\Leeren\\a.txt", "C:\\Leeren\\unten\\?\\b.txt",
                             "C:\\Leeren\\voll\\?.txt"}) {
        machine().drives.writeFile(name, "x");
    }
    std::string path = "C:\\Leeren";
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), (Texts{"?.txt", "unten"}));
    EXPECT_TRUE(machine().drives.exists("C:\\Leeren\\unten\\?\\b.txt"));
}

// Handed to the shell they would stand for other files of the folder, or of another one.
TEST_F(ForeignNames, OfAFileThatIsNamedDeleteNothingAndAreTraced) {
    for (const char* name : {"a.reg", "b.reg"}) machine().drives.writeFile(BackupPath + name, "x");
    machine().drives.writeFile(AppPath + "c.reg", "x");
    switchTracingOn();
    machine().faults.startCounting();
    for (const char* name : {"*.reg", "?.reg", "..\\c.reg", "..\\Backup\\a.reg"}) FileDel(BackupPath, name);
    EXPECT_EQ(machine().faults.calls("SHFileOperationA"), 0u);
    EXPECT_EQ(filesIn(BackupPath, "*"), (Texts{"a.reg", "b.reg"}));
    EXPECT_TRUE(exists(AppPath + "c.reg"));
    const Texts lines = logOf("FileDel");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "Versuch die Datei " + BackupPath + "*.reg zu löschen; Ergebnis unbekannt; 0; ");
}

}  // namespace
}  // namespace bromvale::testing

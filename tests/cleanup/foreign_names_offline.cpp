// Emptying folders whose entries have names that the program's code page can't tell: on a folder of the host,
// which keeps short names for them, and in memory with and without.
#include "cleanup/entry_names.h"
#include "cleanup/folder_links.h"
#include "platform/exact/text.h"
#include "tests/cleanup/host_drive_offline.h"

namespace bromvale::testing {
namespace {

using offline::machine;

// UTF-8, as the host names them.
constexpr const char* kFolder = "\xD0\x9F\xD0\xB0\xD0\xBF\xD0\xBA\xD0\xB0";    // five Cyrillic letters
constexpr const char* kFile = "\xD0\x9F\xD0\xB0\xD0\xBF\xD0\xBA\xD0\xB0.txt";  // the same with an extension
constexpr const char* kStar = "\xEF\xBC\x8A";                                  // a wide star

class ForeignNames : public HostDriveTest {
  protected:
    // A system that tells final paths.
    ForeignNames() { machine().setOs(*offline::osByName("2.6.1.7601")); }

    [[nodiscard]] bool isEmpty() const { return fs::is_empty(drive() / "Leeren"); }
};

TEST_F(ForeignNames, GoIntoTheBinUnderTheirOwnNames) {
    write(fs::path("Leeren") / kFile);
    write(fs::path("Leeren") / kStar);
    write(fs::path("Leeren") / kFolder / "unten.txt");
    write("Leeren/a.txt");
    emptyDrive();
    EXPECT_TRUE(isEmpty());
    for (const char* name : {kFile, kStar, kFolder, "a.txt"}) EXPECT_TRUE(fs::exists(bin() / name)) << name;
    EXPECT_TRUE(fs::exists(bin() / kFolder / "unten.txt"));
}

TEST_F(ForeignNames, GoForGoodButAFilledFolderStays) {
    DelFilePermanent = 1;
    write(fs::path("Leeren") / kFile);
    write(fs::path("Leeren") / kFolder / "unten.txt");
    emptyDrive();
    EXPECT_FALSE(fs::exists(drive() / "Leeren" / kFile));
    EXPECT_TRUE(fs::exists(drive() / "Leeren" / kFolder / "unten.txt"));
    EXPECT_FALSE(fs::exists(bin()));
}

TEST_F(ForeignNames, BelowASubFolderGoIntoTheBinWithIt) {
    write(fs::path("Leeren/unten") / kFolder / kFile);
    write(fs::path("Leeren/unten") / kFile);
    emptyDrive();
    EXPECT_TRUE(isEmpty());
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFolder / kFile));
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFile));
}

TEST_F(ForeignNames, OfLinksGoAsLinksAtAnyDepth) {
    write("Ziel/bleibt.txt");
    write(fs::path("Leeren/unten") / kFolder / "x.txt");
    fs::create_symlink(drive() / "Ziel", drive() / "Leeren" / kFolder);
    fs::create_symlink(drive() / "Ziel", drive() / "Leeren/unten" / kFolder / kStar);
    emptyDrive();
    EXPECT_TRUE(isEmpty());
    EXPECT_TRUE(fs::exists(drive() / "Ziel/bleibt.txt"));
    EXPECT_TRUE(fs::exists(bin() / "unten" / kFolder / "x.txt"));
    EXPECT_FALSE(fs::exists(fs::symlink_status(bin() / "unten" / kFolder / kStar)));
}

// The folder's plain text names its twin, in which there is nothing.
TEST_F(ForeignNames, OfAFolderWithALinkLeaveWhatLiesBehindItAlone) {
    const fs::path photos = drive() / "Leeren" /
                            "Zdj\xC4\x99"
                            "cia";
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        for (const bool shortNames : {true, false}) {
            machine().drives.shortNames = shortNames;
            write("Ziel/tief/bleibt.txt");
            fs::create_directories(photos);
            fs::create_directories(drive() / "Leeren/Zdjecia");
            fs::create_symlink(drive() / "Ziel", photos / "Verweis");
            emptyDrive();
            EXPECT_TRUE(fs::exists(drive() / "Ziel/tief/bleibt.txt")) << DelFilePermanent << shortNames;
            EXPECT_FALSE(fs::exists(drive() / "Leeren/Zdjecia")) << DelFilePermanent << shortNames;
            // Into the bin the folder goes without its link, for good a filled one stays.
            EXPECT_EQ(fs::exists(photos), DelFilePermanent == 1 || !shortNames) << shortNames;
            EXPECT_EQ(fs::is_symlink(photos / "Verweis"), DelFilePermanent == 1 || !shortNames);
            fs::remove_all(photos);
        }
    }
}

TEST_F(ForeignNames, WithABackslashNeverLeaveTheFolder) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        write("Dokumente/brief.txt");
        write("Leeren/..\\Dokumente\\brief.txt");
        write("Leeren/..\\Dokumente\\*");
        write("Leeren/z.txt");
        emptyDrive();
        EXPECT_TRUE(isEmpty()) << DelFilePermanent;
        EXPECT_TRUE(fs::exists(drive() / "Dokumente/brief.txt")) << DelFilePermanent;
    }
}

TEST_F(ForeignNames, AreTracedAsTheyAreListedAndAsTheyAreReached) {
    write(fs::path("Leeren") / kFile);
    switchTracingOn();
    emptyDrive();
    const Texts lines = logOf("FileDel");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1], "Versuch die Datei D:\\Leeren\\?????.txt zu löschen; Ergebnis unbekannt; 0; ");
    EXPECT_EQ(lines[2].substr(0, 28), "Versuch die Datei D:\\Leeren\\");
    EXPECT_EQ(lines[2].substr(34), "~1.TXT zu löschen; Ergebnis unbekannt; 0; ");
}

constexpr const char16_t* kPhoto = u"Zdj\u0119cie.txt";
constexpr const char16_t* kPhotos = u"Zdj\u0119cia";

std::u16string leeren(std::u16string_view name) {
    return std::u16string(u"C:\\Leeren\\").append(name);
}

// Beside its twin, which is what its plain text names.
TEST_F(ForeignNames, WithAShortNameGoAndWithoutOneStay) {
    for (DelFilePermanent = 0; DelFilePermanent <= 1; ++DelFilePermanent) {
        for (const bool shortNames : {true, false}) {
            machine().drives.shortNames = shortNames;
            machine().drives.writeFile(leeren(kPhoto), "x");
            machine().drives.writeFile("C:\\Leeren\\Zdjecie.txt", "x");
            empty("C:\\Leeren");
            EXPECT_EQ(machine().drives.exists(leeren(kPhoto)), !shortNames) << DelFilePermanent;
            EXPECT_FALSE(machine().drives.exists("C:\\Leeren\\Zdjecie.txt")) << DelFilePermanent;
        }
    }
}

// The short name is another file's own by now.
TEST_F(ForeignNames, WhoseShortNameLeadsToAnotherEntryStay) {
    machine().drives.shortNames = true;
    machine().drives.writeFile(leeren(kPhoto), "x");
    const EmptiedFolder folder("C:\\Leeren\\");
    FoundEntry entry;
    ASSERT_EQ(findEntry("C:\\Leeren\\" + exactText(kPhoto), entry), 0u);
    EXPECT_TRUE(folder.holds(entry.shortName, entry.name));
    EXPECT_EQ(reachableName("C:\\Leeren\\", entry), entry.shortName);
    machine().drives.erase(leeren(kPhoto));
    machine().drives.writeFile("C:\\Leeren\\" + entry.shortName, "x");
    EXPECT_FALSE(folder.holds(entry.shortName, entry.name));
    EXPECT_EQ(reachableName("C:\\Leeren\\", entry), "");
}

// What lies below is looked at by true names, so a folder goes into the bin whole.
TEST_F(ForeignNames, WithoutShortNamesGoIntoTheBinWithTheFolderThatHoldsThem) {
    machine().drives.shortNames = false;
    machine().drives.writeFile(leeren(u"unten\\Zdj\u0119cia\\\u0142.txt"), "x");
    empty("C:\\Leeren");
    EXPECT_EQ(filesIn("C:\\Leeren\\", "*"), Texts{});
    ASSERT_EQ(machine().drives.recycled.size(), 1u);
    EXPECT_EQ(machine().drives.recycled[0].path, "C:\\Leeren\\unten");
}

TEST_F(ForeignNames, ThatStayAreToldByTheLogWithTheirReason) {
    machine().drives.shortNames = false;
    machine().drives.writeFile(leeren(kPhoto), "x");
    switchTracingOn();
    empty("C:\\Leeren");
    const Texts lines = logOf("FileDel");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1], "Versuch die Datei C:\\Leeren\\Zdjecie.txt zu löschen; Ergebnis unbekannt; 0; ");
    EXPECT_EQ(lines[2],
              "Die Datei C:\\Leeren\\Zdjecie.txt bleibt stehen: ihr Name ist nicht genau bekannt, und kein "
              "Kurzname "
              "führt zu ihr; 0; ");
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

// Paths as the registry of a disk writes them.
#include <filesystem>

#include "platform/offline/hives/disk/disk_parts.h"
#include "tests/hives/hive_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

TEST(WindowsPaths, BeginWithADrive) {
    for (const std::u16string_view path : {u"C:", u"a:\\x", u"z:", u"Z:x", u"A:"})
        EXPECT_TRUE(isWindowsPath(path));
    for (const std::u16string_view path :
         {u"", u"C", u"C;", u"@:", u"[:", u"`:", u"{:", u"\\\\x", u"1:", u":C"})
        EXPECT_FALSE(isWindowsPath(path));
    EXPECT_EQ(u'A', upperLetter(u'a'));
    EXPECT_EQ(u'Z', upperLetter(u'z'));
    EXPECT_EQ(u'`', upperLetter(u'`'));
    EXPECT_EQ(u'{', upperLetter(u'{'));
}

TEST(WindowsPaths, EndInAName) {
    EXPECT_EQ(u"c", lastNameOf(u"C:\\b\\c"));
    EXPECT_EQ(u"c", lastNameOf(u"C:\\b\\c\\\\"));
    EXPECT_EQ(u"c", lastNameOf(u"c"));
    EXPECT_EQ(u"C:", lastNameOf(u"C:\\"));
    EXPECT_EQ(u"", lastNameOf(u"\\"));
    EXPECT_EQ(u"", lastNameOf(u""));
}

std::u16string replaced(std::u16string text, std::u16string_view value) {
    replaceVariable(text, u"Name", value);
    return text;
}

// In any case and as often as it stands there; what is put in is not looked at again.
TEST(WindowsPaths, HaveVariablesThatAreReplaced) {
    EXPECT_EQ(u"x", replaced(u"%NAME%", u"x"));
    EXPECT_EQ(u"axbxc", replaced(u"a%name%b%Name%c", u"x"));
    EXPECT_EQ(u"xx", replaced(u"%Name%%Name%", u"x"));
    EXPECT_EQ(u"ab", replaced(u"a%Name%%Name%b", u""));
    EXPECT_EQ(u"%Name%", replaced(u"%Name%", u"%Name%"));
    EXPECT_EQ(u"%Name%%Name%\\", replaced(u"%Name%\\", u"%Name%%Name%"));
    EXPECT_EQ(u"%Nam%", replaced(u"%Nam%", u"x"));
    EXPECT_EQ(u"%Name", replaced(u"%Name", u"x"));
    EXPECT_EQ(u"", replaced(u"", u"x"));
}

class WindowsFolder : public HiveFilesTest {
  protected:
    WindowsFolder() : HiveFilesTest(memory()) { fs::create_directories(folder() / "a/Windows"); }
    [[nodiscard]] DiskSearch searchIn(const fs::path& windows) const {
        DiskSearch search{InsideFolder(folder().string())};
        search.disk.folder = windows.string();
        return search;
    }
};

TEST_F(WindowsFolder, VariablesStandForItsFolders) {
    DiskSearch search = searchIn(folder() / "a/Windows");
    search.disk.letter = 'D';
    search.disk.windowsFolder = u"D:\\W";
    EXPECT_EQ(u"D:\\W D:\\W D: %ProgramFiles% %x%",
              search.expanded(u"%systemroot% %WinDir% %SystemDrive% %ProgramFiles% %x%"));
    search.disk.programFiles = u"D:\\P";
    EXPECT_EQ(u"D:\\P", search.expanded(u"%programfiles%"));
}

TEST_F(WindowsFolder, PathsLeadToTheDriveOfTheirLetter) {
    DiskSearch search = searchIn(folder() / "a/Windows");
    search.drive = InsideFolder((folder() / "a").string());
    search.otherDrives.emplace('E', InsideFolder(folder().string()));
    EXPECT_EQ(&search.drive, search.driveOf(u"c:\\x"));
    EXPECT_EQ(&search.otherDrives.at('E'), search.driveOf(u"e:"));
    EXPECT_EQ(nullptr, search.driveOf(u"D:\\x"));
    EXPECT_EQ(nullptr, search.driveOf(u"\\x"));
    EXPECT_TRUE(search.hostPath(u"C:\\WINDOWS").isFolder());
    EXPECT_EQ((folder() / "a/Windows").string(), search.hostPath(u"E:\\A\\windows").path);
    EXPECT_FALSE(search.hostPath(u"D:\\Windows").found());
}

struct Placed {
    std::u16string said;
    char letter;
    std::u16string folder;
    std::string root;  // below the test's folder
    bool fits;
};

TEST_F(WindowsFolder, ItsDriveIsWhereItsPathBegins) {
    const Placed rows[] = {{u"C:\\Windows", 'C', u"C:\\Windows", "/a", true},
                           {u"d:\\WINDOWS\\", 'D', u"d:\\WINDOWS", "/a", true},
                           {u"C:\\a\\windows", 'C', u"C:\\a\\windows", "", true},
                           {u"C:\\A\\\\Windows\\\\", 'C', u"C:\\A\\\\Windows", "", true},
                           {u"C:\\b\\Windows", 'C', u"C:\\Windows", "/a", false},
                           {u"E:\\WINNT", 'E', u"E:\\Windows", "/a", false},
                           {u"\\Windows", 'C', u"C:\\Windows", "/a", false},
                           {u"", 'C', u"C:\\Windows", "/a", false}};
    for (const Placed& row : rows) {
        const fs::path windows = folder() / "a/Windows";
        DiskSearch search = searchIn(windows);
        placeOnDrive(search, row.said);
        SCOPED_TRACE(shown(row.said));
        EXPECT_EQ(row.letter, search.disk.letter);
        EXPECT_EQ(row.folder, search.disk.windowsFolder);
        EXPECT_EQ(folder().string() + row.root, search.disk.root);
        EXPECT_EQ(search.disk.root, search.drive.root());
        std::vector<std::string> warnings;
        if (!row.fits) {
            warnings.push_back("Windows calls its folder " +
                               (row.said.empty() ? "by no name" : "\"" + shown(row.said) + "\"") +
                               ", but it lies in " + windows.string() + "; it is taken for " +
                               shown(row.folder) + ".");
        }
        EXPECT_EQ(warnings, search.disk.warnings);
    }
}

}  // namespace
}  // namespace bromvale::offline

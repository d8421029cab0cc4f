// A disk of Windows as a drive: links are followed inside of it, never out of it, whatever they say.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/files.h"
#include "platform/offline/files/inside.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::hostPathInside;
using offline::InsideFolder;
using offline::InsidePath;
using offline::machine;
namespace fs = std::filesystem;

class DiskDrive : public TestMachine {
  protected:
    DiskDrive() {
        std::string pattern = (fs::temp_directory_path() / "bromvale-disk-XXXXXX").string();
        top_ = fs::canonical(mkdtemp(pattern.data()));
        root_ = top_ / "disk";
        put("Users/Anna/x.txt", "inside");
        std::ofstream(top_ / "secret.txt") << "outside";
        fs::create_directory(top_ / "elsewhere");
        std::ofstream(top_ / "elsewhere" / "x.txt") << "outside";
        machine().drives.addDisk('D', root_.string());
    }
    ~DiskDrive() override {
        std::error_code ignored;
        fs::remove_all(top_, ignored);
    }
    void put(const fs::path& name, const std::string& bytes) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name, std::ios::binary) << bytes;
    }
    void link(const fs::path& name, const fs::path& target) const {
        fs::create_directories((root_ / name).parent_path());
        fs::create_symlink(target, root_ / name);
    }
    static std::string content(const std::u16string& path) {
        return machine().drives.readFile(path).value_or("none");
    }
    [[nodiscard]] InsidePath find(const std::string& path) const {
        const InsideFolder folder(root_.string(), 'D');
        return folder.find(folder.root(), path);
    }
    fs::path top_;
    fs::path root_;
};

TEST_F(DiskDrive, LinksOfWindowsLeadOnInside) {
    link("Documents and Settings", root_ / "Users");
    link("Dokumente", "USERS");
    link("Users/All Users", "D:\\Users\\Anna");
    link("Users/Anna/Up", "../../users/anna");
    link("Users/Alle", "\\??\\d:\\Users");
    link("Users/Kern",
         "/?"
         "?/D:/Users");
    link("Users/Drive", (top_ / "disk" / ".NTFS-3G" / "D:" / "Users").string());
    for (const char16_t* const path :
         {u"D:\\documents and settings\\ANNA\\X.TXT", u"D:\\Dokumente\\Anna\\x.txt",
          u"D:\\Users\\All Users\\x.txt", u"D:\\Users\\Anna\\Up\\up\\UP\\x.txt",
          u"D:\\Users\\Kern\\Anna\\x.txt", u"D:\\Users\\Alle\\Anna\\x.txt", u"D:\\Users\\Drive\\Anna\\x.txt"})
        EXPECT_EQ(content(path), "inside");
    EXPECT_EQ(hostPathInside(root_.string(), u"D:\\Documents and Settings\\anna"),
              (root_ / "Users/Anna").string());
}

TEST_F(DiskDrive, NoLinkLeadsOut) {
    const fs::path targets[] = {top_ / "elsewhere",
                                "../elsewhere",
                                "/",
                                "..",
                                "Users/../../elsewhere",
                                "C:\\Users",
                                root_ / ".NTFS-3G" / "Volume{1}",
                                root_ / ".NTFS-3G/C:/Users",
                                "unsupported reparse tag 0x80000017",
                                "\\??\\Volume{1}\\",
                                root_.string() + "where",
                                "/proc/self/root",
                                "Users/../../../" + top_.filename().string() + "/elsewhere"};
    int number = 0;
    for (const fs::path& target : targets) {
        SCOPED_TRACE(target);
        const std::string name = "link" + std::to_string(number++);
        link(name, target);
        const std::u16string path = u"D:\\" + std::u16string(name.begin(), name.end());
        EXPECT_EQ(content(path + u"\\x.txt"), "none");
        EXPECT_FALSE(machine().drives.exists(path + u"\\x.txt"));
        EXPECT_FALSE(machine().drives.exists(path + u"\\secret.txt"));
        EXPECT_FALSE(machine().drives.writeFile(path + u"\\new.txt", "x"));
        EXPECT_FALSE(machine().drives.makeFolder(path + u"\\new"));
        EXPECT_EQ(find(name + "\\x.txt").state, InsidePath::State::Outside);
        // As something that can't be judged it is there.
        EXPECT_TRUE(machine().drives.exists(path));
        EXPECT_NE(GetFileAttributesA(("D:\\" + name).c_str()) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
    }
    EXPECT_FALSE(fs::exists(top_ / "elsewhere" / "new.txt"));
}

TEST_F(DiskDrive, AFileThatIsALinkOutIsNeitherReadNorWrittenNorChanged) {
    link("out.txt", top_ / "secret.txt");
    EXPECT_EQ(content(u"D:\\out.txt"), "none");
    EXPECT_FALSE(machine().drives.writeFile(u"D:\\out.txt", "broken"));
    SetFileAttributesA("D:\\out.txt", FILE_ATTRIBUTE_READONLY);
    struct stat status {};
    ASSERT_EQ(::stat((top_ / "secret.txt").c_str(), &status), 0);
    EXPECT_NE(status.st_mode & S_IWUSR, 0u);
    EXPECT_TRUE(machine().drives.erase(u"D:\\out.txt"));
    std::string bytes;
    std::ifstream(top_ / "secret.txt") >> bytes;
    EXPECT_EQ(bytes, "outside");
}

TEST_F(DiskDrive, NamesThatAreNoNamesLeadNowhere) {
    EXPECT_EQ(content(u"\\\\?\\D:\\..\\secret.txt"), "none");
    EXPECT_EQ(content(u"\\\\?\\D:\\Users/../../secret.txt"), "none");
    EXPECT_FALSE(machine().drives.writeFile(u"\\\\?\\D:\\x/../../new.txt", "x"));
    EXPECT_FALSE(fs::exists(top_ / "new.txt"));
    EXPECT_EQ(find("..\\secret.txt").state, InsidePath::State::Outside);
    EXPECT_EQ(find("Users\\..\\..\\secret.txt").state, InsidePath::State::Outside);
    EXPECT_EQ(find("Users/../Users\\.\\Anna").path, (root_ / "Users/Anna").string());
    EXPECT_EQ(find(std::string("Users\0x", 7)).state, InsidePath::State::Missing);
    EXPECT_EQ(find("Users\\" + std::string(300, 'x')).state, InsidePath::State::Missing);
    EXPECT_EQ(find("x\\y").state, InsidePath::State::NoFolder);
    EXPECT_EQ(find("Users\\Anna\\x.txt\\y").state, InsidePath::State::NoFolder);
    EXPECT_EQ(find("").path, root_.string());
}

// The host has no short names, and nobody knows which one Windows gave to a file.
TEST_F(DiskDrive, ANameThatMayBeTheShortOneOfAFileIsNotMissing) {
    put("Users/Ein langer Name.txt", "");
    const auto error = [](const char16_t* path) {
        SetLastError(0);
        WIN32_FIND_DATAW data{};
        EXPECT_EQ(FindFirstFileW(path, &data), INVALID_HANDLE_VALUE);
        return GetLastError();
    };
    EXPECT_EQ(error(u"D:\\Users\\EINLAN~1.TXT"), static_cast<DWORD>(ERROR_CANT_ACCESS_FILE));
    EXPECT_EQ(error(u"D:\\Users\\ANDERE~1.TXT"), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(error(u"D:\\Users\\EINLANG1.TXT"), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(DiskDrive, NamesOfTheHostAreThoseOfOneEntry) {
    for (const std::string_view name : {"", ".", "..", "a/b", "/"})
        EXPECT_FALSE(offline::isPlainName(name)) << name;
    EXPECT_FALSE(offline::isPlainName(std::string_view("a\0b", 3)));
    for (const std::string_view name : {"a", "...", "#", ".a", "a.", "a\\b"})
        EXPECT_TRUE(offline::isPlainName(name)) << name;
}

TEST_F(DiskDrive, CirclesOfLinksEnd) {
    link("a", "b");
    link("b", "a");
    link("self", "self/self/self");
    link("Users/loop", "..");
    put("Users/deep", "");
    for (const char* const name : {"a", "b\\x", "self"})
        EXPECT_EQ(find(name).state, InsidePath::State::Circle) << name;
    std::string path = "Users";
    for (int i = 0; i < 30; ++i) path += "\\loop\\Users";
    EXPECT_EQ(find(path).path, (root_ / "Users").string());
    EXPECT_EQ(find(path + path.substr(5)).state, InsidePath::State::Circle);
    EXPECT_EQ(content(u"D:\\a\\x"), "none");
    EXPECT_TRUE(machine().drives.exists(u"D:\\self"));
    EXPECT_FALSE(machine().drives.exists(u"D:\\self\\x"));
}

TEST_F(DiskDrive, AWalkOfThousandsOfStepsIsACircle) {
    put("Users/deep", "");
    const auto walk = [](int rounds) {
        std::string path = "Users";
        for (int i = 0; i < rounds; ++i) path += "\\..\\Users";
        return path;
    };
    EXPECT_EQ(find(walk(2047)).path, (root_ / "Users").string());
    EXPECT_EQ(find(walk(2048)).state, InsidePath::State::Circle);
}

TEST_F(DiskDrive, NamesMatchWithoutCaseAndTheOneAsWrittenComesFirst) {
    put("Größe/\xC5\x81ukasz.TXT", "l");
    put("b/X.txt", "upper");
    put("b/x.txt", "lower");
    EXPECT_EQ(content(u"d:\\gR\u00D6\u00DFE\\\u0142ukasz.txt"), "none");
    put("Gr\xC3\xB6\xC3\x9F"
        "e/\xC5\x81ukasz.TXT",
        "l");
    machine().drives.addDisk('D', root_.string());
    EXPECT_EQ(content(u"d:\\gR\u00D6\u00DFE\\\u0142ukasz.txt"), "l");
    EXPECT_EQ(content(u"D:\\b\\x.txt"), "lower");
    EXPECT_EQ(content(u"D:\\b\\X.txt"), "upper");
    EXPECT_EQ(content(u"D:\\B\\X.TXT"), "upper");
}

TEST_F(DiskDrive, WhatIsMovedIsSeenInAnyCaseAtOnce) {
    put("Ordner/alt.txt", "x");
    machine().drives.makeFolder(u"D:\\Ordner\\unten");
    EXPECT_FALSE(machine().drives.exists(u"D:\\ORDNER\\UNTEN\\NEU.TXT"));
    EXPECT_TRUE(machine().drives.exists(u"D:\\ORDNER\\ALT.TXT"));
    ASSERT_NE(MoveFileA("D:\\Ordner\\alt.txt", "D:\\Ordner\\unten\\neu.txt"), 0);
    EXPECT_TRUE(machine().drives.exists(u"D:\\ORDNER\\UNTEN\\NEU.TXT"));
    EXPECT_FALSE(machine().drives.exists(u"D:\\ORDNER\\ALT.TXT"));
}

TEST_F(DiskDrive, NothingLiesBelowAFile) {
    put("Datei.txt", "x");
    WIN32_FIND_DATAA data{};
    for (const char* path : {"D:\\Datei.txt\\a", "D:\\DATEI.TXT\\a", "D:\\Datei.txt\\a\\b"}) {
        EXPECT_EQ(FindFirstFileA(path, &data), INVALID_HANDLE_VALUE) << path;
        EXPECT_EQ(GetLastError(), 3u) << path;
    }
}

TEST_F(DiskDrive, WhatIsMadeAndErasedIsSeenAtOnce) {
    EXPECT_FALSE(machine().drives.exists(u"D:\\NEU\\a.txt"));
    EXPECT_TRUE(machine().drives.writeFile(u"D:\\Neu\\A.txt", "x"));
    EXPECT_TRUE(machine().drives.exists(u"D:\\NEU\\a.txt"));
    EXPECT_TRUE(machine().drives.erase(u"D:\\nEU\\a.TXT"));
    EXPECT_FALSE(machine().drives.exists(u"D:\\NEU\\a.txt"));
}

TEST_F(DiskDrive, ALinkToAFolderSaysSoAndListsWhatIsInIt) {
    link("Documents and Settings", root_ / "Users");
    EXPECT_NE(GetFileAttributesA("D:\\documents and settings") &
                  (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY),
              0u);
    WIN32_FIND_DATAA data{};
    const HANDLE search = FindFirstFileA("D:\\Documents and Settings\\A*", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_STREQ(data.cFileName, "Anna");
    FindClose(search);
}

}  // namespace
}  // namespace bromvale::testing

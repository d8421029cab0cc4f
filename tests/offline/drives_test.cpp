// Drives for those who set a machine up, and those of a machine that is looked at from outside.
#include "platform/offline/files/drives.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "platform/offline/files/short_names.h"
#include "platform/offline/machine.h"
#include "platform/shell.h"
#include "tests/support/host_folder_offline.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::Drives;
using offline::Location;
using offline::machine;
using offline::WideText;
namespace fs = std::filesystem;

class DrivesTest : public TestMachine {
  protected:
    static Drives& drives() { return machine().drives; }
    // The whole path that one leads to, or its last error.
    static std::string located(const std::string& path) {
        Location location;
        const DWORD error = drives().locateReal(path, location);
        return error != 0 ? std::to_string(error) : location.text();
    }
};

TEST_F(DrivesTest, APathIsReadFromTheCurrentFolderAndDrive) {
    drives().addMemory('D');
    drives().currentDirectory = "C:\\Eins\\Zwei";
    EXPECT_EQ(located("a"), "C:\\Eins\\Zwei\\a");
    EXPECT_EQ(located("..\\a"), "C:\\Eins\\a");
    EXPECT_EQ(located("..\\..\\..\\a"), "C:\\a");
    EXPECT_EQ(located("\\a"), "C:\\a");
    EXPECT_EQ(located("c:a"), "C:\\Eins\\Zwei\\a");
    EXPECT_EQ(located("d:a"), "D:\\a");
    EXPECT_EQ(located("d:"), "D:\\");
    EXPECT_EQ(located("c:\\.\\a\\.\\"), "C:\\a");
    EXPECT_EQ(located("e:\\a"), "3");
    EXPECT_EQ(located(""), "3");
    drives().addShare("Server", "Freigabe");
    drives().currentDirectory = "\\\\server\\freigabe\\Ordner";
    EXPECT_EQ(located("a"), "\\\\server\\freigabe\\Ordner\\a");
    drives().currentDirectory = "\\\\server\\andere\\Ordner";
    EXPECT_EQ(located("a"), "67");
    drives().currentDirectory = "\\\\niemand\\freigabe";
    EXPECT_EQ(located("a"), "53");
}

TEST_F(DrivesTest, SharesHaveAServerAndAName) {
    drives().addShare("Server", "Freigabe");
    EXPECT_EQ(located("\\\\SERVER\\freigabe\\a"), "\\\\SERVER\\freigabe\\a");
    EXPECT_EQ(located("//server/freigabe/a"), "\\\\server\\freigabe\\a");
    EXPECT_EQ(located("\\\\server\\freigabe"), "\\\\server\\freigabe\\");
    EXPECT_EQ(located("\\\\server"), "161");
    EXPECT_EQ(located("\\\\\\freigabe"), "161");
    EXPECT_EQ(located("\\\\server\\frei\\a"), "67");
    EXPECT_EQ(located("\\\\serve\\freigabe\\a"), "53");
    EXPECT_EQ(located("\\\\?\\UNC\\server\\freigabe\\a. "), "\\\\server\\freigabe\\a. ");
}

TEST_F(DrivesTest, NamesLoseWhatWindowsDropsUnlessThePathStandsForItself) {
    EXPECT_EQ(located("C:\\a.\\b. . "), "C:\\a\\b");
    EXPECT_EQ(located("C:\\a..\\b"), "C:\\a.\\b");
    EXPECT_EQ(located("C:\\a \\b"), "C:\\a \\b");
    EXPECT_EQ(located("C:\\a\\...\\"), "C:\\a\\..");
    EXPECT_EQ(located("C:\\a\\..."), "C:\\a");
    EXPECT_EQ(located("\\\\?\\C:\\a.\\\\b. "), "C:\\a.\\b. ");
    EXPECT_EQ(located("\\\\?\\C:\\a\\..\\b"), "C:\\a\\..\\b");
    for (const char* sign : {"<", ">", "\"", "|", ":", "\x1F", "\x01"}) {
        EXPECT_EQ(located("C:\\a" + std::string(sign)), "123") << sign;
        EXPECT_EQ(located("\\\\?\\C:\\a" + std::string(sign)), "123") << sign;
    }
}

TEST_F(DrivesTest, NamesAndPathsHaveTheirLimits) {
    const std::string longest(255, 'x');
    EXPECT_EQ(located("C:\\" + longest).size(), 258u);
    EXPECT_EQ(located("C:\\" + longest + "x"), "123");
    EXPECT_EQ(located("\\\\?\\C:\\" + longest).size(), 258u);
    EXPECT_EQ(located("\\\\?\\C:\\" + longest + "x"), "123");
    const std::string below519 = "C:\\" + longest + "\\" + longest;
    EXPECT_EQ(located(below519 + "\\xyzi").size(), 519u);
    EXPECT_EQ(located(below519 + "\\xyzij"), "3");
    const auto nested = [](std::size_t count) {
        std::string path = "\\\\?\\C:";
        for (std::size_t i = 0; i < count; ++i) path += "\\x";
        return path;
    };
    EXPECT_EQ(located(nested(132)).size(), 2u + 132 * 2);
    EXPECT_EQ(located(nested(133)), "206");
    EXPECT_EQ(located("C:" + nested(133).substr(6)), "206");
}

TEST_F(DrivesTest, WildcardsAreLookedForBehindThePrefix) {
    EXPECT_FALSE(offline::holdsWildcards("\\\\?\\C:\\a"));
    EXPECT_TRUE(offline::holdsWildcards("\\\\?\\C:\\?"));
    EXPECT_TRUE(offline::holdsWildcards("C:\\*"));
    EXPECT_FALSE(offline::holdsWildcards("C:\\a"));
}

TEST_F(DrivesTest, DrivesComeAndGo) {
    EXPECT_TRUE(drives().has('c'));
    EXPECT_FALSE(drives().has('D'));
    EXPECT_FALSE(drives().has('?'));
    drives().addMemory('z');
    EXPECT_TRUE(drives().has('Z'));
    drives().remove('Z');
    EXPECT_FALSE(drives().has('Z'));
    EXPECT_FALSE(drives().has('A'));
    drives().addMemory('a');
    EXPECT_TRUE(drives().has('A'));
}

TEST_F(DrivesTest, AFileThatIsWrittenAnewHasNothingOfTheOldOne) {
    drives().writeFile("C:\\a.txt", "lang");
    ASSERT_TRUE(drives().writeFile("C:\\a.txt", ""));
    EXPECT_EQ(drives().readFile("C:\\a.txt"), "");
}

TEST_F(DrivesTest, TheRootOfTheHostCanBeADrive) {
    drives().addFolder('R', "/");
    EXPECT_TRUE(drives().exists("R:\\tmp"));
    EXPECT_FALSE(drives().exists("R:\\gibt es nicht"));
    EXPECT_EQ(drives().pathOfHost("/"), "R:\\");
}

TEST_F(DrivesTest, AMaskBehindADriveIsOfItsCurrentFolder) {
    drives().writeFile("C:\\Ordner\\a.txt", "x");
    drives().writeFile("C:\\b.txt", "x");
    ASSERT_NE(SetCurrentDirectoryA("C:\\Ordner"), 0);
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA("C:*.txt", &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_STREQ(found.cFileName, "a.txt");
    EXPECT_EQ(FindNextFileA(search, &found), 0);
    FindClose(search);
}

// A way of links that a file can be opened by is one whose end is told.
TEST_F(DrivesTest, TheLastOfManyLinksLeadsWhereTheFirstDoes) {
    drives().makeFolder("C:\\Ziel");
    std::string target = "C:\\Ziel";
    for (int i = 1; i <= 17; ++i) {
        const std::string link = "C:\\L" + std::to_string(i);
        ASSERT_TRUE(drives().linkFolder(link, target));
        target = link;
        const HANDLE folder =
            CreateFileA(link.c_str(), 0, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        ASSERT_EQ(folder != INVALID_HANDLE_VALUE, i <= 16) << i;
        if (i > 16) break;
        WCHAR path[MAX_PATH] = {};
        GetFinalPathNameByHandleW(folder, path, MAX_PATH, 0);
        EXPECT_EQ(std::u16string_view(path), u"\\\\?\\C:\\Ziel") << i;
        CloseHandle(folder);
        EXPECT_EQ(filesIn(link + "\\", "*"), std::vector<std::string>{}) << i;
        EXPECT_TRUE(drives().writeFile(link + "\\a.txt", "x")) << i;
        EXPECT_EQ(filesIn(link + "\\", "*"), std::vector<std::string>{"a.txt"}) << i;
        ASSERT_NE(DeleteFileA("C:\\Ziel\\a.txt"), 0);
    }
}

TEST_F(DrivesTest, FilesAreWrittenReadDatedAndErased) {
    EXPECT_TRUE(drives().writeFile(WideText("C:\\neu\\tief\\a"), "abcdef"));
    EXPECT_TRUE(drives().writeFile(WideText("C:\\neu\\tief\\a"), "xyz"));
    EXPECT_EQ(drives().readFile(WideText("C:\\neu\\tief\\a")), "xyz");
    EXPECT_FALSE(drives().readFile(WideText("C:\\neu\\tief")));
    EXPECT_FALSE(drives().readFile(WideText("Q:\\a")));
    EXPECT_FALSE(drives().writeFile(WideText("C:\\"), "x"));
    EXPECT_FALSE(drives().writeFile(WideText("C:\\neu\\tief"), "x"));

    machine().clock.bias = -3'600'000;
    EXPECT_TRUE(drives().setFileTime(WideText("C:\\neu\\tief\\a"), {2001, 2, 0, 3, 4, 5, 6, 0}));
    WIN32_FIND_DATAA data{};
    FindClose(FindFirstFileA("C:\\neu\\tief\\a", &data));
    SYSTEMTIME universal{};
    FileTimeToSystemTime(&data.ftLastWriteTime, &universal);
    EXPECT_EQ(universal.wYear, 2001);
    EXPECT_EQ(universal.wHour, 3) << "an hour before the local one";
    EXPECT_FALSE(drives().setFileTime(WideText("C:\\neu\\b"), {2001, 2, 0, 3, 4, 5, 6, 0}));

    EXPECT_FALSE(drives().erase(WideText("C:\\neu")));
    EXPECT_TRUE(drives().erase(WideText("C:\\neu\\tief\\a")));
    EXPECT_FALSE(drives().exists(WideText("C:\\neu\\tief\\a")));
    EXPECT_FALSE(drives().erase(WideText("C:\\neu\\tief\\a")));
    EXPECT_FALSE(drives().makeFolder(WideText("Q:\\a")));
}

TEST_F(DrivesTest, AttributesAreToldAsTheyWereSetAndNoneIsNormal) {
    drives().writeFile(WideText("C:\\a"), "x");
    EXPECT_EQ(GetFileAttributesA("C:\\a"), static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE));
    ASSERT_NE(SetFileAttributesA("C:\\a", FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_EQ(GetFileAttributesA("C:\\a"), static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    ASSERT_NE(SetFileAttributesA("C:\\a", FILE_ATTRIBUTE_NORMAL), 0);
    EXPECT_EQ(GetFileAttributesA("C:\\a"), static_cast<DWORD>(FILE_ATTRIBUTE_NORMAL));
}

TEST_F(DrivesTest, ProtectionIsOfAFolderAndWhatLiesBelow) {
    const auto isProtected = [](const char* path) {
        Location location;
        EXPECT_EQ(drives().locate(WideText(path), location), 0u);
        return drives().isProtected(location);
    };
    EXPECT_FALSE(isProtected("C:\\Fest"));
    drives().protect(WideText("C:\\Fest"));
    for (const char* path : {"C:\\Fest", "C:\\FEST\\a", "C:\\fest\\a\\b"})
        EXPECT_TRUE(isProtected(path)) << path;
    for (const char* path : {"C:\\Fes", "C:\\Festes", "C:\\a\\Fest", "C:\\"})
        EXPECT_FALSE(isProtected(path)) << path;
    drives().addMemory('D');
    drives().protect(WideText("D:\\"));
    EXPECT_TRUE(isProtected("D:\\a"));
}

TEST_F(DrivesTest, WhatIsNotHereIsElsewhereWhereSoMuchIsKnown) {
    EXPECT_FALSE(drives().isElsewhere("Q:\\a"));
    drives().othersAreElsewhere = true;
    drives().addShare("server", "freigabe");
    for (const char* path : {"Q:\\a", "q:", "\\\\niemand\\x\\a", "//niemand/x", "\\\\server", "\\\\",
                             "\\\\?\\Q:\\a", "\\\\?\\UNC\\niemand\\x", "\\\\?\\Volume{1}\\a", "\\\\.\\C:"})
        EXPECT_TRUE(drives().isElsewhere(path)) << path;
    for (const char* path :
         {"C:\\a", "c:", "a", "\\a", "", "\\\\server\\freigabe\\a", "\\\\?\\C:\\a", "1:\\a", "?"})
        EXPECT_FALSE(drives().isElsewhere(path)) << path;
}

TEST_F(DrivesTest, BeyondItsOwnFolderTheProgramsDriveIsTheDisksToo) {
    drives().othersAreElsewhere = true;
    drives().ownFolder = "C:\\Programme\\Bromvale";
    for (const char* path :
         {"C:\\Programme\\Bromvale", "c:\\programme\\BROMVALE\\a", "C:\\Programme\\Bromvale/a"})
        EXPECT_FALSE(drives().isElsewhere(path)) << path;
    for (const char* path :
         {"C:\\Programme", "C:\\Programme\\Bromvale2\\a", "C:\\Programm1\\Bromvale\\a", "C:\\"})
        EXPECT_TRUE(drives().isElsewhere(path)) << path;
    drives().addMemory('D');
    EXPECT_FALSE(drives().isElsewhere("D:\\Programme"));
}

TEST_F(DrivesTest, ASearchElsewhereFindsTheNameAndIsCounted) {
    drives().othersAreElsewhere = true;
    for (const auto& [path, name] : std::initializer_list<std::pair<const char*, const char*>>{
             {"Q:\\Ordner\\a.dll", "a.dll"}, {"Q:b.dll", "b.dll"}, {"//niemand/x/c.dll", "c.dll"}}) {
        WIN32_FIND_DATAA data{};
        const HANDLE search = FindFirstFileA(path, &data);
        ASSERT_NE(search, INVALID_HANDLE_VALUE) << path;
        EXPECT_STREQ(data.cFileName, name);
        EXPECT_EQ(FindNextFileA(search, &data), 0);
        FindClose(search);
    }
    EXPECT_EQ(drives().soughtElsewhere, 3u);
    WIN32_FIND_DATAA data{};
    EXPECT_EQ(FindFirstFileA("C:\\fehlt", &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(drives().soughtElsewhere, 3u);
}

// --- short names ---

TEST_F(DrivesTest, NamesOfEightAndThreeAreTheirOwnShortOnes) {
    for (const char* name : {"a", "ABCDEFGH.TXT", "a.b", "abcdefgh", "ab~1.c"})
        EXPECT_TRUE(offline::isEightAndThree(name)) << name;
    for (const char* name : {"", ".", ".a", "abcdefghi", "a.text", "a.b.c", "a b", "a+b", "a,b", "a;b", "a=b",
                             "a[b", "a]b", "a.b+", "a..b"})
        EXPECT_FALSE(offline::isEightAndThree(name)) << name;
}

TEST_F(DrivesTest, AShortNameMayBeOfWhatBeginsAlike) {
    const auto mayBe = [](const char* name, const char* entry) {
        return offline::mayBeShortNameOf(name, entry);
    };
    EXPECT_TRUE(mayBe("PROGRA~1", "Program Files"));
    EXPECT_TRUE(mayBe("progra~1.tex", "Programme von uns.text"));
    EXPECT_TRUE(mayBe("PR4AB2~1", "Programme"));
    EXPECT_TRUE(mayBe("P~1", "p+++++++++"));
    EXPECT_TRUE(mayBe("A_~1", "a+++++++++"));
    EXPECT_TRUE(mayBe("__~1", "xy+++++++++"));
    EXPECT_FALSE(mayBe("PROGRA~1", "Programm")) << "has none beside its own";
    EXPECT_FALSE(mayBe("PROGRA~1", "Qrogram Files"));
    EXPECT_FALSE(mayBe("PROGRA~1", "Pqogram Files"));
    EXPECT_FALSE(mayBe("PR~1", "p.zzzzzzzzz"));
    for (const char* name : {"PROGRA1", "~1", "PROGRA~", "PROGRA~A", "PROGRA~:", "PROGRAM~1X"})
        EXPECT_FALSE(mayBe(name, "Program Files")) << name;
}

// --- what the host answers ---

class HostErrors : public DrivesTest {
  protected:
    HostErrors() {
        fs::create_directory(top_ / "d");
        drives().addFolder('D', (top_ / "d").string());
    }
    template <class Answer>
    static DWORD errorOf(Answer answer, Answer failure) {
        EXPECT_EQ(answer, failure);
        return GetLastError();
    }
    static HANDLE make(const std::string& path) {
        return CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    }
    const HostFolder host_;
    const fs::path& top_ = host_.path();
};

TEST_F(HostErrors, AreThoseOfWindows) {
    EXPECT_EQ(errorOf(make("D:\\" + std::string(200, '\xFC')), INVALID_HANDLE_VALUE), 206u)
        << "400 bytes for the host";
    EXPECT_EQ(errorOf(CreateDirectoryA(("D:\\" + std::string(200, '\xFC')).c_str(), nullptr), FALSE), 206u);
    fs::create_symlink("/dev/full", top_ / "d" / "voll");
    const HANDLE full = CreateFileA("D:\\voll", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(full, INVALID_HANDLE_VALUE);
    DWORD done = 9;
    EXPECT_EQ(errorOf(WriteFile(full, "x", 1, &done, nullptr), FALSE), 39u);
    EXPECT_EQ(done, 0u);
    CloseHandle(full);
    fs::create_symlink(top_ / "d" / "kreis", top_ / "d" / "kreis");
    EXPECT_EQ(errorOf(CreateFileA("D:\\kreis", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
                      INVALID_HANDLE_VALUE),
              31u);
    EXPECT_FALSE(drives().linkFolder(WideText("D:\\a"), WideText("D:\\b")));
}

TEST_F(HostErrors, ASizeBeyondFourGigabytesIsToldInTwoHalves) {
    const HANDLE file = make("D:\\gross");
    LONG high = 1;
    EXPECT_EQ(SetFilePointer(file, 5, &high, FILE_BEGIN), 5u);
    EXPECT_EQ(high, 1);
    ASSERT_NE(SetEndOfFile(file), 0);
    DWORD sizeHigh = 0;
    EXPECT_EQ(GetFileSize(file, &sizeHigh), 5u);
    EXPECT_EQ(sizeHigh, 1u);
    CloseHandle(file);
    WIN32_FIND_DATAA data{};
    FindClose(FindFirstFileA("D:\\gross", &data));
    EXPECT_EQ(data.nFileSizeLow, 5u);
    EXPECT_EQ(data.nFileSizeHigh, 1u);
}

TEST_F(HostErrors, TheBinKeepsEachFileUnderANameOfItsOwn) {
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = "D:\\a\0";
    operation.fFlags = FOF_ALLOWUNDO;
    for (const char* name : {"a", "a (2)", "a (3)"}) {
        CloseHandle(make("D:\\a"));
        EXPECT_EQ(SHFileOperationA(&operation), 0);
        EXPECT_EQ(drives().recycled.back().stored, name);
        EXPECT_TRUE(fs::exists(top_ / "d.Papierkorb" / name)) << name;
    }
}

TEST_F(HostErrors, APathOfTheHostIsToldByItsDrive) {
    const std::string folder = fs::canonical(top_ / "d").string();
    EXPECT_EQ(drives().pathOfHost(folder), "D:\\");
    EXPECT_EQ(drives().pathOfHost(folder + "/a/b"), "D:\\a\\b");
    EXPECT_EQ(drives().pathOfHost(folder + "x/a"), "");
    EXPECT_EQ(drives().pathOfHost("/"), "");
}

TEST_F(HostErrors, ReadOnlyIsWhatTheHostKeepsFromWriting) {
    CloseHandle(make("D:\\a"));
    const std::string path = (top_ / "d" / "a").string();
    const auto mode = [&path] {
        struct stat state {};
        ::stat(path.c_str(), &state);
        return state.st_mode & 0777u;
    };
    ::chmod(path.c_str(), 0664);
    EXPECT_EQ(GetFileAttributesA("D:\\a"), static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE));
    ASSERT_NE(SetFileAttributesA("D:\\a", FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_EQ(mode(), 0444u);
    EXPECT_EQ(GetFileAttributesA("D:\\a"),
              static_cast<DWORD>(FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY));
    ASSERT_NE(SetFileAttributesA("D:\\a", FILE_ATTRIBUTE_NORMAL), 0);
    EXPECT_EQ(mode(), 0644u);
}

}  // namespace
}  // namespace bromvale::testing

// A folder of the host as a drive: names without case, umlauts, bytes that survive the process, the bin
// beside it.
#include <filesystem>
#include <fstream>

#include "platform/files.h"
#include "platform/offline/machine.h"
#include "platform/shell.h"
#include "tests/support/host_folder_offline.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;
namespace fs = std::filesystem;

class HostDrive : public TestMachine {
  protected:
    HostDrive() {
        fs::create_directory(top_ / "d");
        machine().drives.addFolder('D', (top_ / "d").string());
    }
    void put(const std::string& name, const std::string& bytes) const {
        fs::create_directories((top_ / "d" / name).parent_path());
        std::ofstream(top_ / "d" / name, std::ios::binary) << bytes;
    }
    static std::string found(const std::string& path) {
        WIN32_FIND_DATAA data{};
        const HANDLE search = FindFirstFileA(path.c_str(), &data);
        if (search == INVALID_HANDLE_VALUE) return "error " + std::to_string(GetLastError());
        FindClose(search);
        return data.cFileName;
    }
    const HostFolder host_;
    const fs::path& top_ = host_.path();
};

TEST_F(HostDrive, NamesMatchWithoutCaseUmlautsIncluded) {
    put("Farbm\xC3\xBC"
        "hle/\xC3\x9C"
        "bung.TXT",
        "x");
    EXPECT_EQ(found("D:\\FARBMÜHLE\\übung.txt"), "Übung.TXT");
    EXPECT_EQ(found("D:\\Farbmühle\\Übung.TXT"), "Übung.TXT");
    EXPECT_EQ(found("D:\\farbmühle\\*.txt"), "Übung.TXT");
    EXPECT_EQ(found("D:\\Farbmühle\\nichts"), "error 2");
    EXPECT_EQ(found("D:\\nichts\\nichts"), "error 3");
}

TEST_F(HostDrive, WhatLiesBesideTheFolderIsNotOnTheDrive) {
    std::ofstream(top_ / "dfremd.txt", std::ios::binary) << "x";
    EXPECT_EQ(GetFileAttributesA("D:\\fremd.txt"), INVALID_FILE_ATTRIBUTES);
    put("fremd.txt", "x");
    EXPECT_NE(GetFileAttributesA("D:\\fremd.txt"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(HostDrive, WhatIsWrittenIsWithTheHostAtOnce) {
    const HANDLE file = CreateFileA("D:\\Größe.txt", GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    DWORD done = 0;
    ASSERT_NE(WriteFile(file, "abc", 3, &done, nullptr), 0);
    std::ifstream seen(top_ / "d" /
                       "Gr\xC3\xB6\xC3\x9F"
                       "e.txt");
    std::string bytes;
    seen >> bytes;
    EXPECT_EQ(bytes, "abc");
    CloseHandle(file);
}

TEST_F(HostDrive, AWrittenFileCarriesTheMachinesTime) {
    machine().clock.set(2003, 5, 6, 7, 8, 9);
    writeWholeFile("D:\\a.txt", "x");
    WIN32_FIND_DATAA data{};
    FindClose(FindFirstFileA("D:\\a.txt", &data));
    FILETIME local{};
    SYSTEMTIME time{};
    FileTimeToLocalFileTime(&data.ftLastWriteTime, &local);
    FileTimeToSystemTime(&local, &time);
    EXPECT_EQ(time.wYear, 2003);
    EXPECT_EQ(time.wHour, 7);
    EXPECT_EQ(time.wMinute, 8);
}

TEST_F(HostDrive, WhateverChangesAFileGivesItTheMachinesTime) {
    machine().drives.addMemory('E');
    for (const char* path : {"D:\\a.txt", "E:\\a.txt"}) {
        const auto year = [path] {
            WIN32_FIND_DATAA data{};
            FindClose(FindFirstFileA(path, &data));
            SYSTEMTIME time{};
            FileTimeToSystemTime(&data.ftLastWriteTime, &time);
            return time.wYear;
        };
        const auto change = [path](bool truncates) {
            const HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
            DWORD done = 0;
            EXPECT_NE(truncates ? SetEndOfFile(file) : WriteFile(file, "xyz", 3, &done, nullptr), 0);
            CloseHandle(file);
        };
        machine().clock.set(2001, 5, 6, 7, 8, 9);
        writeWholeFile(path, "abc");
        EXPECT_EQ(year(), 2001) << path;
        machine().clock.set(2002, 5, 6, 7, 8, 9);
        change(true);
        EXPECT_EQ(year(), 2002) << path;
        machine().clock.set(2003, 5, 6, 7, 8, 9);
        change(false);
        EXPECT_EQ(year(), 2003) << path;
        machine().clock.set(2004, 5, 6, 7, 8, 9);
        CloseHandle(CreateFileA(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_EQ(year(), 2003) << path;
    }
}

TEST_F(HostDrive, TheRecycleBinStandsBesideTheFolder) {
    put("a.txt", "x");
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = "D:\\A.txt\0";
    operation.fFlags = FOF_ALLOWUNDO;
    EXPECT_EQ(SHFileOperationA(&operation), 0);
    EXPECT_FALSE(fs::exists(top_ / "d" / "a.txt"));
    EXPECT_TRUE(fs::exists(top_ / "d.Papierkorb" / "a.txt"));
}

TEST_F(HostDrive, TheMachinesOwnFoldersAreMadeWhenSomethingIsWrittenThere) {
    machine().drives.addFolder('C', (top_ / "d").string());
    machine().prepareFolders();
    EXPECT_TRUE(fs::is_empty(top_ / "d"));
    EXPECT_EQ(found("C:\\WINDOWS"), "error 2");
    const auto write = [](const char* path) {
        return CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr) !=
               INVALID_HANDLE_VALUE;
    };
    EXPECT_TRUE(write("C:\\windows\\temp\\a.txt"));
    EXPECT_TRUE(fs::exists(top_ / "d" / "WINDOWS" / "TEMP" / "a.txt"));
    EXPECT_FALSE(fs::exists(top_ / "d" / "Programme"));
    EXPECT_FALSE(write("C:\\Fremd\\a.txt"));
    EXPECT_EQ(GetLastError(), 3u);
}

TEST_F(HostDrive, FoldersEnumerateInAlphabeticalOrder) {
    for (const char* name : {"b", "A", "c", "B2"}) put(name, "x");
    WIN32_FIND_DATAA data{};
    std::vector<std::string> names;
    const HANDLE search = FindFirstFileA("D:\\*", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    do {
        names.emplace_back(data.cFileName);
    } while (FindNextFileA(search, &data) != 0);
    FindClose(search);
    EXPECT_EQ(names, (std::vector<std::string>{"A", "b", "B2", "c"}));
}

}  // namespace
}  // namespace bromvale::testing

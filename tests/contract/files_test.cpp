// Opening, reading, writing, deleting.
#include "platform/files.h"
#include "platform/machine.h"
#include "tests/contract/on_drives.h"

namespace bromvale::testing {
namespace {

class Files : public OnDrives {
  protected:
    static HANDLE open(const std::string& path, DWORD access, DWORD disposition,
                       DWORD share = FILE_SHARE_READ) {
        SetLastError(0);
        return CreateFileA(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    // 0 where the file could be opened; it is closed again.
    static DWORD openError(const std::string& path, DWORD access, DWORD disposition) {
        const HANDLE file = open(path, access, disposition);
        if (file == INVALID_HANDLE_VALUE) return GetLastError();
        CloseHandle(file);
        return 0;
    }
};

BROMVALE_ON_DRIVES(Files);

TEST_P(Files, AFileIsMovedToAFreeNameOnly) {
    writeWholeFile(folder() + "a", "inhalt");
    writeWholeFile(folder() + "b", "anderer");
    makeFolderOnDisk(folder() + "Ordner");
    const auto move = [this](const char* from, const char* to) -> DWORD {
        const BOOL moved = MoveFileA((folder() + from).c_str(), (folder() + to).c_str());
        return moved ? 0 : GetLastError();
    };
    EXPECT_EQ(move("a", "b"), 183u);
    EXPECT_EQ(move("nichts", "c"), 2u);
    EXPECT_EQ(move("a", "fehlt\\c"), 3u);
    EXPECT_EQ(readWholeFile(folder() + "a"), "inhalt");
    EXPECT_EQ(readWholeFile(folder() + "b"), "anderer");
    EXPECT_EQ(move("a", "Ordner\\C"), 0u);
    EXPECT_EQ(readWholeFile(folder() + "a"), "<missing>");
    EXPECT_EQ(readWholeFile(folder() + "Ordner\\C"), "inhalt");
    EXPECT_EQ(filesIn(folder() + "Ordner\\", "*"), std::vector<std::string>{"C"});
}

TEST_P(Files, DispositionsOnMissingAndExistingFiles) {
    struct Row {
        DWORD disposition;
        DWORD missing;
        DWORD existing;
    };
    for (const Row row : {Row{CREATE_NEW, 0, 80}, Row{CREATE_ALWAYS, 0, 0}, Row{OPEN_EXISTING, 2, 0},
                          Row{OPEN_ALWAYS, 0, 0}, Row{TRUNCATE_EXISTING, 2, 0}}) {
        const std::string path = folder() + "datei" + std::to_string(row.disposition);
        EXPECT_EQ(openError(path, GENERIC_WRITE, row.disposition), row.missing) << row.disposition;
        writeWholeFile(path, "inhalt");
        EXPECT_EQ(openError(path, GENERIC_WRITE, row.disposition), row.existing) << row.disposition;
        const bool kept = row.disposition == CREATE_NEW || row.disposition == OPEN_EXISTING ||
                          row.disposition == OPEN_ALWAYS;
        EXPECT_EQ(readWholeFile(path), kept ? "inhalt" : "") << row.disposition;
    }
}

TEST_P(Files, OpeningTellsByTheLastErrorThatAFileWasThere) {
    writeWholeFile(folder() + "da", "");
    CloseHandle(open(folder() + "da", GENERIC_WRITE, OPEN_ALWAYS));
    EXPECT_EQ(GetLastError(), 183u);
    HANDLE file = open(folder() + "neu", GENERIC_WRITE, OPEN_ALWAYS);
    EXPECT_EQ(GetLastError(), 0u);
    CloseHandle(file);
}

TEST_P(Files, WhatCannotBeOpened) {
    makeFolderOnDisk(folder() + "ordner");
    struct Row {
        std::string path;
        DWORD error;
    };
    for (const Row& row : {Row{folder() + "ordner", 5}, Row{folder() + "nichts\\a", 3},
                           Row{folder() + "a*", 123}, Row{"", 3}}) {
        EXPECT_EQ(openError(row.path, GENERIC_WRITE, OPEN_ALWAYS), row.error) << row.path;
    }
}

TEST_P(Files, AFileThatIsWrittenIsSharedAsItsOpenerSays) {
    const std::string path = folder() + "a";
    const HANDLE writer = open(path, GENERIC_WRITE, CREATE_NEW, FILE_SHARE_READ);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(openError(path, GENERIC_WRITE, OPEN_EXISTING), 32u);
    const HANDLE reader = open(path, GENERIC_READ, OPEN_EXISTING, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_NE(reader, INVALID_HANDLE_VALUE);
    EXPECT_EQ(DeleteFileA(path.c_str()), 0);
    EXPECT_EQ(GetLastError(), 32u);
    CloseHandle(reader);
    CloseHandle(writer);
    EXPECT_NE(DeleteFileA(path.c_str()), 0);
}

TEST_P(Files, WritingReadingAndSeeking) {
    const HANDLE file = open(folder() + "a", GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
    DWORD done = 0;
    ASSERT_NE(WriteFile(file, "abcdef", 6, &done, nullptr), 0);
    EXPECT_EQ(done, 6u);
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, FILE_BEGIN), 2u);
    char buffer[8] = {};
    EXPECT_NE(ReadFile(file, buffer, 3, &done, nullptr), 0);
    EXPECT_EQ(std::string(buffer, done), "cde");
    EXPECT_EQ(SetFilePointer(file, -1, nullptr, FILE_END), 5u);
    EXPECT_EQ(SetFilePointer(file, -2, nullptr, FILE_CURRENT), 3u);
    ASSERT_NE(WriteFile(file, "XY", 2, &done, nullptr), 0);
    EXPECT_EQ(GetFileSize(file, nullptr), 6u);
    EXPECT_EQ(SetFilePointer(file, 9, nullptr, FILE_BEGIN), 9u);
    EXPECT_NE(ReadFile(file, buffer, 3, &done, nullptr), 0);
    EXPECT_EQ(done, 0u);  // behind the end there is nothing, and that is no failure
    EXPECT_EQ(SetFilePointer(file, -1, nullptr, FILE_BEGIN), 0xFFFFFFFFu);
    EXPECT_EQ(GetLastError(), 131u);
    CloseHandle(file);
    EXPECT_EQ(readWholeFile(folder() + "a"), "abcXYf");
}

TEST_P(Files, AccessIsLimitedToWhatWasAskedFor) {
    writeWholeFile(folder() + "a", "abc");
    char buffer[4];
    DWORD done = 0;
    const HANDLE reader = open(folder() + "a", GENERIC_READ, OPEN_EXISTING);
    EXPECT_EQ(WriteFile(reader, "x", 1, &done, nullptr), 0);
    EXPECT_EQ(GetLastError(), 5u);
    CloseHandle(reader);
    const HANDLE writer = open(folder() + "a", GENERIC_WRITE, OPEN_EXISTING);
    EXPECT_EQ(ReadFile(writer, buffer, 1, &done, nullptr), 0);
    EXPECT_EQ(GetLastError(), 5u);
    CloseHandle(writer);
}

TEST_P(Files, FoldersAreMadeAndRemoved) {
    const std::string path = folder() + "Ordner";
    EXPECT_NE(CreateDirectoryA(path.c_str(), nullptr), 0);
    EXPECT_EQ(CreateDirectoryA(path.c_str(), nullptr), 0);
    EXPECT_EQ(GetLastError(), 183u);
    EXPECT_EQ(CreateDirectoryA((folder() + "nichts\\neu").c_str(), nullptr), 0);
    EXPECT_EQ(GetLastError(), 3u);
    writeWholeFile(path + "\\a", "x");
    EXPECT_EQ(RemoveDirectoryA(path.c_str()), 0);
    EXPECT_EQ(GetLastError(), 145u);
    EXPECT_NE(DeleteFileA((path + "\\a").c_str()), 0);
    EXPECT_NE(RemoveDirectoryA((path + "\\").c_str()), 0);
    EXPECT_EQ(RemoveDirectoryA(path.c_str()), 0);
    EXPECT_EQ(GetLastError(), 2u);
}

TEST_P(Files, DeletingWhatIsNoFile) {
    makeFolderOnDisk(folder() + "Ordner");
    writeWholeFile(folder() + "a", "x");
    EXPECT_EQ(DeleteFileA((folder() + "Ordner").c_str()), 0);
    EXPECT_EQ(GetLastError(), 5u);
    EXPECT_EQ(RemoveDirectoryA((folder() + "a").c_str()), 0);
    EXPECT_EQ(GetLastError(), 267u);
    EXPECT_EQ(DeleteFileA((folder() + "nichts").c_str()), 0);
    EXPECT_EQ(GetLastError(), 2u);
    EXPECT_EQ(DeleteFileA((folder() + "nichts\\a").c_str()), 0);
    EXPECT_EQ(GetLastError(), 3u);
}

TEST_P(Files, AttributesTellFoldersAndWhatIsMissing) {
    makeFolderOnDisk(folder() + "Ordner");
    writeWholeFile(folder() + "a", "x");
    EXPECT_EQ(GetFileAttributesA((folder() + "Ordner").c_str()) & FILE_ATTRIBUTE_DIRECTORY,
              static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(GetFileAttributesA((folder() + "Ordner\\").c_str()) & FILE_ATTRIBUTE_DIRECTORY,
              static_cast<DWORD>(FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_EQ(GetFileAttributesA((folder() + "a").c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u);
    EXPECT_EQ(GetFileAttributesA((folder() + "nichts").c_str()), 0xFFFFFFFFu);
    EXPECT_EQ(GetLastError(), 2u);
}

TEST_P(Files, AReadOnlyFileIsReadAndNotDeleted) {
    const std::string path = folder() + "a";
    writeWholeFile(path, "x");
    ASSERT_NE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_EQ(openError(path, GENERIC_READ, OPEN_EXISTING), 0u);
    EXPECT_EQ(DeleteFileA(path.c_str()), 0);
    EXPECT_EQ(GetLastError(), 5u);
    ASSERT_NE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL), 0);
    EXPECT_NE(DeleteFileA(path.c_str()), 0);
}

TEST_P(Files, OpenFileAndTheTimeOfTheLastWrite) {
    writeWholeFile(folder() + "a", "x");
    OFSTRUCT opened{};
    const HFILE number = OpenFile((folder() + "a").c_str(), &opened, OF_READ);
    ASSERT_NE(number, HFILE_ERROR);
    const auto file = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(number));
    FILETIME written{};
    FILETIME local{};
    SYSTEMTIME time{};
    SYSTEMTIME now{};
    EXPECT_NE(GetFileTime(file, nullptr, nullptr, &written), 0);
    EXPECT_NE(FileTimeToLocalFileTime(&written, &local), 0);
    EXPECT_NE(FileTimeToSystemTime(&local, &time), 0);
    EXPECT_NE(CloseHandle(file), 0);
    EXPECT_EQ(OpenFile((folder() + "nichts").c_str(), &opened, OF_READ), HFILE_ERROR);
    EXPECT_EQ(opened.nErrCode, 2);
    GetLocalTime(&now);
    EXPECT_EQ(time.wYear, now.wYear);
    EXPECT_EQ(time.wMonth, now.wMonth);
}

TEST_P(Files, FileTimesAreTicksSince1601) {
    const FILETIME ticks{0xC3C2A480u, 0x01DD5CB1u};
    SYSTEMTIME time{};
    ASSERT_NE(FileTimeToSystemTime(&ticks, &time), 0);
    FILETIME back{};
    ASSERT_NE(SystemTimeToFileTime(&time, &back), 0);
    SYSTEMTIME again{};
    ASSERT_NE(FileTimeToSystemTime(&back, &again), 0);
    EXPECT_EQ(again.wDay, time.wDay);
    const FILETIME first{0, 0};
    ASSERT_NE(FileTimeToSystemTime(&first, &time), 0);
    EXPECT_EQ(time.wYear, 1601);
    EXPECT_EQ(time.wMonth, 1);
    EXPECT_EQ(time.wDay, 1);
    EXPECT_EQ(time.wDayOfWeek, 1);  // a Monday
}

TEST_P(Files, TheCurrentDirectoryIsSetAndTold) {
    makeFolderOnDisk(folder() + "Ordner");
    ASSERT_NE(SetCurrentDirectoryA((folder() + "Ordner\\").c_str()), 0);
    char buffer[MAX_PATH];
    const DWORD length = GetCurrentDirectoryA(sizeof buffer, buffer);
    EXPECT_EQ(std::string(buffer, length), folder() + "Ordner");
    EXPECT_EQ(GetCurrentDirectoryA(3, buffer), length + 1);
    EXPECT_EQ(SetCurrentDirectoryA((folder() + "nichts").c_str()), 0);
    EXPECT_EQ(GetLastError(), 2u);
    ASSERT_NE(SetCurrentDirectoryA("C:\\"), 0);
    EXPECT_EQ(GetCurrentDirectoryA(sizeof buffer, buffer), 3u);
    EXPECT_STREQ(buffer, "C:\\");
}

}  // namespace
}  // namespace bromvale::testing

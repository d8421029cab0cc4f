// Open files: who may open one beside others, places and sizes, times, and handles that are none.
#include <array>

#include "platform/files.h"
#include "platform/machine.h"
#include "tests/contract/on_drives.h"

namespace bromvale::testing {
namespace {

constexpr DWORD kRead = GENERIC_READ;
constexpr DWORD kWrite = GENERIC_WRITE;
constexpr DWORD kBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;

class OpenFiles : public OnDrives {
  protected:
    [[nodiscard]] HANDLE open(DWORD access, DWORD share, DWORD disposition = OPEN_EXISTING) const {
        SetLastError(0);
        return CreateFileA(path().c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    }
    [[nodiscard]] std::string path() const { return folder() + "Datei.txt"; }
    static void write(HANDLE file, std::string_view bytes) {
        DWORD done = 0;
        EXPECT_NE(WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr), 0);
        EXPECT_EQ(done, bytes.size());
    }
    // The last error of a call that must fail.
    template <class Answer>
    static DWORD errorOf(Answer answer, Answer failure = Answer{}) {
        EXPECT_EQ(answer, failure);
        return GetLastError();
    }
};

BROMVALE_ON_DRIVES(OpenFiles);

TEST_P(OpenFiles, AnotherOneOpensWhatTheFirstSharesAndSharesWhatItHas) {
    struct Row {
        DWORD access, share;            // of who opened it
        DWORD otherAccess, otherShare;  // of who wants it
        DWORD error;
    };
    constexpr std::array kRows{
        Row{kRead, FILE_SHARE_READ, kRead, FILE_SHARE_READ, 0},
        Row{kRead, FILE_SHARE_READ, kRead, 0, 32},
        Row{kRead, 0, kRead, FILE_SHARE_READ, 32},
        Row{kRead, FILE_SHARE_READ, kWrite, kBoth, 32},
        Row{kRead, FILE_SHARE_WRITE, kWrite, FILE_SHARE_READ, 0},
        Row{kRead, FILE_SHARE_WRITE, kRead, FILE_SHARE_READ, 32},
        Row{kRead, kBoth, kWrite, FILE_SHARE_READ, 0},
        Row{kRead, kBoth, kWrite, FILE_SHARE_WRITE, 32},
        Row{kWrite, FILE_SHARE_READ, kRead, FILE_SHARE_READ, 32},
        Row{kWrite, FILE_SHARE_READ, kRead, FILE_SHARE_WRITE, 0},
        Row{kWrite, kBoth, kWrite, kBoth, 0},
        Row{kWrite, kBoth, kRead | kWrite, FILE_SHARE_READ, 32},
        Row{kRead | kWrite, kBoth, kRead | kWrite, kBoth, 0},
    };
    writeWholeFile(path(), "x");
    for (const Row& row : kRows) {
        const HANDLE first = open(row.access, row.share);
        ASSERT_NE(first, INVALID_HANDLE_VALUE);
        const HANDLE second = open(row.otherAccess, row.otherShare);
        EXPECT_EQ(GetLastError(), row.error) << &row - kRows.data();
        EXPECT_EQ(second == INVALID_HANDLE_VALUE, row.error != 0) << &row - kRows.data();
        if (second != INVALID_HANDLE_VALUE) CloseHandle(second);
        CloseHandle(first);
    }
}

TEST_P(OpenFiles, AFileThatIsOpenIsNeitherMovedNorDeleted) {
    writeWholeFile(path(), "x");
    const HANDLE file = open(kRead, kBoth);
    EXPECT_EQ(errorOf(MoveFileA(path().c_str(), (folder() + "b").c_str())), 32u);
    EXPECT_EQ(errorOf(DeleteFileA(path().c_str())), 32u);
    CloseHandle(file);
    EXPECT_NE(MoveFileA(path().c_str(), (folder() + "b").c_str()), 0);
    EXPECT_NE(DeleteFileA((folder() + "b").c_str()), 0);
}

TEST_P(OpenFiles, TheFlagThatOpensFoldersOpensFilesAsFiles) {
    writeWholeFile(path(), "abc");
    const HANDLE file = CreateFileA(path().c_str(), kRead, kBoth, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    char bytes[4] = {};
    DWORD done = 0;
    EXPECT_NE(ReadFile(file, bytes, 3, &done, nullptr), 0);
    EXPECT_STREQ(bytes, "abc");
    CloseHandle(file);
}

TEST_P(OpenFiles, TheEndIsPutWhereThePlaceIs) {
    const HANDLE file = open(kRead | kWrite, 0, CREATE_NEW);
    write(file, "abcdef");
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, FILE_BEGIN), 2u);
    EXPECT_NE(SetEndOfFile(file), 0);
    EXPECT_EQ(GetFileSize(file, nullptr), 2u);
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, FILE_CURRENT), 4u);
    EXPECT_NE(SetEndOfFile(file), 0);
    EXPECT_EQ(GetFileSize(file, nullptr), 4u);
    EXPECT_EQ(SetFilePointer(file, 1, nullptr, FILE_END), 5u);
    write(file, "x");
    CloseHandle(file);
    EXPECT_EQ(readWholeFile(path()), std::string("ab\0\0\0x", 6));
}

TEST_P(OpenFiles, APlaceBeyondFourGigabytesIsToldInTwoHalves) {
    const HANDLE file = open(kRead | kWrite, 0, CREATE_NEW);
    write(file, "abcdef");
    LONG high = 2;
    EXPECT_EQ(SetFilePointer(file, 5, &high, FILE_BEGIN), 5u);
    EXPECT_EQ(high, 2);
    high = 0;
    EXPECT_EQ(SetFilePointer(file, 7, &high, FILE_CURRENT), 12u);
    EXPECT_EQ(high, 2);
    high = -1;
    EXPECT_EQ(SetFilePointer(file, -2, &high, FILE_END), 4u);
    EXPECT_EQ(high, 0);
    DWORD sizeHigh = 9;
    EXPECT_EQ(GetFileSize(file, &sizeHigh), 6u);
    EXPECT_EQ(sizeHigh, 0u);
    CloseHandle(file);
}

TEST_P(OpenFiles, WhatIsReadMovesThePlace) {
    writeWholeFile(path(), "abcdef");
    const HANDLE file = open(kRead, FILE_SHARE_READ);
    std::array<char, 4> buffer{};
    DWORD done = 0;
    EXPECT_NE(ReadFile(file, buffer.data(), 4, &done, nullptr), 0);
    EXPECT_EQ(std::string(buffer.data(), done), "abcd");
    EXPECT_NE(ReadFile(file, buffer.data(), 4, &done, nullptr), 0);
    EXPECT_EQ(std::string(buffer.data(), done), "ef");
    EXPECT_NE(ReadFile(file, buffer.data(), 4, &done, nullptr), 0);
    EXPECT_EQ(done, 0u);
    CloseHandle(file);
}

TEST_P(OpenFiles, TheTimeOfTheLastWriteIsTheOneThatIsSet) {
    writeWholeFile(path(), "x");
    const SYSTEMTIME wanted{2003, 5, 0, 6, 7, 8, 9, 250};
    FILETIME time{};
    ASSERT_NE(SystemTimeToFileTime(&wanted, &time), 0);
    const HANDLE file = open(kRead | kWrite, 0);
    EXPECT_NE(SetFileTime(file, nullptr, nullptr, &time), 0);
    FILETIME told{};
    EXPECT_NE(GetFileTime(file, nullptr, nullptr, &told), 0);
    EXPECT_EQ(told.dwLowDateTime, time.dwLowDateTime);
    EXPECT_EQ(told.dwHighDateTime, time.dwHighDateTime);
    EXPECT_NE(SetFileTime(file, nullptr, nullptr, nullptr), 0);
    CloseHandle(file);
    WIN32_FIND_DATAA data{};
    FindClose(FindFirstFileA(path().c_str(), &data));
    EXPECT_EQ(data.ftLastWriteTime.dwLowDateTime, time.dwLowDateTime);
    EXPECT_EQ(data.ftLastWriteTime.dwHighDateTime, time.dwHighDateTime);
    EXPECT_EQ(data.nFileSizeLow, 1u);
    EXPECT_EQ(data.nFileSizeHigh, 0u);
}

TEST_P(OpenFiles, TimesThatDoNotExistAreNone) {
    FILETIME ticks{0, 0x80000000u};
    SYSTEMTIME time{};
    EXPECT_EQ(errorOf(FileTimeToSystemTime(&ticks, &time)), 87u);
    for (const SYSTEMTIME& wrong :
         {SYSTEMTIME{2003, 4, 0, 31, 0, 0, 0, 0}, SYSTEMTIME{2003, 13, 0, 1, 0, 0, 0, 0},
          SYSTEMTIME{2003, 1, 0, 1, 24, 0, 0, 0}, SYSTEMTIME{2003, 1, 0, 1, 0, 60, 0, 0},
          SYSTEMTIME{2003, 1, 0, 1, 0, 0, 60, 0}, SYSTEMTIME{2003, 1, 0, 1, 0, 0, 0, 1000}})
        EXPECT_EQ(SystemTimeToFileTime(&wrong, &ticks), 0) << wrong.wMonth << ' ' << wrong.wSecond;
    const SYSTEMTIME last{2004, 2, 0, 29, 23, 59, 59, 999};
    ASSERT_NE(SystemTimeToFileTime(&last, &ticks), 0);
    ASSERT_NE(FileTimeToSystemTime(&ticks, &time), 0);
    EXPECT_EQ(time.wDay, 29);
    EXPECT_EQ(time.wDayOfWeek, 0);  // a Sunday
    EXPECT_EQ(time.wHour, 23);
    EXPECT_EQ(time.wMilliseconds, 999);
}

TEST_P(OpenFiles, AClosedHandleIsNoneForAnyFunction) {
    writeWholeFile(path(), "x");
    const HANDLE file = open(kRead | kWrite, 0);
    ASSERT_NE(CloseHandle(file), 0);
    char byte = 0;
    DWORD done = 7;
    FILETIME time{};
    EXPECT_EQ(errorOf(CloseHandle(file)), 6u);
    EXPECT_EQ(errorOf(ReadFile(file, &byte, 1, &done, nullptr)), 6u);
    EXPECT_EQ(done, 0u);
    done = 7;
    EXPECT_EQ(errorOf(WriteFile(file, &byte, 1, &done, nullptr)), 6u);
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(errorOf(SetFilePointer(file, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER), 6u);
    EXPECT_EQ(errorOf(GetFileSize(file, nullptr), INVALID_FILE_SIZE), 6u);
    EXPECT_EQ(errorOf(SetEndOfFile(file)), 6u);
    EXPECT_EQ(errorOf(GetFileTime(file, nullptr, nullptr, &time)), 6u);
    EXPECT_EQ(errorOf(SetFileTime(file, nullptr, nullptr, &time)), 6u);
}

TEST_P(OpenFiles, OpenFileTellsThePathAndOpensAsItsStyleSays) {
    OFSTRUCT opened{};
    const auto handleOf = [](HFILE number) {
        return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(number));
    };
    HFILE file = OpenFile(path().c_str(), &opened, OF_CREATE | 2);
    ASSERT_NE(file, HFILE_ERROR);
    write(handleOf(file), "neu");
    CloseHandle(handleOf(file));
    EXPECT_EQ(readWholeFile(path()), "neu");
    EXPECT_EQ(opened.nErrCode, 0);
    EXPECT_EQ(opened.cBytes, sizeof opened);
    EXPECT_STRCASEEQ(opened.szPathName, path().c_str());
    DWORD done = 0;
    file = OpenFile(path().c_str(), &opened, OF_READ);
    EXPECT_EQ(errorOf(WriteFile(handleOf(file), "x", 1, &done, nullptr)), 5u);
    CloseHandle(handleOf(file));
    file = OpenFile(path().c_str(), &opened, 1);
    char byte = 0;
    EXPECT_EQ(errorOf(ReadFile(handleOf(file), &byte, 1, &done, nullptr)), 5u);
    CloseHandle(handleOf(file));
    EXPECT_NE(OpenFile(path().c_str(), &opened, OF_EXIST), HFILE_ERROR);
    EXPECT_NE(DeleteFileA(path().c_str()), 0) << "nothing holds it";
    EXPECT_EQ(OpenFile(path().c_str(), &opened, OF_EXIST), HFILE_ERROR);
    EXPECT_EQ(opened.nErrCode, 2);
}

}  // namespace
}  // namespace bromvale::testing

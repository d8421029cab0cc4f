// Where the offline machine follows Windows and other providers may not: each case is what Windows answers.
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/offline/machine.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using RegistryOfBothFamilies = TestMachine;

// Windows orders by upper-cased names, so the underscore stands behind all letters; by lower-cased ones it
// would stand before them.
TEST_F(RegistryOfBothFamilies, SubKeysAreOrderedByTheirUpperCasedNames) {
    for (const char* name : {"A_B", "AB", "aa", "Az"})
        makeKey(HKEY_LOCAL_MACHINE, std::string("Software\\") + name);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software", 0, KEY_READ, &key), 0);
    std::vector<std::string> names;
    char name[256];
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == 0; ++i) names.emplace_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"aa", "AB", "Az", "A_B"}));
    RegCloseKey(key);
}

TEST_F(RegistryOfBothFamilies, DeletingAKeyTakesItsSubKeysAlongOn9x) {
    offline::machine().setOs(*offline::osByName("Windows 98"));
    makeKey(HKEY_LOCAL_MACHINE, "Software\\A\\B\\C");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\A", 0, 0x20000, &key), 0);
    EXPECT_EQ(RegDeleteKeyA(key, ""), 0);
    EXPECT_EQ(RegCloseKey(key), 0);
    EXPECT_FALSE(keyExists(HKEY_LOCAL_MACHINE, "Software\\A"));
    EXPECT_TRUE(keyExists(HKEY_LOCAL_MACHINE, "Software"));
}

TEST_F(RegistryOfBothFamilies, ANameNeedsRoomForItsNul) {
    makeKey(HKEY_LOCAL_MACHINE, "Software\\Fuenf");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software", 0, KEY_READ, &key), 0);
    char name[16];
    EXPECT_EQ(RegEnumKeyA(key, 0, name, 5), 234);
    EXPECT_EQ(RegEnumKeyA(key, 0, name, 6), 0);
    RegCloseKey(key);
}

TEST_F(RegistryOfBothFamilies, ValuesEnumerateInTheOrderOfTheirCreation) {
    for (const char* name : {"Zeder", "", "ahorn", "Buche"})
        setString(HKEY_LOCAL_MACHINE, "Software", name, "x");
    setString(HKEY_LOCAL_MACHINE, "Software", "ZEDER", "neu");
    EXPECT_EQ(valueNames(HKEY_LOCAL_MACHINE, "Software"),
              (std::vector<std::string>{"Zeder", "", "ahorn", "Buche"}));
}

class FilesOfWindows : public TestMachine {
  protected:
    static DWORD findError(const std::string& path) {
        WIN32_FIND_DATAA data{};
        return FindFirstFileA(path.c_str(), &data) == INVALID_HANDLE_VALUE ? GetLastError() : 0;
    }
    static DWORD openError(const std::string& path, DWORD access) {
        const HANDLE file = CreateFileA(path.c_str(), access, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return GetLastError();
        CloseHandle(file);
        return 0;
    }
};

TEST_F(FilesOfWindows, SharesAreFoundAndTheirServersMissed) {
    auto& drives = offline::machine().drives;
    drives.addShare("Server", "frei");
    ASSERT_TRUE(drives.writeFile("\\\\server\\FREI\\Ordner\\a.txt", "x"));
    EXPECT_EQ(findError("\\\\SERVER\\frei\\ordner\\A.TXT"), 0u);
    EXPECT_EQ(findError("\\\\server\\frei\\ordner\\b.txt"), 2u);
    EXPECT_EQ(findError("\\\\server\\zu\\a.txt"), 67u);
    EXPECT_EQ(findError("\\\\niemand\\frei\\a.txt"), 53u);
    EXPECT_EQ(findError("\\\\server"), 161u);
}

TEST_F(FilesOfWindows, ForbiddenCharactersGive123) {
    EXPECT_EQ(findError(folder() + "a|b"), 123u);
    EXPECT_EQ(findError(folder() + "a:b:c"), 123u);
}

TEST_F(FilesOfWindows, AMissingDriveIsAMissingPath) {
    EXPECT_EQ(openError("Q:\\a", GENERIC_READ), 3u);
    EXPECT_EQ(findError("Q:\\a"), 3u);
}

TEST_F(FilesOfWindows, AReadOnlyFileIsNotOpenedForWriting) {
    writeWholeFile(folder() + "a", "x");
    ASSERT_NE(SetFileAttributesA((folder() + "a").c_str(), FILE_ATTRIBUTE_READONLY), 0);
    EXPECT_EQ(openError(folder() + "a", GENERIC_WRITE), 5u);
    EXPECT_EQ(openError(folder() + "a", GENERIC_READ), 0u);
}

TEST_F(FilesOfWindows, AReadOnlyFileIsNotEmptied) {
    const std::string path = folder() + "a";
    writeWholeFile(path, "x");
    ASSERT_NE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY), 0);
    for (const DWORD disposition : {DWORD{CREATE_ALWAYS}, DWORD{TRUNCATE_EXISTING}}) {
        SetLastError(0);
        EXPECT_EQ(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, disposition, 0, nullptr),
                  INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastError(), 5u);
    }
    EXPECT_EQ(readWholeFile(path), "x");
    EXPECT_EQ(CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, 77, 0, nullptr), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), 87u);
}

TEST_F(FilesOfWindows, MasksKeepTheirMeaningFromDos) {
    struct Row {
        const char* mask;
        const char* name;
        bool matches;
    };
    const Row rows[] = {
        {"*.", "ohne", true},         {"*.", "a.txt", false},
        {"a?.txt", "a.txt", true},    {"a?.txt", "ab.txt", true},
        {"a?.txt", "abc.txt", false}, {"?", "a", true},
        {"?", "ab", false},           {"??", "a", true},
        {"*.t?", "a.t", true},        {"*.tx", "a.txt", false},
        {"a.*", "a", true},           {"*a*", "A", true},
        {"*.*", "ohne", true},        {"*.tar", "x.tar.gz", false},
        {"ü*", "ÜBER", true},         {"*", "", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(offline::matchesMask(offline::storedFromAnsi(row.mask), offline::storedFromAnsi(row.name)),
                  row.matches)
            << row.mask << " " << row.name;
}

TEST_F(FilesOfWindows, SearchesThatNobodyClosesAreCounted) {
    writeWholeFile(folder() + "a", "x");
    const std::size_t before = offline::machine().searches.count();
    EXPECT_EQ(findError(folder() + "a"), 0u);
    EXPECT_EQ(findError(folder() + "a"), 0u);
    EXPECT_EQ(findError(folder() + "b"), 2u);
    EXPECT_EQ(offline::machine().searches.count(), before + 2);
}

TEST_F(FilesOfWindows, ADayThatDoesNotExistFails) {
    const SYSTEMTIME time{2025, 2, 0, 29, 0, 0, 0, 0};
    char buffer[32];
    EXPECT_EQ(GetDateFormatA(LOCALE_USER_DEFAULT, 0, &time, "dd", buffer, sizeof buffer), 0);
    EXPECT_EQ(GetLastError(), 87u);
}

TEST_F(FilesOfWindows, TheComputersNameComesWithoutItsNul) {
    offline::machine().computer = "RECHNER";
    char buffer[32];
    DWORD size = 7;
    EXPECT_EQ(GetComputerNameA(buffer, &size), 0);
    size = 8;
    EXPECT_NE(GetComputerNameA(buffer, &size), 0);
    EXPECT_STREQ(buffer, "RECHNER");
    EXPECT_EQ(size, 7u);
}

}  // namespace
}  // namespace bromvale::testing

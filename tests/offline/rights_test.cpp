// The offline machine of a user without rights, and folders that take no files.
#include "platform/rights.h"

#include "platform/files.h"
#include "platform/offline/machine.h"
#include "platform/shell.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::machine;
using offline::Rights;

class UserOfVista : public TestMachine {
  protected:
    UserOfVista() {
        for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
            setString(hive, "Software\\Probe", "", "x");
        machine().setOs({2, 6, 0, 6002});
        machine().rights.token = Rights::Token::Standard;
    }
    static LONG opens(HKEY hive, REGSAM access) {
        HKEY key = nullptr;
        const LONG result = RegOpenKeyExA(hive, "Software\\Probe", 0, access, &key);
        if (result == 0) RegCloseKey(key);
        return result;
    }
};

TEST_F(UserOfVista, TheMachinesKeysAreReadOnly) {
    EXPECT_EQ(opens(HKEY_LOCAL_MACHINE, KEY_READ), ERROR_SUCCESS);
    EXPECT_EQ(opens(HKEY_LOCAL_MACHINE, READ_CONTROL), ERROR_SUCCESS);
    for (const REGSAM access :
         {KEY_WRITE, KEY_ALL_ACCESS, KEY_SET_VALUE, REGSAM{DELETE}, REGSAM{GENERIC_WRITE}})
        EXPECT_EQ(opens(HKEY_LOCAL_MACHINE, access), ERROR_ACCESS_DENIED) << access;
    EXPECT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\Probe"), ERROR_ACCESS_DENIED);
    HKEY key = nullptr;
    EXPECT_EQ(
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software\\Neu", 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
        ERROR_ACCESS_DENIED);
    // As much as is allowed.
    ASSERT_EQ(RegOpenKeyA(HKEY_LOCAL_MACHINE, "Software\\Probe", &key), ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExA(key, "a", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2),
              ERROR_ACCESS_DENIED);
    RegCloseKey(key);
    EXPECT_EQ(stringValue(HKEY_LOCAL_MACHINE, "Software\\Probe", ""), "x");
}

TEST_F(UserOfVista, TheUsersOwnKeysAreOpen) {
    EXPECT_EQ(opens(HKEY_CURRENT_USER, KEY_ALL_ACCESS), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Probe"), ERROR_SUCCESS);
}

TEST_F(UserOfVista, BeforeVistaTheSameUserMayDoEverything) {
    machine().setOs({2, 5, 1, 2600});
    EXPECT_FALSE(lacksMachineRights());
    EXPECT_EQ(opens(HKEY_LOCAL_MACHINE, KEY_ALL_ACCESS), ERROR_SUCCESS);
}

TEST_F(UserOfVista, OnlyALimitedTokenCouldHaveMoreRights) {
    EXPECT_FALSE(couldHaveMoreRights());
    machine().rights.token = Rights::Token::Limited;
    EXPECT_TRUE(couldHaveMoreRights());
    EXPECT_TRUE(lacksMachineRights());
}

class ProtectedFolder : public TestMachine {
  protected:
    ProtectedFolder() {
        machine().drives.writeFile("C:\\Zu\\unten\\a.txt", "a");
        machine().drives.writeFile("C:\\Zuletzt\\a.txt", "a");
        machine().drives.protect("C:\\zu");
    }
    static DWORD opening(const char* path, DWORD access, DWORD disposition) {
        const HANDLE file =
            CreateFileA(path, access, 0, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) return GetLastError();
        CloseHandle(file);
        return 0;
    }
};

TEST_F(ProtectedFolder, NothingIsMadeWrittenOrDeletedInThereAndAllIsRead) {
    EXPECT_FALSE(takesFiles("C:\\Zu\\"));
    EXPECT_FALSE(takesFiles("C:\\Zu\\unten\\"));
    EXPECT_EQ(opening("C:\\Zu\\neu.txt", GENERIC_WRITE, CREATE_ALWAYS), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(opening("C:\\Zu\\unten\\a.txt", GENERIC_WRITE, OPEN_EXISTING), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(opening("C:\\Zu\\unten\\a.txt", GENERIC_READ, OPEN_EXISTING), 0u);
    EXPECT_EQ(opening("C:\\Zu\\fehlt.txt", GENERIC_READ, OPEN_EXISTING), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(CreateDirectoryA("C:\\Zu\\neu", nullptr), FALSE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(DeleteFileA("C:\\Zu\\unten\\a.txt"), FALSE);
    EXPECT_EQ(MoveFileA("C:\\Zu\\unten\\a.txt", "C:\\a.txt"), FALSE);
    EXPECT_EQ(MoveFileA("C:\\Zuletzt\\a.txt", "C:\\Zu\\b.txt"), FALSE);
    EXPECT_EQ(readWholeFile("C:\\Zu\\unten\\a.txt"), "a");
}

TEST_F(ProtectedFolder, TryingLeavesNothingBehind) {
    EXPECT_TRUE(takesFiles("C:\\Zuletzt\\"));
    EXPECT_EQ(filesIn("C:\\Zuletzt\\", "*"), std::vector<std::string>{"a.txt"});
    EXPECT_FALSE(takesFiles("C:\\Fehlt\\"));
    machine().drives.makeFolder("C:\\Zuletzt\\bromvale.tmp");
    EXPECT_FALSE(takesFiles("C:\\Zuletzt\\")) << "a folder has the name of the file that is tried";
}

TEST_F(ProtectedFolder, ItsNeighboursAreOpen) {
    EXPECT_TRUE(takesFiles("C:\\Zuletzt\\"));
    EXPECT_TRUE(takesFiles("C:\\"));
    EXPECT_NE(DeleteFileA("C:\\Zuletzt\\a.txt"), FALSE);
}

}  // namespace
}  // namespace bromvale::testing

// What the offline machine's shell answers and records: deletions, starts, the folder dialog, the tray.
#include "platform/shell.h"

#include "platform/files.h"
#include "platform/offline/machine.h"
#include "platform/registry.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::Event;
using offline::EventKind;
using offline::machine;
using Names = std::vector<std::string>;

class ShellTest : public TestMachine {
  protected:
    // Of any number of names; the answer of the shell.
    static int erase(const Names& paths, FILEOP_FLAGS flags = 0, UINT function = FO_DELETE) {
        std::string list;
        for (const std::string& path : paths) list += path + '\0';
        SHFILEOPSTRUCTA operation{};
        operation.wFunc = function;
        operation.pFrom = list.c_str();
        operation.fFlags = flags;
        operation.fAnyOperationsAborted = TRUE;
        const int answer = SHFileOperationA(&operation);
        EXPECT_EQ(operation.fAnyOperationsAborted, FALSE);
        return answer;
    }
    Names names() { return filesIn(folder(), "*"); }
    static std::intptr_t open(const std::string& file, const char* verb = "open") {
        return reinterpret_cast<std::intptr_t>(
            ShellExecuteA(nullptr, verb, file.c_str(), nullptr, nullptr, SW_SHOWMAXIMIZED));
    }
};

TEST_F(ShellTest, SeveralNamesAreDeletedAndTheLastErrorIsTold) {
    for (const char* name : {"a", "b", "c"}) writeWholeFile(folder() + name, "x");
    EXPECT_EQ(erase({folder() + "a", folder() + "fehlt", folder() + "b"}), 2);
    EXPECT_EQ(names(), Names{"c"});
    EXPECT_EQ(erase({}), 0);
    EXPECT_EQ(names(), Names{"c"});
}

TEST_F(ShellTest, WhatIsNoFileOnADriveIsInvalid) {
    EXPECT_EQ(erase({"C:\\"}), 0x7C);
    EXPECT_EQ(erase({"Q:\\a"}), 0x7C);
    EXPECT_EQ(erase({"C:\\Programme\\<"}), 0x7C);
}

TEST_F(ShellTest, AnotherOperationOrNoListIsRefused) {
    writeWholeFile(folder() + "a", "x");
    EXPECT_EQ(erase({folder() + "a"}, 0, FO_DELETE - 1), 87);
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    EXPECT_EQ(SHFileOperationA(&operation), 87);
    EXPECT_EQ(names(), Names{"a"});
}

TEST_F(ShellTest, TheWindowsAreServedWhileItWorks) {
    writeWholeFile(folder() + "a", "x");
    const std::string list = folder() + "a" + '\0';
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = list.c_str();
    const auto before = machine().pump.windowServings();
    EXPECT_EQ(SHFileOperationServing(operation), 0);
    EXPECT_EQ(machine().pump.windowServings(), before + 1);
    EXPECT_EQ(names(), Names{});
}

TEST_F(ShellTest, AMaskTakesFoldersToo) {
    makeFolderOnDisk(folder() + "a.dir");
    writeWholeFile(folder() + "a.dir\\x", "x");
    writeWholeFile(folder() + "a.txt", "x");
    writeWholeFile(folder() + "b.txt", "x");
    EXPECT_EQ(erase({folder() + "a.*"}, FOF_FILESONLY), 0);
    EXPECT_EQ(names(), (Names{"a.dir", "b.txt"}));
    EXPECT_EQ(erase({folder() + "A.D*"}), 0);
    EXPECT_EQ(names(), Names{"b.txt"});
    EXPECT_EQ(erase({"Q:\\*"}), 2);
}

TEST_F(ShellTest, AMaskWithoutAFolderIsOfTheCurrentOne) {
    SetCurrentDirectoryA(folder().c_str());
    writeWholeFile(folder() + "a.tmp", "x");
    EXPECT_EQ(erase({"*.tmp"}), 0);
    EXPECT_EQ(names(), Names{});
}

TEST_F(ShellTest, WhatIsProtectedStays) {
    makeFolderOnDisk(folder() + "Fest");
    writeWholeFile(folder() + "Fest\\a", "x");
    machine().drives.protect(folder() + "Fest");
    for (const FILEOP_FLAGS flags : {FILEOP_FLAGS{0}, FILEOP_FLAGS{FOF_ALLOWUNDO}})
        EXPECT_EQ(erase({folder() + "Fest\\a"}, flags), static_cast<int>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(readWholeFile(folder() + "Fest\\a"), "x");
}

TEST_F(ShellTest, AShareHasNoRecycleBin) {
    machine().drives.addShare("server", "freigabe");
    writeWholeFile(std::string("\\\\server\\freigabe\\a"), "x");
    EXPECT_EQ(erase({"\\\\server\\freigabe\\a"}, FOF_ALLOWUNDO), 0);
    EXPECT_EQ(readWholeFile("\\\\server\\freigabe\\a"), "<missing>");
    EXPECT_TRUE(machine().drives.recycled.empty());
}

TEST_F(ShellTest, DeletionsAreRecordedByTheirKindAndWhereTheyLead) {
    makeFolderOnDisk(folder() + "Ordner");
    for (const char* name : {"a", "b"}) writeWholeFile(folder() + name, "x");
    machine().events.clear();
    erase({folder() + "a"}, FOF_ALLOWUNDO);
    erase({folder() + "b", folder() + "ordner"});
    const auto& all = machine().events.all();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].kind, EventKind::FileDeleted);
    EXPECT_EQ(all[0].text, folder() + "a");
    EXPECT_EQ(all[0].caption, "Papierkorb");
    EXPECT_EQ(all[1].kind, EventKind::FileDeleted);
    EXPECT_EQ(all[1].caption, "");
    EXPECT_EQ(all[2].kind, EventKind::FolderDeleted);
    EXPECT_EQ(all[2].text, folder() + "ordner");
}

TEST_F(ShellTest, AStartIsRecordedWithItsAnswer) {
    writeWholeFile(folder() + "a.txt", "x");
    EXPECT_EQ(open(folder() + "a.txt"), 42);
    EXPECT_EQ(open(folder() + "b.txt"), SE_ERR_FNF);
    EXPECT_EQ(open("http://rechner/b.txt"), 42);
    machine().faults.fail("ShellExecuteA", 1, SE_ERR_NOASSOC);
    EXPECT_EQ(open(folder() + "a.txt"), SE_ERR_NOASSOC);
    const std::vector<Event> starts = machine().events.of(EventKind::ShellExecute);
    ASSERT_EQ(starts.size(), 4u);
    EXPECT_EQ(starts[0].text, folder() + "a.txt");
    EXPECT_EQ(starts[0].caption, "open");
    EXPECT_EQ(starts[0].number, static_cast<unsigned>(SW_SHOWMAXIMIZED));
    EXPECT_EQ(starts[0].answer, 42);
    EXPECT_EQ(starts[1].answer, SE_ERR_FNF);
    EXPECT_EQ(starts[3].answer, SE_ERR_NOASSOC);
}

TEST_F(ShellTest, OnlyARegistryFileThatWasOpenedIsEntered) {
    const auto entered = [this](const char* name, const char* verb, long fault) {
        writeWholeFile(folder() + name, "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Neu]\r\n\"a\"=\"b\"\r\n");
        if (fault != 0) machine().faults.fail("ShellExecuteA", 1, fault);
        open(folder() + name, verb);
        const bool there = keyExists(HKEY_CURRENT_USER, "Neu");
        RegDeleteKeyA(HKEY_CURRENT_USER, "Neu");
        return there;
    };
    EXPECT_TRUE(entered("a.reg", "open", 0));
    EXPECT_TRUE(entered("b.REG", "Open", 33));
    EXPECT_TRUE(entered("x.reg", "open", 0));
    EXPECT_FALSE(entered("a.reg", "open", 32));
    EXPECT_FALSE(entered("a.reg", "print", 0));
    EXPECT_FALSE(entered("a.txt", "open", 0));
    EXPECT_FALSE(entered("areg", "open", 0));
}

TEST_F(ShellTest, TheFolderDialogGivesItsChoicesInTurnAndThenNone) {
    BROWSEINFOA info{};
    info.lpszTitle = "Wohin?";
    info.ulFlags = 7;
    machine().folders = {offline::WideText("C:\\eins"), offline::WideText("C:\\zwei")};
    char path[MAX_PATH];
    for (const char* wanted : {"C:\\eins", "C:\\zwei"}) {
        const auto list = SHBrowseForFolderA(&info);
        ASSERT_NE(list, nullptr);
        EXPECT_NE(SHGetPathFromIDListA(list, path), 0);
        EXPECT_STREQ(path, wanted);
        CoTaskMemFree(list);
    }
    EXPECT_EQ(machine().lastRequests.folderDialog.ulFlags, 7u);
    EXPECT_EQ(SHBrowseForFolderA(&info), nullptr);
    EXPECT_EQ(SHGetPathFromIDListA(nullptr, path), 0);
    const std::vector<Event> asked = machine().events.of(EventKind::Browse);
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[1].text, "Wohin?");
    EXPECT_EQ(asked[1].caption, "C:\\zwei");
    EXPECT_EQ(asked[1].answer, 1);
    EXPECT_EQ(asked[2].caption, "");
    EXPECT_EQ(asked[2].answer, 0);
}

TEST_F(ShellTest, APathThatDoesNotFitIsNoAnswer) {
    const auto chosen = [](std::size_t length) {
        machine().folders = {offline::WideText("C:\\" + std::string(length - 3, 'x'))};
        BROWSEINFOA info{};
        const auto list = SHBrowseForFolderA(&info);
        char path[MAX_PATH];
        const BOOL fits = SHGetPathFromIDListA(list, path);
        CoTaskMemFree(list);
        return fits != 0;
    };
    EXPECT_TRUE(chosen(MAX_PATH - 1));
    EXPECT_FALSE(chosen(MAX_PATH));
}

TEST_F(ShellTest, TheTraysThreeMessagesAreRecordedAndNoOther) {
    NOTIFYICONDATAA record{};
    record.uCallbackMessage = 513;
    std::string(sizeof record.szTip, 'x').copy(record.szTip, sizeof record.szTip);  // without a NUL
    record.uID = 9;
    for (const DWORD message : {DWORD{NIM_ADD}, DWORD{NIM_ADD + 1}, DWORD{NIM_DELETE}})
        EXPECT_NE(Shell_NotifyIconA(message, &record), 0);
    EXPECT_EQ(Shell_NotifyIconA(NIM_DELETE + 1, &record), 0);
    EXPECT_EQ(machine().lastRequests.trayIcon.uID, 9u);
    const auto& all = machine().events.all();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].kind, EventKind::TrayAdd);
    EXPECT_EQ(all[1].kind, EventKind::TrayModify);
    EXPECT_EQ(all[2].kind, EventKind::TrayDelete);
    EXPECT_EQ(all[1].text, std::string(sizeof record.szTip, 'x'));
    EXPECT_EQ(all[1].number, 513u);
}

TEST_F(ShellTest, MissingTextsAreEmptyOnes) {
    BROWSEINFOA info{};
    EXPECT_EQ(SHBrowseForFolderA(&info), nullptr);
    ShellExecuteA(nullptr, nullptr, "http://a", nullptr, nullptr, 1);
    EXPECT_EQ(machine().events.of(EventKind::Browse)[0].text, "");
    EXPECT_EQ(machine().events.of(EventKind::ShellExecute)[0].caption, "");
    EXPECT_EQ(machine().lastRequests.switches, "");
}

}  // namespace
}  // namespace bromvale::testing

// Emptying on the real shell: what its recycle bin holds afterwards, links, and its folder dialog.
#include "cleanup/browse_for_folder.h"
#include "platform/folder_dialog.h"
#include "tests/cleanup/cleanup_fixture.h"
#include "tests/cleanup/host_links_win32.h"

namespace bromvale::testing {
namespace {

// Names that no other test has thrown away.
std::string own(const std::string& name) {
    return std::to_string(GetCurrentProcessId()) + "-" + name;
}

using RealShell = CleanupTest;

TEST_F(RealShell, TheBinHoldsTheFilesAndTheSubFolderWithItsContent) {
    ASSERT_FALSE(hostBin().empty()) << "the place of the recycle bin isn't known here";
    std::string path = makeBin("Leeren");
    const std::string file = own("eins.txt");
    const std::string sub = own("voll");
    writeWholeFile(path + file, "eins");
    makeFolderOnDisk(path + sub);
    writeWholeFile(path + sub + "\\drei.txt", "drei");
    FileDel(path, "");
    EXPECT_EQ(filesIn(path, "*"), Texts{});
    EXPECT_TRUE(exists(path));
    EXPECT_EQ(readWholeFile(hostBin() + file), "eins");
    EXPECT_EQ(readWholeFile(hostBin() + sub + "\\drei.txt"), "drei");
}

TEST_F(RealShell, AnUndoFileReachesTheBinThoughFilesAreDeletedForGood) {
    ASSERT_FALSE(hostBin().empty()) << "the place of the recycle bin isn't known here";
    DelFilePermanent = 1;
    makeFolderOnDisk(BackupPath);
    const std::string name = own("Rueckgaengig.reg");
    writeWholeFile(BackupPath + name, "REGEDIT4");
    FileDel(BackupPath, name);
    EXPECT_FALSE(exists(BackupPath + name));
    EXPECT_EQ(readWholeFile(hostBin() + name), "REGEDIT4");
}

TEST_F(RealShell, ForGoodNothingReachesTheBin) {
    DelFilePermanent = 1;
    std::string path = makeBin("Leeren");
    const std::string file = own("weg.txt");
    writeWholeFile(path + file, "weg");
    FileDel(path, "");
    EXPECT_FALSE(exists(path + file));
    EXPECT_FALSE(exists(hostBin() + file));
}

// Where the system reaches what a link points to under the link's name, the link stays, too.
TEST_F(RealShell, WhatLinksPointToStaysWhateverTheSettingAndTheOtherEntriesGo) {
    for (const std::int16_t permanent : {std::int16_t{0}, std::int16_t{1}}) {
        DelFilePermanent = permanent;
        const std::string number = std::to_string(permanent);
        const std::string target = makeBin("Ziel" + number);
        writeWholeFile(target + "bleibt.txt", "bleibt");
        makeFolderOnDisk(target + "leer");
        makeFolderOnDisk(target + "tief");
        writeWholeFile(target + "tief\\bleibt.txt", "auch");
        std::string path = makeBin("Leeren" + number);
        const std::string sub = path + "unten";
        makeFolderOnDisk(sub);
        writeWholeFile(sub + "\\datei.txt", "x");
        ASSERT_TRUE(makeLink(target + "tief", path + "a-Ordner")) << "no links can be made here";
        EXPECT_TRUE(makeLink(target + "bleibt.txt", path + "b-Datei"));
        EXPECT_TRUE(makeLink(target + "leer", path + "c-leer"));
        EXPECT_TRUE(makeLink(target + "tief", sub + "\\Verweis"));
        EXPECT_TRUE(makeLink(target + "bleibt.txt", sub + "\\Verweis2"));
        writeWholeFile(path + own("d.txt"), "x");
        makeFolderOnDisk(path + own("e"));
        FileDel(path, "");
        EXPECT_FALSE(exists(path + own("d.txt"))) << permanent;
        EXPECT_FALSE(exists(path + own("e"))) << permanent;
        EXPECT_EQ(readWholeFile(target + "bleibt.txt"), "bleibt") << permanent;
        EXPECT_EQ(readWholeFile(target + "tief\\bleibt.txt"), "auch") << permanent;
        EXPECT_TRUE(exists(target + "leer")) << permanent;
        for (const char* name : {"a-Ordner", "b-Datei", "c-leer"}) removeLink(path, name);
        for (const char* name : {"Verweis", "Verweis2"}) removeLink(sub, name);
    }
}

TEST_F(RealShell, AFolderOfTheListThatIsALinkIsEmptied) {
    const std::string target = makeBin("Echt");
    writeWholeFile(target + own("a.txt"), "x");
    std::string path = folder() + "Verweis";
    ASSERT_TRUE(makeLink(target, path)) << "no links can be made here";
    FileDel(path, "");
    EXPECT_EQ(filesIn(target, "*"), Texts{});
    removeLink(folder(), "Verweis");
}

// --- the folder dialog ---

std::wstring wide(const std::string& text) {
    wchar_t result[MAX_PATH] = L"";
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, result, MAX_PATH);
    return result;
}

std::wstring chosenFolder;
std::string dialogText;
HWND dialogOwner = nullptr;
bool cancels = false;

std::string textOf(HWND window) {
    char text[512] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

BOOL CALLBACK findTitle(HWND child, LPARAM) {
    const std::string text = textOf(child);
    if (text.find("Ordner") != std::string::npos) dialogText = text;
    return TRUE;
}

// The user's side: chooses a folder as soon as the dialog stands, or cancels it.
LRESULT CALLBACK answerDialog(int code, WPARAM wParam, LPARAM lParam) {
    const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    const bool box = GetDlgItem(message.hwnd, 0xFFFF) != nullptr;  // a message box's text
    if (code == HC_ACTION && message.message == WM_INITDIALOG && !box) {
        EnumChildWindows(message.hwnd, findTitle, 0);
        dialogOwner = GetWindow(message.hwnd, GW_OWNER);
        if (!cancels) {
            PostMessageA(message.hwnd, BFFM_SETSELECTIONW, TRUE,
                         reinterpret_cast<LPARAM>(chosenFolder.c_str()));
        }
        PostMessageA(message.hwnd, WM_COMMAND, cancels ? IDCANCEL : IDOK, 0);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(RealShell, TheFolderDialogGivesThePathOrNothing) {
    makeBin("Wahl");
    form().load();
    ASSERT_NE(form().window(), nullptr);
    chosenFolder = wide(folder() + "Wahl");
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROCRET, answerDialog, nullptr, GetCurrentThreadId());
    cancels = false;
    // Wine opens the levels of its tree in its own time, and a selection may come before its level is there.
    std::string chosen;
    for (int tries = 0; tries < 6 && chosen != folder() + "Wahl"; ++tries)
        chosen = BrowseForFolder(form().window());
    cancels = true;
    const std::string cancelled = BrowseForFolder(form().window());
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(chosen, folder() + "Wahl");
    EXPECT_EQ(cancelled, "");
    EXPECT_EQ(dialogOwner, form().window());
    EXPECT_EQ(dialogText, "Wähle den Ordner, aus den die Dateien gelöscht werden sollen.");
}

TEST_F(RealShell, TheFolderDialogRefusesAFolderBeyondTheCodePageAndSaysSo) {
    makeBin("Foto-Alt");
    chosenFolder = wide(folder()) + L"Foto\u2011Alt";
    ASSERT_TRUE(CreateDirectoryW(chosenFolder.c_str(), nullptr));
    form().load();
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROCRET, answerDialog, nullptr, GetCurrentThreadId());
    cancels = false;
    for (int tries = 0; tries < 6 && boxes().empty(); ++tries)
        EXPECT_NE(BrowseForFolder(form().window()), folder() + "Foto-Alt");
    UnhookWindowsHookEx(hook);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Der Ordner " + folder() +
                                   "Foto-Alt kann nicht in die Liste aufgenommen werden.\r\nDer Pfad enthält "
                                   "Zeichen, die dieses Programm nicht genau wiedergeben kann.");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
}

}  // namespace
}  // namespace bromvale::testing

// The list of folders to be emptied, as the main window's page shows it.
#include "core/text_file.h"
#include "platform/files.h"
#include "tests/support/test_machine.h"
#include "ui/frm_main.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

class FolderListPage : public testing::TestMachine {
  protected:
    FolderListPage() { fillState(); }
    static Lines rows() {
        Lines texts;
        for (int row = 1; row <= frmMain().cleanup.lvwOrdnerList.count(); ++row) {
            texts.push_back(frmMain().cleanup.lvwOrdnerList.item(row).text());
        }
        return texts;
    }
};

TEST_F(FolderListPage, AMissingListIsMadeAndShowsNoRow) {
    EXPECT_EQ(rows(), Lines{});
    EXPECT_EQ(readWholeFile(folder() + "liste.txt"), "");
    EXPECT_EQ(frmMain().cleanup.chbTempFilesDel.value(), 0);
    EXPECT_FALSE(frmMain().cleanup.chbTempFilesDel.enabled());
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(openFileCount(), 0);
}

TEST_F(FolderListPage, EachLineButTheEmptyOnesIsARow) {
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n\r\nD:\\Rest\\\r\n");
    EXPECT_EQ(rows(), (Lines{"C:\\Müll", "D:\\Rest\\"}));
    EXPECT_EQ(frmMain().cleanup.lvwOrdnerList.item(1).smallIcon(), 6);
    EXPECT_TRUE(frmMain().cleanup.chbTempFilesDel.enabled());
}

TEST_F(FolderListPage, ReadingAnewReplacesTheRowsAndSwitchesTheBoxOffWithTheLastOne) {
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n");
    EXPECT_EQ(rows(), Lines{"C:\\Müll"});
    frmMain().cleanup.chbTempFilesDel.setValue(1);
    writeWholeFile(folder() + "liste.txt", "\r\n");
    frmMain().cleanup.Ordnerliste_laden();
    EXPECT_EQ(rows(), Lines{});
    EXPECT_EQ(frmMain().cleanup.chbTempFilesDel.value(), 0);
    EXPECT_FALSE(frmMain().cleanup.chbTempFilesDel.enabled());
}

TEST_F(FolderListPage, TheListIsSoughtInTheCurrentDirectory) {
    makeFolderOnDisk(folder() + "hier");
    writeWholeFile(folder() + "liste.txt", "C:\\Programmordner\r\n");
    writeWholeFile(folder() + "hier\\liste.txt", "C:\\Hier\r\n");
    SetCurrentDirectoryA((folder() + "hier").c_str());
    EXPECT_EQ(rows(), Lines{"C:\\Hier"});
}

TEST_F(FolderListPage, AnyOtherFailureIsReportedAndEndsTheRoutine) {
    writeWholeFile(folder() + "liste.txt", "C:\\Müll\r\n");
    const HANDLE other = CreateFileA((folder() + "liste.txt").c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(rows(), Lines{});
    CloseHandle(other);
    EXPECT_EQ(logLines(), Lines{"modFiles; Ordnerliste_laden; ; 70; Zugriff verweigert"});
    EXPECT_EQ(readWholeFile(folder() + "liste.txt"), "C:\\Müll\r\n");
}

}  // namespace
}  // namespace bromvale

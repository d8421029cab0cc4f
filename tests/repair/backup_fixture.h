#pragma once
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "repair/backup_area.h"
#include "tests/support/window_test.h"

namespace bromvale::testing {

// The main window on a machine whose backup folder exists and is empty.
class BackupTest : public WindowTest {
  protected:
    BackupTest() { makeFolderOnDisk(BackupPath); }

    static ListView& list() { return form().backup.lvwBackup; }

    // A file of so many bytes in the backup folder, last written at that local time.
    void undoFile(const std::string& name, std::size_t size = 3,
                  const SYSTEMTIME& written = {2026, 11, 0, 15, 7, 12, 9, 0}) {
        writeWholeFile(BackupPath + name, std::string(size, ';'));
        setWritten(BackupPath + name, written);
    }
    static void setWritten(const std::string& path, const SYSTEMTIME& local) {
        FILETIME localTime{};
        FILETIME time{};
        ASSERT_TRUE(SystemTimeToFileTime(&local, &localTime));
        ASSERT_TRUE(LocalFileTimeToFileTime(&localTime, &time));
        const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(file, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
        CloseHandle(file);
    }

    // The page with these files, as the user sees it who opens it.
    void openPage(const Texts& names = {}) {
        for (const std::string& name : names) undoFile(name);
        form().backup.mnuPopUpBackupZeigen_Click();
    }

    static Texts names() { return rowTexts(list()); }
    static Texts selected() {
        Texts result;
        for (int row = 1; row <= list().count(); ++row) {
            if (list().item(row).selected()) result.push_back(list().item(row).text());
        }
        return result;
    }
    static std::string row(int number) {
        const ListItem& item = list().item(number);
        return item.text() + " | " + item.subItem(1) + " | " + item.subItem(2) + " | " +
               std::to_string(item.smallIcon());
    }
    [[nodiscard]] Texts filesLeft() { return filesIn(BackupPath, "*.reg"); }
};

}  // namespace bromvale::testing

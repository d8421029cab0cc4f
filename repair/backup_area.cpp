// The page of the undo files: what the list shows, and how mouse and keyboard work on it.
#include "repair/backup_area.h"

#include <utility>
#include <vector>

#include "base/calendar.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/text_case.h"
#include "core/file_helpers.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/time.h"
#include "platform/events.h"
#include "platform/exact/files.h"
#include "platform/exact/text.h"
#include "platform/machine.h"
#include "ui/backup_page.h"

namespace bromvale {
namespace {

constexpr Routine kRoutine{{"frmMain", "ReadBackupFiles"}};
constexpr int kRegFileIcon = 3;
constexpr int kSizeColumn = 1;
constexpr int kDateColumn = 2;

SYSTEMTIME localTime(const FILETIME& time) {
    FILETIME local{};
    SYSTEMTIME result{};
    FileTimeToLocalFileTime(&time, &local);
    FileTimeToSystemTime(&local, &result);
    return result;
}

// A row per file; what can't be found out about a file leaves its cell as it is, and the next file is listed
// all the same. A name that the code page can't hold is shown by its nearest letters, which may be those of
// another file, so the row keeps the name itself.
void addFile(ListView& list, const std::string& name) {
    ListItem* row = nullptr;
    kRoutine.step([&] { row = &list.add(plainText(name), kRegFileIcon); });
    if (row == nullptr) return;
    if (!isExact(name)) row->setTag(name);
    kRoutine.step([&] {
        FoundEntry found;
        if (findEntry(BackupPath + name, found) != 0) raise(Failure::kFileNotFound);
        row->setSubItem(kSizeColumn, sizeText(static_cast<double>(found.size)));
        row->setSubItem(kDateColumn, dateTimeText(localTime(found.written)));
    });
}

}  // namespace

std::vector<std::string> undoFileNames() {
    constexpr std::string_view kEnding = ".reg";
    std::vector<FoundEntry> entries;
    FindFileAPI(BackupPath, "*.reg", entries);
    std::vector<std::string> names;
    for (FoundEntry& entry : entries) {
        const std::string_view name = entry.name;
        if (entry.isFolder() || name.size() < kEnding.size() ||
            compareWithoutCase(name.substr(name.size() - kEnding.size()), kEnding) != 0)
            continue;
        names.push_back(std::move(entry.name));
    }
    return names;
}

// Cut and not rounded, so that the decimal sign may stand last.
std::string sizeText(double bytes) {
    return Left(numberText(bytes / 1024), 5) + " KB";
}

void BackupPage::ReadBackupFiles() {
    kRoutine.started();
    kRoutine.step([&] { lvwBackup.clear(); });
    kRoutine.step([&] { lvwBackup.setSorted(false); });
    std::vector<std::string> names;
    kRoutine.step([&] { names = undoFileNames(); });
    for (const std::string& name : names) {
        addFile(lvwBackup, name);
        ServeWindows();
    }
    kRoutine.step([&] { lvwBackup.setSorted(true); });
    kRoutine.ended();
}

void BackupPage::mnuPopUpBackupZeigen_Click() {
    show();
    ReadBackupFiles();
    window.setMousePointer(MousePointer::Default);
}

}  // namespace bromvale

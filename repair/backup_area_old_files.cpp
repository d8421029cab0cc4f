// The removal of old undo files at the start of the program.
#include <optional>
#include <vector>

#include "base/c_text.h"
#include "base/calendar.h"
#include "base/failure.h"
#include "cleanup/entry_names.h"
#include "cleanup/file_del.h"
#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/exact/text.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "repair/backup_area.h"

namespace bromvale {
namespace {

constexpr Routine kRoutine{{"modMain", "AutoFileDel"}};

SYSTEMTIME lastWrite(HANDLE file) {
    FILETIME written{};
    FILETIME local{};
    SYSTEMTIME time{};
    if (GetFileTime(file, nullptr, nullptr, &written) == 0 ||
        FileTimeToLocalFileTime(&written, &local) == 0 || FileTimeToSystemTime(&local, &time) == 0) {
        return {};
    }
    return time;
}

std::string dayText(const SYSTEMTIME& time) {
    return std::to_string(time.wDay) + "." + std::to_string(time.wMonth) + "." + std::to_string(time.wYear);
}

// By the clock, as a file's date is: a text made for the user counts the years of the user's own calendar.
std::string todayText() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return dayText(now);
}

// Strictly older: a file of exactly DelAfterDays days stays. So does one whose date can't be read, be the
// limit below 0, which even the files of today exceed. A name that the code page can't hold leads to another
// file or to none: such a file goes by its short name or stays.
void deleteIfOld(const std::string& listed, const std::string& today) {
    const std::string name = reachableName(BackupPath, listed);
    if (name.empty()) {
        return kRoutine.trace(
            [&] { return BackupPath + plainText(listed) + " bleibt: der Name ist nicht genau bekannt"; });
    }
    std::optional<std::int32_t> age;
    kRoutine.step([&] { age = daysBetween(GetFileDate(BackupPath + name), today); });
    if (!age || *age <= DelAfterDays) return;
    kRoutine.step([&] { FileDel(BackupPath, name); });
    kRoutine.trace([&] { return BackupPath + name + " gelöscht"; });
}

}  // namespace

std::string GetFileDate(std::string_view path) {
    OFSTRUCT opened{};
    opened.cBytes = sizeof(opened);
    SYSTEMTIME time{};
    const HFILE file = OpenFile(CText(path).get(), &opened, OF_READ);
    if (file != HFILE_ERROR) {
        const auto handle = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(file));
        time = lastWrite(handle);
        CloseHandle(handle);
    }
    return dayText(time);
}

void AutoFileDel() {
    kRoutine.trace("startet");
    const std::string today = todayText();
    std::vector<std::string> names;
    kRoutine.step([&] { names = undoFileNames(); });
    kRoutine.trace([&] { return std::to_string(names.size()) + " Dateien im Backup-Ordner gefunden"; });
    for (const std::string& name : names) deleteIfOld(name, today);
    kRoutine.ended();
}

}  // namespace bromvale

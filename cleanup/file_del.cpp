#include "cleanup/file_del.h"

#include <vector>

#include "core/attempt.h"
#include "core/file_helpers.h"
#include "core/log.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "platform/shell.h"

namespace bromvale {
namespace {

constexpr Tags kTags{"modFiles", "FileDel"};

// Without a question, a sub folder with all that it holds.
void moveToRecycleBin(const std::string& path) {
    const std::string title = AppTitle + " leert die gewählten Ordner.";
    std::string from = path;
    from += '\0';  // the list of names ends in an empty one
    SHFILEOPSTRUCTA operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = from.c_str();
    operation.pTo = "\0";
    operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION;
    operation.lpszProgressTitle = title.c_str();
    static_cast<void>(SHFileOperationA(&operation));
}

// A link to a folder, or a folder where another volume is mounted. Some old systems tell the attribute alone,
// and folders of other kinds (kept by a network service, say) carry it too: those have a tag without this
// bit.
bool leadsElsewhere(const WIN32_FIND_DATAA& found) {
    constexpr DWORD kStandsForAnotherName = 0x20000000;
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           (found.dwReserved0 == 0 || (found.dwReserved0 & kStandsForAnotherName) != 0);
}

enum class Level { Entry, Below };

// Links are taken out before the shell gets a folder: where the recycle bin can't take it the shell deletes
// what lies below, and that of several systems goes on behind the links. False where the shell is to get
// nothing: a link stays, nobody can look, or the entry itself was a link or has vanished.
bool takeLinksOut(const std::string& folder, const std::string& pattern, Level level) {
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA((folder + pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const bool vanished = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return vanished && level == Level::Below;
    }
    bool clean = true;
    std::vector<std::string> folders;
    do {
        const std::string name = found.cFileName;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 || name == "." || name == "..") continue;
        if (!leadsElsewhere(found)) {
            folders.push_back(folder + name + "\\");
        } else {
            const bool removed = RemoveDirectoryA((folder + name).c_str()) != 0;
            clean = clean && removed && level == Level::Below;
        }
    } while (FindNextFileA(search, &found) != 0);
    clean = clean && GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    for (const std::string& below : folders) {
        clean = takeLinksOut(below, "*", Level::Below) && clean;
    }
    return clean;
}

// A name is a file or a folder, so one of the two calls fails. A folder that holds something stays with all
// of it, and of a link only the link goes.
void deleteForGood(const std::string& path) {
    static_cast<void>(DeleteFileA(path.c_str()));
    static_cast<void>(RemoveDirectoryA(path.c_str()));
}

void traceAttempt(const std::string& path) {
    kTags.trace([&] { return "Versuch die Datei " + path + " zu löschen; Ergebnis unbekannt"; });
}

}  // namespace

void FileDel(std::string& path, std::string_view file) {
    const auto onFailure = [](const Failure& failure) {
        ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Next;
    };
    if (!file.empty()) {
        // A named file always goes to the recycle bin, whatever DelFilePermanent says.
        const std::string whole = std::string(path).append(file);
        attempt(onFailure, [&] { moveToRecycleBin(whole); });
        return traceAttempt(whole);
    }
    std::vector<std::string> names;
    attempt(onFailure, [&] { FindFileAPI(path, "*.*", names); });
    kTags.trace([] { return "Dateien permanent löschen=" + std::to_string(DelFilePermanent); });
    for (const std::string& name : names) {
        if (name.empty() || name == path) continue;
        const std::string whole = path + name;
        attempt(onFailure, [&] {
            if (DelFilePermanent == 1) return deleteForGood(whole);
            if (takeLinksOut(path, name, Level::Entry)) moveToRecycleBin(whole);
        });
        traceAttempt(whole);
    }
}

}  // namespace bromvale

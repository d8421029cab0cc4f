#include "cleanup/file_del.h"

#include <vector>

#include "cleanup/entry_names.h"
#include "cleanup/folder_links.h"
#include "core/file_helpers.h"
#include "core/handling.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/events.h"
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
    static_cast<void>(SHFileOperationServing(operation));
}

// What is no file is a folder: one that holds something stays with all of it, and of a link only the link
// goes. Looking for a name that is gone takes some file systems as long as reading the whole folder.
void deleteForGood(const std::string& path) {
    if (!DeleteFileA(path.c_str())) static_cast<void>(RemoveDirectoryA(path.c_str()));
}

void traceAttempt(const std::string& path) {
    kTags.trace([&] { return "Versuch die Datei " + path + " zu löschen; Ergebnis unbekannt"; });
}

// One entry of a folder that is emptied. `listed` is the name under which the folder lists it, which is
// another one where `name` is its short name.
void deleteEntry(const EmptiedFolder& folder, const std::string& path, const std::string& name,
                 const std::string& listed) {
    const std::string whole = path + name;
    ServeWindows();
    attempt(reportAndGoOn(kTags), [&] {
        if (!isPlainName(name)) return;
        if (DelFilePermanent != 1) {
            if (folder.takeLinksOut(name)) moveToRecycleBin(whole);
        } else if (folder.holds(name, listed)) {
            deleteForGood(whole);
        }
    });
    traceAttempt(whole);
}

}  // namespace

void FileDel(std::string& path, std::string_view file) {
    const auto onFailure = reportAndGoOn(kTags);
    if (!file.empty()) {
        // A named file always goes to the recycle bin, whatever DelFilePermanent says. The shell would take a
        // name that isn't plain for another file, or for many.
        const std::string whole = std::string(path).append(file);
        if (isPlainName(file)) attempt(onFailure, [&] { moveToRecycleBin(whole); });
        return traceAttempt(whole);
    }
    std::vector<std::string> names;
    attempt(onFailure, [&] { FindFileAPI(path, "*.*", names); });
    kTags.trace([] { return "Dateien permanent löschen=" + std::to_string(DelFilePermanent); });
    const EmptiedFolder folder(path);
    for (const std::string& name : names) {
        if (!name.empty() && name != path) deleteEntry(folder, path, name, name);
    }
    // Those that were passed over above since their own names lead elsewhere.
    for (const ForeignEntry& entry : foreignEntries(path)) {
        deleteEntry(folder, path, entry.shortName, entry.listedName);
    }
}

}  // namespace bromvale

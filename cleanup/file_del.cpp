#include "cleanup/file_del.h"

#include <vector>

#include "cleanup/entry_names.h"
#include "cleanup/folder_links.h"
#include "core/file_helpers.h"
#include "core/routine.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "platform/files.h"
#include "platform/shell.h"

namespace bromvale {
namespace {

constexpr Routine kRoutine{{"modFiles", "FileDel"}};

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

bool isFolder(const std::string& path) {
    FoundEntry found;
    return findEntry(path, found) == 0 && found.isFolder();
}

void traceAttempt(const std::string& path) {
    kRoutine.trace(
        [&] { return "Versuch die Datei " + plainText(path) + " zu löschen; Ergebnis unbekannt"; });
}

constexpr std::string_view kNoName = "ihr Name ist nicht genau bekannt, und kein Kurzname führt zu ihr";
constexpr std::string_view kLeadsElsewhere = "ob ihr Name zu ihr selbst führt, ist nicht bekannt";
constexpr std::string_view kNotAllSeen = "nicht alles an ihr ließ sich ansehen oder als Verweis entfernen";

// Deletes the entry that the folder lists as `listed`, by the name that reaches it. Answers why it is left
// alone, or nothing.
std::string_view deleteReached(const EmptiedFolder& folder, const std::string& path, const std::string& name,
                               const std::string& listed) {
    using Finding = EmptiedFolder::Finding;
    if (name.empty()) return kNoName;
    if (DelFilePermanent != 1) {
        const Finding finding = folder.takeLinksOut(name, listed);
        if (finding == Finding::Clear) moveToRecycleBin(path + name);
        return finding == Finding::Unsure ? kNotAllSeen : std::string_view();
    }
    if (!folder.holds(name, listed)) return kLeadsElsewhere;
    deleteForGood(path + name);
    return {};
}

void deleteEntry(const EmptiedFolder& folder, const std::string& path, const FoundEntry& entry) {
    std::string name;
    std::string_view leftAlone;
    ServeWindows();
    kRoutine.step([&] { name = reachableName(path, entry); });
    kRoutine.step([&] { leftAlone = deleteReached(folder, path, name, entry.name); });
    traceAttempt(path + entry.name);
    if (!name.empty() && name != entry.name) traceAttempt(path + name);
    if (leftAlone.empty()) return;
    kRoutine.trace([&] {
        const std::string text = "Die Datei " + plainText(path + entry.name) + " bleibt stehen: ";
        return text + std::string(leftAlone);
    });
}

}  // namespace

void FileDel(std::string& path, std::string_view file) {
    if (!file.empty()) {
        // A named file always goes to the recycle bin, whatever DelFilePermanent says. The shell would take a
        // name that isn't plain for another file, or for many, and it cuts a path that is too long. A folder
        // is no file: what lies in it, or behind a link, was never asked about.
        const std::string whole = std::string(path).append(file);
        const bool reached = isExact(path) && isPlainName(file) && fitsPath(whole) && !isFolder(whole);
        if (reached) kRoutine.step([&] { moveToRecycleBin(whole); });
        return traceAttempt(whole);
    }
    std::vector<FoundEntry> entries;
    kRoutine.step([&] { FindFileAPI(path, "*.*", entries); });
    kRoutine.trace([] { return "Dateien permanent löschen=" + std::to_string(DelFilePermanent); });
    const EmptiedFolder folder(path);
    for (const FoundEntry& entry : entries) {
        if (!entry.name.empty() && entry.name != path) deleteEntry(folder, path, entry);
    }
}

}  // namespace bromvale

// The list of folders that are to be emptied: the text file liste.txt, a path a line.
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "cleanup/browse_for_folder.h"
#include "core/attempt.h"
#include "core/log.h"
#include "core/state.h"
#include "core/text_file.h"
#include "ui/cleanup_page.h"

namespace bromvale {
namespace {

constexpr int kFolderIcon = 6;
constexpr int kFileNotFound = 53;
constexpr std::int32_t kYesNoQuestion = 36;
constexpr int kYes = 6;

// By its bare name, so in the current directory; adding a folder and emptying use the program's folder. The
// two are the same file only while the program is started in its own folder.
constexpr std::string_view kListFile = "liste.txt";

// A routine of the page that reports its failures and goes on with the next statement.
auto reporting(const Tags& tags) {
    return [&tags](const Failure& failure) {
        ErrHandle(tags.modul, tags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        return Ending::Next;
    };
}

void readFolders(int number, ListView& list) {
    while (!endOfFile(number)) {
        const std::string line = readLine(number);
        if (!line.empty()) list.add(line, kFolderIcon);
    }
}

// To the letter: the same path in another case is another folder.
bool isListed(const ListView& list, const std::string& path) {
    for (int row = 1; row <= list.count(); ++row) {
        if (list.item(row).text() == path) return true;
    }
    return false;
}

// A folder for temporary files is taken without a question. A plain search in the text: "C:\Temporary" counts
// as one, too.
bool confirmed(const std::string& path) {
    const std::string lower = LCase(path);
    if (InStr(lower, "\\tmp") > 0 || InStr(lower, "\\temp") > 0) return true;
    return MsgBox("Sind Sie sich sicher, das Sie den Ordner\r\n" + path + " zur Liste hinzufügen wollen?",
                  kYesNoQuestion) == kYes;
}

void appendFolder(const std::string& path) {
    const int number = freeFile();
    openFile(AppPath + "liste.txt", FileMode::Append, number);
    writeLine(number, path);
    closeFile(number);
}

// The lines of the list without those that equal `removed`, and without empty ones.
std::string remainingLines(int number, const std::optional<std::string>& removed, const Tags& tags) {
    std::string lines;
    while (!endOfFile(number)) {
        const std::string line = readLine(number);
        if (line == removed) continue;
        if (!lines.empty() && !line.empty()) lines += "\r\n";
        lines += line;
        // These words go with the lines that stay.
        tags.trace([&] { return line + " aus zulöschenden Liste gelöscht"; });
    }
    return lines;
}

// Makes the empty list of a first run. False where that isn't possible either.
bool makeList(int number) {
    bool made = true;
    attempt([&](const Failure&) { return made = false, Ending::Next; },
            [&] {
                openFile(kListFile, FileMode::Output, number);
                closeFile(number);
            });
    return made;
}

}  // namespace

void CleanupPage::Ordnerliste_laden() {
    constexpr Tags kTags{"modFiles", "Ordnerliste_laden"};
    int number = 0;
    const auto onFailure = [&](const Failure& failure) {
        if (failure.number == kFileNotFound && makeList(number)) return Ending::Retry;
        ErrHandle(kTags.modul, kTags.funktion, "", failure.number, failure.description, kStyleExclamation,
                  kHide);
        closeFile(number);
        return Ending::Leave;
    };
    const auto step = [&](auto&& statement) { return attempt(onFailure, statement); };
    static_cast<void>(step([&] {
                          number = freeFile();
                          lvwOrdnerList.clear();
                      }) &&
                      step([&] { openFile(kListFile, FileMode::Input, number); }) &&
                      step([&] { readFolders(number, lvwOrdnerList); }) && step([&] { closeFile(number); }) &&
                      step([&] {
                          const bool some = lvwOrdnerList.count() > 0;
                          if (!some) chbTempFilesDel.setValue(0);
                          chbTempFilesDel.setEnabled(some);
                      }));
}

void CleanupPage::cmdOrdnerWählen_Click() {
    constexpr Tags kTags{"frmMain", "cmdOrdnerWählen_Click"};
    const auto onFailure = reporting(kTags);
    kTags.trace("started");
    std::string path;
    attempt(onFailure, [&] { path = BrowseForFolder(); });
    if (!path.empty()) {
        if (isListed(lvwOrdnerList, path)) {
            attempt(onFailure, [&] {
                MsgBox("Der Ordner " + path + " befindet sich bereits in der Liste.", kStyleInformation);
            });
            return;
        }
        bool wanted = false;
        attempt(onFailure, [&] { wanted = confirmed(path); });
        if (wanted) {
            attempt(onFailure, [&] { appendFolder(path); });
            attempt(onFailure, [&] { lvwOrdnerList.add(path, kFolderIcon); });
            kTags.trace([&] { return path + " zum automatischen Leeren vorgesehen"; });
        }
    }
    attempt(onFailure, [&] { Ordnerliste_laden(); });
    kTags.trace("endet");
}

// Of several marked rows only the one with the list's focus goes, with every line that equals it.
void CleanupPage::cmdOrdnerLöschen_Click() {
    constexpr Tags kTags{"frmMain", "cmdOrdnerLöschen_Click"};
    const auto onFailure = reporting(kTags);
    kTags.trace("started");
    const int number = freeFile();
    std::optional<std::string> removed;
    attempt(onFailure, [&] { removed = lvwOrdnerList.item(lvwOrdnerList.selectedItem()).text(); });
    std::string lines;
    // A list that is there but could not be read to its end is left alone: what wasn't read would be lost.
    bool complete = true;
    const auto onUnread = [&](const Failure& failure) {
        complete = failure.number == kFileNotFound;
        return onFailure(failure);
    };
    attempt(onUnread, [&] {
        openFile(kListFile, FileMode::Input, number);
        lines = remainingLines(number, removed, kTags);
    });
    attempt(onFailure, [&] { closeFile(number); });
    if (complete) {
        attempt(onFailure, [&] { openFile(kListFile, FileMode::Output, number); });
        attempt(onFailure, [&] { writeLine(number, lines); });
        attempt(onFailure, [&] { closeFile(number); });
    }
    attempt(onFailure, [&] { Ordnerliste_laden(); });
    kTags.trace("endet");
}

}  // namespace bromvale

// The list of folders that are to be emptied: the text file liste.txt, a path a line.
#include <optional>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "cleanup/browse_for_folder.h"
#include "core/routine.h"
#include "core/state.h"
#include "core/text_file.h"
#include "platform/dialogs.h"
#include "ui/cleanup_page.h"

namespace bromvale {
namespace {

constexpr int kFolderIcon = 6;

// By its bare name, so in the current directory; adding a folder and emptying use the program's folder. The
// two are the same file only while the program is started in its own folder.
constexpr std::string_view kListFile = "liste.txt";

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
    return asksYes("Sind Sie sich sicher, das Sie den Ordner\r\n" + path + " zur Liste hinzufügen wollen?");
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
    bool made = false;
    quietly([&] {
        openFile(kListFile, FileMode::Output, number);
        closeFile(number);
        made = true;
    });
    return made;
}

}  // namespace

void CleanupPage::Ordnerliste_laden() {
    int number = 0;
    const auto onFailure = [&](const Tags& tags, const Failure& failure) {
        if (failure.number == Failure::kFileNotFound && makeList(number)) return Ending::Retry;
        Report{}(tags, failure);
        closeFile(number);
        return Ending::Leave;
    };
    Routine({"modFiles", "Ordnerliste_laden"}, onFailure).step([&] {
        number = freeFile();
        lvwOrdnerList.clear();
        openFile(kListFile, FileMode::Input, number);
        readFolders(number, lvwOrdnerList);
        closeFile(number);
        const bool some = lvwOrdnerList.count() > 0;
        if (!some) chbTempFilesDel.setValue(0);
        chbTempFilesDel.setEnabled(some);
    });
}

void CleanupPage::cmdOrdnerWählen_Click() {
    constexpr Routine kRoutine{{"frmMain", "cmdOrdnerWählen_Click"}};
    kRoutine.started();
    std::string path;
    kRoutine.step([&] { path = BrowseForFolder(window.window()); });
    if (isListed(lvwOrdnerList, path)) {
        kRoutine.step([&] {
            MsgBox("Der Ordner " + path + " befindet sich bereits in der Liste.", kStyleInformation);
        });
        return;
    }
    bool wanted = false;
    kRoutine.step([&] { wanted = !path.empty() && confirmed(path); });
    if (wanted) {
        kRoutine.step([&] { appendFolder(path); });
        kRoutine.step([&] { lvwOrdnerList.add(path, kFolderIcon); });
        kRoutine.trace([&] { return path + " zum automatischen Leeren vorgesehen"; });
    }
    Ordnerliste_laden();
    kRoutine.ended();
}

// Of several marked rows only the one with the list's focus goes, with every line that equals it.
void CleanupPage::cmdOrdnerLöschen_Click() {
    constexpr Routine kRoutine{{"frmMain", "cmdOrdnerLöschen_Click"}};
    kRoutine.started();
    const int number = freeFile();
    std::optional<std::string> removed;
    kRoutine.step([&] { removed = lvwOrdnerList.item(lvwOrdnerList.selectedItem()).text(); });
    std::string lines;
    // A list that is there but could not be read to its end is left alone: what wasn't read would be lost.
    bool complete = true;
    const auto onUnread = [&](const Tags& tags, const Failure& failure) {
        complete = failure.number == Failure::kFileNotFound;
        return Report{}(tags, failure);
    };
    Routine(kRoutine, onUnread).step([&] {
        openFile(kListFile, FileMode::Input, number);
        lines = remainingLines(number, removed, kRoutine);
    });
    closeFile(number);
    if (complete) {
        kRoutine.step([&] { openFile(kListFile, FileMode::Output, number); });
        kRoutine.step([&] { writeLine(number, lines); });
        closeFile(number);
    }
    Ordnerliste_laden();
    kRoutine.ended();
}

}  // namespace bromvale

#include "scanner/file_checks.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "base/text_parts.h"
#include "core/file_helpers.h"
#include "core/routine.h"
#include "core/state.h"
#include "platform/exact/text.h"
#include "scanner/fault_texts.h"

namespace bromvale {

namespace {

constexpr Routine kRoutine{{"modCheckKeys", "CheckFile"}};

struct Variable {
    std::string_view text;
    const std::string* folder;
};

// "%programmfiles%" has two "m", and the usual variable with one stays as it is: such a value holds no ":\"
// and is no file reference. The folders end in a backslash, so that two stand behind them; they are passed on
// so.
constexpr std::array<Variable, 3> kVariables{{
    {"%systemroot%", &WinDir},
    {"%programmfiles%", &ProgramFilesDir},
    {"%windir%", &WinDir},
}};

// Whatever stands behind the first of each goes, one after the other; other extensions keep their arguments.
constexpr std::array<std::string_view, 3> kCuts{".exe", ".dll", ".ocx"};

// Words of a key below which a value names a file.
constexpr std::array<std::string_view, 5> kLocations{"inprocserver32", "inprochandler32", "localserver32",
                                                     "command", "win32"};

void replaceAll(std::string& text, std::string_view sought, std::string_view with) {
    for (std::size_t place = text.find(sought); place != std::string::npos;
         place = text.find(sought, place + with.size()))
        text.replace(place, sought.size(), with);
}

// Whatever stands before the drive letter goes: commands, switches. With ":\" right at the start there is no
// letter, which is a failure that leaves the text as it is.
void startAtDrive(std::string& text) {
    const std::int64_t place = positionOf(text, ":\\");
    if (place == 0) return;
    if (place == 1) raise(5);
    text.erase(0, static_cast<std::size_t>(place - 2));
}

bool isFileLocation(std::string_view lowerKey, std::string_view name) {
    const auto stands = [&](std::string_view word) { return standsBehindStart(lowerKey, word); };
    return std::any_of(kLocations.begin(), kLocations.end(), stands) || (name == "@" && stands("app paths"));
}

bool hasFileForm(std::string_view reference) {
    return standsBehindStart(reference, ":\\") || reference.starts_with("\\\\");
}

bool isEmptyKey(const EntryGroup& group, const Entry& entry) {
    return group.count() == 1 && entry.name == "@" && entry.value.empty();
}

bool isFileReference(const Entry& entry, std::string_view lowerKey, std::string_view reference) {
    return hasFileForm(reference) && isFileLocation(lowerKey, entry.name) && entry.name != "ThreadingModel";
}

bool isStaleUninstallEntry(const EntryGroup& group, const Entry& entry, std::string_view lowerKey) {
    return group.count() == 1 && standsBehindStart(lowerKey, "uninstall") &&
           entry.name != "SystemComponent" && entry.name != "UninstallString";
}

// Whether a text of the entry's data leaves open which file it names. All of it counts and not only what the
// cuts have left: they may have cut off what the code page lacks, as in D:\a.exe-Ordner\... with a letter
// beyond it, and the file that is meant then is another one. The folders that were put in count as well.
bool isUncertain(std::string_view value, std::string_view reference) {
    return !isExact(value) || !isExact(reference);
}

// The check of one entry, which may decide on all of its group.
class FileCheck {
  public:
    FileCheck(std::string_view hiveName, EntryGroup& group, RowSink& rows)
        : hiveName_(hiveName), group_(group), rows_(rows) {}

    void run(int index) const {
        const Entry entry = group_.at(index, hiveName_);
        const std::string& lowerKey = group_.lowerKey(index);
        static std::string reference;
        if (isEmptyKey(group_, entry)) return listAndRemove(index, Data::AsItIs);
        toFileReference(entry.value, reference);
        if (isFileReference(entry, lowerKey, reference)) {
            judgeFile(entry, reference);
        } else if (isStaleUninstallEntry(group_, entry, lowerKey)) {
            listWholeGroup(Data::AsItIs);
        }
    }

  private:
    // The first file that exists clears the whole object, whatever its other entries say. So does one of
    // which nobody can tell whether it exists.
    void judgeFile(const Entry& entry, std::string_view reference) const {
        if (isUncertain(entry.value, reference)) {
            kRoutine.trace([&] { return entryText(entry).append(kLeftAlone); });
            group_.clear();
        } else if (FileExistsInAnyView(reference)) {
            group_.clear();
        } else {
            listWholeGroup(Data::BackslashesDoubled);
        }
    }

    // Every entry of the group and not only the judged one.
    void listWholeGroup(Data form) const {
        for (int index = group_.count(); index >= 1; --index) listAndRemove(index, form);
    }

    // One row of the list and its log line, then the entry leaves the group.
    void listAndRemove(int index, Data form) const {
        const Entry entry = group_.at(index, hiveName_);
        kRoutine.step([&] { rows_.addRow(objectRow(entry, form)); });
        kRoutine.step(
            [&] { kRoutine.trace([&] { return entryText(entry) + "; wird zum Entfernen vorgesehen"; }); });
        group_.remove(index);
    }

    std::string_view hiveName_;
    EntryGroup& group_;
    RowSink& rows_;
};

}  // namespace

void toFileReference(std::string_view value, std::string& reference) {
    reference.assign(value);
    lowerInPlace(reference);
    for (const Variable& variable : kVariables) replaceAll(reference, variable.text, *variable.folder);
    std::erase(reference, '"');
    kRoutine.step([&] { startAtDrive(reference); });
    for (const std::string_view ending : kCuts) {
        const std::int64_t place = positionOf(reference, ending);
        if (place > 1) reference.resize(static_cast<std::size_t>(place + 3));
    }
}

// One report for an index beyond the group: a scan nested in this one may have emptied it.
void CheckFile(std::string_view hiveName, int index, EntryGroup& group, RowSink& rows) {
    kRoutine.step([&] { FileCheck(hiveName, group, rows).run(index); });
}

}  // namespace bromvale

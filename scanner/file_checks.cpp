#include "scanner/file_checks.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/text_parts.h"
#include "core/file_helpers.h"
#include "core/handling.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/exact/text.h"
#include "scanner/left_alone.h"
#include "scanner/registry_checks.h"
#include "ui/frm_main.h"

namespace bromvale {

namespace {

constexpr Tags kTags{"modCheckKeys", "CheckFile"};

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

enum class Data { AsItIs, BackslashesDoubled };

// Where a character has several bytes, the second one may look like a backslash: there the doubling comes
// before the text is made plain. Elsewhere behind it, since a letter may become a backslash.
std::string dataOf(std::string_view value, Data form) {
    if (form == Data::AsItIs) return plainText(value);
    const bool singleBytes = codePageHasSingleBytes();
    std::string data = singleBytes ? plainText(value) : std::string(value);
    replaceAll(data, "\\", "\\\\");
    return singleBytes ? data : plainText(data);
}

// One row of the list and its log line, then the entry leaves the group.
void listAndRemove(std::string_view hiveName, int index, Data form) {
    const auto onFailure = reportAndGoOn(kTags);
    EntryGroup& group = entryGroup();
    attempt(onFailure, [&] {
        std::string keyLine = "[";
        keyLine.append(hiveName).append("\\").append(group.key(index));
        std::string name = plainText(group.name(index));
        if (group.name(index) != "@") name = '"' + name + '"';
        const std::string data = dataOf(group.value(index), form);
        frmMain().scan.lvwRegKeys.add({keyLine, name, data, NumberPart(group.hive(index)).text()}, 1);
    });
    attempt(onFailure, [&] {
        kTags.trace([&] {
            return std::string(hiveName) + "\\" + group.key(index) + ";" + plainText(group.name(index)) +
                   "=" + plainText(group.value(index)) + "; wird zum Entfernen vorgesehen";
        });
    });
    attempt(onFailure, [&] { group.remove(index); });
}

// Every entry of the group and not only the judged one.
void listWholeGroup(std::string_view hiveName, Data form) {
    for (int index = entryGroup().count(); index >= 1; --index) listAndRemove(hiveName, index, form);
}

bool isEmptyKey(const EntryGroup& group, int index) {
    return group.count() == 1 && group.name(index) == "@" && group.value(index).empty();
}

bool isFileReference(const EntryGroup& group, int index, std::string_view reference) {
    return hasFileForm(reference) && isFileLocation(group.lowerKey(index), group.name(index)) &&
           group.name(index) != "ThreadingModel";
}

bool isStaleUninstallEntry(const EntryGroup& group, int index) {
    return group.count() == 1 && standsBehindStart(group.lowerKey(index), "uninstall") &&
           group.name(index) != "SystemComponent" && group.name(index) != "UninstallString";
}

// Whether a text of the entry's data leaves open which file it names. All of it counts and not only what the
// cuts have left: they may have cut off what the code page lacks, as in D:\a.exe-Ordner\... with a letter
// beyond it, and the file that is meant then is another one. The folders that were put in count as well.
bool isUncertain(std::string_view value, std::string_view reference) {
    return !isExact(value) || !isExact(reference);
}

// The first file that exists clears the whole object, whatever its other entries say. So does one of which
// nobody can tell whether it exists.
void judgeFile(std::string_view hiveName, int index, std::string_view reference) {
    EntryGroup& group = entryGroup();
    if (isUncertain(group.value(index), reference)) {
        kTags.trace(
            [&] { return leftAloneText(hiveName, group.key(index), group.name(index), group.value(index)); });
        group.clear();
    } else if (FileExistsInAnyView(reference)) {
        group.clear();
    } else {
        listWholeGroup(hiveName, Data::BackslashesDoubled);
    }
}

}  // namespace

void toFileReference(std::string_view value, std::string& reference) {
    reference.assign(value);
    lowerInPlace(reference);
    for (const Variable& variable : kVariables) replaceAll(reference, variable.text, *variable.folder);
    std::erase(reference, '"');
    attempt(reportAndGoOn(kTags), [&] { startAtDrive(reference); });
    for (const std::string_view ending : kCuts) {
        const std::int64_t place = positionOf(reference, ending);
        if (place > 1) reference.resize(static_cast<std::size_t>(place + 3));
    }
}

void CheckFile(std::int32_t /*hive*/, std::string_view hiveName, int index) {
    const auto onFailure = reportAndGoOn(kTags);
    const EntryGroup& group = entryGroup();
    // One report for an index beyond the group: a scan nested in this one may have emptied it.
    attempt(onFailure, [&] {
        if (isEmptyKey(group, index)) {
            listAndRemove(hiveName, index, Data::AsItIs);
            return;
        }
        static std::string reference;
        toFileReference(group.value(index), reference);
        if (isFileReference(group, index, reference)) {
            judgeFile(hiveName, index, reference);
        } else if (isStaleUninstallEntry(group, index)) {
            listWholeGroup(hiveName, Data::AsItIs);
        }
    });
}

}  // namespace bromvale

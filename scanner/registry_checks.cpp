#include "scanner/registry_checks.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "base/text_parts.h"
#include "core/registry_layer.h"
#include "core/routine.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "scanner/fault_texts.h"
#include "scanner/file_checks.h"

namespace bromvale {

namespace {

constexpr Routine kCheckReg{{"modCheckKeys", "CheckReg"}};
constexpr Routine kCheckLink{{"modCheckKeys", "CheckQuerVerbindung"}};

const std::string& lowerKeyOf(std::string_view key) {
    static std::string lower;
    lower.assign(key);
    lowerInPlace(lower);
    return lower;
}

// The last test never excludes anything, since the text behind its start is always longer; the start keys of
// a scan fall out because they end in "]" and not in a backslash.
bool belongsToNoObject(std::string_view key) {
    if (standsBehindStart(key, "}") || standsBehindStart(key, "app paths\\")) return false;
    const std::int64_t uninstall = positionOf(key, "uninstall\\");
    return uninstall <= 1 || uninstall + 1 >= static_cast<std::int64_t>(key.size());
}

// Everything below one GUID key is an object; so is an App Paths key with its sub keys, and an Uninstall key
// alone. Where none of them is met the prefix stays.
void setPrefix(EntryGroup& group, std::string_view key, std::string_view appPaths) {
    if (standsBehindStart(key, "}")) {
        group.prefix.assign(leftPart(key, positionOf(key, '}')));
    } else if (standsBehindStart(key, appPaths)) {
        group.prefix.assign(leftPart(key, positionOf(key, ']') - 1));
    } else if (standsBehindStart(key, "uninstall")) {
        group.prefix.assign(key);
    }
}

// At any position: the prefix of foo.exe stands in the key of foo.exe2, so both are one group.
bool belongsToGroup(const EntryGroup& group, std::string_view key) {
    return key.starts_with(group.prefix) || key.find(group.prefix) != std::string_view::npos;
}

// Names the object that is left alone by the first key whose name has marks. There is none where an entry
// couldn't be kept.
void traceLeftAlone(const EntryGroup& group, std::string_view hiveName) {
    kCheckReg.trace([&] {
        for (int index = 1; index <= group.count(); ++index) {
            const Entry entry = group.at(index);
            if (!isExact(entry.key))
                return std::string(hiveName).append("\\").append(plainText(entry.key)).append(kLeftAlone);
        }
        return std::string("Ein Objekt bleibt unberührt, da es nicht ganz gelesen werden konnte");
    });
}

// The dead links of an object got rows before the key was met that leaves it alone.
void takeBackRows(EntryGroup& group, RowSink& rows) {
    for (const ResultRow& row : group.takeListed()) rows.takeBackRow(row);
}

// The hive's name is that of the entry that closes the group, not of the group's own entries.
// The index is wider than a 16-bit number: no entry of a huge object is to stay unjudged.
void judgeGroup(std::string_view hiveName, EntryGroup& group, RowSink& rows) {
    const int count = group.count();
    if (group.isLeftAlone()) kCheckReg.step([&] { traceLeftAlone(group, hiveName); });
    for (int index = 1; index <= count; ++index) {
        kCheckReg.step(DoEventsOften);
        if (!group.isLeftAlone()) kCheckReg.step([&] { CheckFile(hiveName, index, group, rows); });
        if (group.count() == 0) break;
    }
    group.clear();
}

// A key that ends so holds a GUID as its default value, to be found below `path` in either hive.
// The second and third row have no "\" behind the hive's name: their rows read
// [HKEY_LOCAL_MACHINESoftware\..., and the removal relies on getting them so.
struct CrossLink {
    std::string_view ending;
    std::string_view path;
    std::string_view behindHiveName;
};

constexpr std::array<CrossLink, 3> kCrossLinks{{
    {"}\\typelib]", "Software\\Classes\\TypeLib\\", "\\"},
    {"}\\clsid]", "Software\\Classes\\clsid\\", ""},
    {"}\\interface]", "Software\\Classes\\interface\\", ""},
}};

const CrossLink* crossLinkOf(std::string_view key) {
    const std::string& lower = lowerKeyOf(key);
    const auto* const found =
        std::find_if(kCrossLinks.begin(), kCrossLinks.end(),
                     [&](const CrossLink& link) { return standsBehindStart(lower, link.ending); });
    return found == kCrossLinks.end() ? nullptr : found;
}

// The hive of the entry itself plays no part.
bool linkIsAlive(const CrossLink& link, std::string_view guid) {
    std::string path(link.path);
    path += guid;
    return KeyExist(kHiveLocalMachine, path, READ_CONTROL) != 0 ||
           KeyExist(kHiveCurrentUser, path, READ_CONTROL) != 0;
}

// The group knows of the row: should a key that leaves the object alone come behind it, it is taken back.
void listLink(const CrossLink& link, const Entry& entry, EntryGroup& group, RowSink& rows) {
    const ResultRow row = linkRow(entry, link.behindHiveName);
    group.remember(row);
    rows.addRow(row);
}

// A GUID with marks is another one than the ANSI functions could look for, and nobody can tell whether it is
// there.
bool canBeLookedFor(const Entry& entry, const EntryGroup& group) {
    if (isExact(entry.value)) return true;
    // An entry that is just closing the group before comes once more.
    if (group.count() > 0) kCheckLink.trace([&] { return entryText(entry).append(kLeftAlone); });
    return false;
}

}  // namespace

void CheckReg(const Entry& entry, EntryGroup& group, RowSink& rows) {
    const std::string& lower = lowerKeyOf(entry.key);
    if (belongsToNoObject(lower)) {
        group.isOpen = false;  // the group is neither judged nor emptied: the next object joins it
        return;
    }
    if (!group.isOpen) kCheckReg.step([&] { setPrefix(group, lower, "app paths\\"); });
    if (belongsToGroup(group, lower)) {
        kCheckReg.step([&] { group.append(entry, lower); });
        if (group.isLeftAlone()) kCheckReg.step([&] { takeBackRows(group, rows); });
        group.isOpen = true;
        return;
    }
    kCheckReg.step([&] { setPrefix(group, lower, "app paths"); });  // without the backslash, unlike above
    group.repeat = true;
    judgeGroup(entry.hiveName, group, rows);
}

void CheckQuerVerbindung(const Entry& entry, EntryGroup& group, RowSink& rows) {
    if (entry.name != "@" || !entry.value.starts_with('{') || !entry.value.ends_with('}')) return;
    const CrossLink* const link = crossLinkOf(entry.key);
    if (link == nullptr || group.isLeftAlone()) return;
    bool alive = false;
    kCheckLink.step([&] { alive = !canBeLookedFor(entry, group) || linkIsAlive(*link, entry.value); });
    if (alive) return;
    // A small object is listed whole, a larger one only with its dead link. With an empty group (this entry
    // is just closing the one before) nothing is listed; the entry comes once more.
    if (group.count() > 2) {
        kCheckLink.step([&] { listLink(*link, entry, group, rows); });
        return;
    }
    for (int index = group.count(); index >= 1; --index)
        kCheckLink.step([&] { listLink(*link, group.at(index, entry.hiveName), group, rows); });
}

}  // namespace bromvale

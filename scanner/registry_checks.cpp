#include "scanner/registry_checks.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "base/text.h"
#include "base/text_parts.h"
#include "core/handling.h"
#include "core/registry_layer.h"
#include "platform/events.h"
#include "platform/exact/text.h"
#include "scanner/file_checks.h"
#include "scanner/left_alone.h"
#include "scanner/scan_state.h"
#include "ui/frm_main.h"

namespace bromvale {

std::string GroupPrefix;
bool GroupOpen = false;

EntryGroup& entryGroup() {
    static EntryGroup group;
    return group;
}

namespace {

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
void setGroupPrefix(std::string_view key, std::string_view appPaths) {
    if (standsBehindStart(key, "}")) {
        GroupPrefix.assign(leftPart(key, positionOf(key, '}')));
    } else if (standsBehindStart(key, appPaths)) {
        GroupPrefix.assign(leftPart(key, positionOf(key, ']') - 1));
    } else if (standsBehindStart(key, "uninstall")) {
        GroupPrefix.assign(key);
    }
}

// At any position: the prefix of foo.exe stands in the key of foo.exe2, so both are one group.
bool belongsToGroup(std::string_view key) {
    return key.starts_with(GroupPrefix) || key.find(GroupPrefix) != std::string_view::npos;
}

// The hive and its name are those of the entry that closes the group, not of the group's own entries.
// The index is wider than the 16-bit number it once was: no entry of a huge object is to stay unjudged.
void judgeGroup(std::int32_t hive, std::string_view hiveName) {
    const auto onFailure = reportAndGoOn({"modCheckKeys", "CheckReg"});
    const int count = entryGroup().count();
    if (entryGroup().isLeftAlone()) attempt(onFailure, [&] { traceLeftAlone(entryGroup(), hiveName); });
    for (int index = 1; index <= count; ++index) {
        attempt(onFailure, DoEvents);
        if (!entryGroup().isLeftAlone()) attempt(onFailure, [&] { CheckFile(hive, hiveName, index); });
        if (entryGroup().count() == 0) break;
    }
    entryGroup().clear();
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
    return KeyExist(kHiveLocalMachine, path, kReadControl) != 0 ||
           KeyExist(kHiveCurrentUser, path, kReadControl) != 0;
}

// Names stand without quotes here, those of buffered entries too. The group knows of the row: should a key
// that leaves the object alone come behind it, it is taken back.
void addCrossLinkRow(const CrossLink& link, std::string_view hiveName, std::string_view key,
                     std::string_view name, std::string_view value, std::int32_t hive) {
    std::string keyLine = "[";
    keyLine.append(hiveName).append(link.behindHiveName).append(key);
    const EntryGroup::Row row{std::move(keyLine), plainText(name), plainText(value),
                              std::string(NumberPart(hive).text())};
    entryGroup().remember(row);
    frmMain().scan.lvwRegKeys.add({row[kKeyLine], row[kValueName], row[kValueData], row[kHiveHandle]}, 1);
}

// A GUID with marks is another one than the ANSI functions could look for, and nobody can tell whether it is
// there.
bool canBeLookedFor(std::string_view hiveName, std::string_view key, std::string_view guid) {
    if (isExact(guid)) return true;
    // An entry that is just closing the group before comes once more.
    if (entryGroup().count() > 0)
        trace("modCheckKeys", "CheckQuerVerbindung", [&] { return leftAloneText(hiveName, key, "@", guid); });
    return false;
}

}  // namespace

void CheckReg(std::int32_t hive, std::string_view hiveName, std::string_view key, std::string_view name,
              std::string_view value) {
    const auto onFailure = reportAndGoOn({"modCheckKeys", "CheckReg"});
    const std::string& lower = lowerKeyOf(key);
    if (belongsToNoObject(lower)) {
        GroupOpen = false;  // the group is neither judged nor emptied: the next object joins it
        return;
    }
    if (!GroupOpen) attempt(onFailure, [&] { setGroupPrefix(lower, "app paths\\"); });
    if (belongsToGroup(lower)) {
        attempt(onFailure, [&] { entryGroup().append(key, lower, name, value, hive); });
        if (entryGroup().isLeftAlone()) attempt(onFailure, [&] { takeBackRows(entryGroup()); });
        GroupOpen = true;
        return;
    }
    attempt(onFailure, [&] { setGroupPrefix(lower, "app paths"); });  // without the backslash, unlike above
    RepeatEntry = true;
    judgeGroup(hive, hiveName);
}

void CheckQuerVerbindung(std::int32_t hive, std::string_view hiveName, std::string_view key,
                         std::string_view name, std::string_view value) {
    if (name != "@" || !value.starts_with('{') || !value.ends_with('}')) return;
    const CrossLink* const link = crossLinkOf(key);
    if (link == nullptr || entryGroup().isLeftAlone()) return;
    const auto onFailure = reportAndGoOn({"modCheckKeys", "CheckQuerVerbindung"});
    bool alive = false;
    attempt(onFailure, [&] { alive = !canBeLookedFor(hiveName, key, value) || linkIsAlive(*link, value); });
    if (alive) return;
    // A small object is listed whole, a larger one only with its dead link. With an empty group (this entry
    // is just closing the one before) nothing is listed; the entry comes once more.
    const EntryGroup& group = entryGroup();
    if (group.count() > 2) {
        attempt(onFailure, [&] { addCrossLinkRow(*link, hiveName, key, name, value, hive); });
        return;
    }
    for (int index = group.count(); index >= 1; --index) {
        attempt(onFailure, [&] {
            addCrossLinkRow(*link, hiveName, group.key(index), group.name(index), group.value(index), hive);
        });
    }
}

}  // namespace bromvale

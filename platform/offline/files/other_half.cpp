#include "platform/offline/files/other_half.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"
#include "platform/offline/registry/tree.h"
#include "platform/other_view_api.h"

namespace bromvale::offline {
namespace {

constexpr std::string_view kSystem = "SYSTEM32";
constexpr std::string_view kOtherSystem = "SysWOW64";
constexpr std::string_view kNative = "Sysnative";

// Folders below System32 that both kinds of program share.
constexpr std::array<std::string_view, 5> kSharedFolders{"catroot", "catroot2", "driverstore", "logfiles",
                                                         "spool"};

// `names` are those behind the system folder's.
bool isShared(PathNames names) {
    if (names.empty()) return false;
    const auto is = [&](std::string_view name) { return equalNoCase(names[0], name); };
    return std::any_of(kSharedFolders.begin(), kSharedFolders.end(), is) ||
           (is("drivers") && names.size() > 1 && equalNoCase(names[1], "etc"));
}

// How many of the location's names are those of the folder; none where it lies elsewhere.
std::size_t namesInFolder(const Location& location, std::string_view folder) {
    if (location.root[0] != upper(folder[0])) return 0;
    std::string_view rest = folder.substr(2);
    std::size_t count = 0;
    for (auto name = nextPathName(rest); !name.empty(); name = nextPathName(rest)) {
        if (count == location.count || !sameStored(location.names[count], name)) return 0;
        ++count;
    }
    return count;
}

// The first row whose key holds the path decides. Without a real place the key is shared.
struct KeyRow {
    std::string_view key;
    std::string_view real;
};
constexpr std::array<KeyRow, 2> kUserKeys{{
    {"Software\\Classes\\CLSID", "Software\\Classes\\Wow6432Node\\CLSID"},
    {"Software\\Classes\\Interface", "Software\\Classes\\Wow6432Node\\Interface"},
}};
constexpr std::array<KeyRow, 6> kMachineKeys{{
    kUserKeys[0],
    kUserKeys[1],
    {"Software\\Classes", ""},
    {"Software\\Wow6432Node", ""},
    {"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths", ""},
    {"Software", "Software\\Wow6432Node"},
}};

constexpr std::array<KeyRow, 3> kOlderMachineKeys{{
    {"Software\\Classes", "Software\\Wow6432Node\\Classes"},
    {"Software\\Wow6432Node", ""},
    {"Software", "Software\\Wow6432Node"},
}};

constexpr std::size_t kCurrentUser = 1;
constexpr std::size_t kLocalMachine = 2;

bool lies(std::string_view path, std::string_view key) {
    return path.size() >= key.size() && equalNoCase(path.substr(0, key.size()), key) &&
           (path.size() == key.size() || path[key.size()] == '\\');
}

template <std::size_t kCount>
const KeyRow* rowOf(const std::array<KeyRow, kCount>& rows, std::string_view path) {
    const auto* const found =
        std::find_if(rows.begin(), rows.end(), [&](const KeyRow& row) { return lies(path, row.key); });
    return found == rows.end() || found->real.empty() ? nullptr : found;
}

const KeyRow* redirection(const OtherHalf& half, std::size_t hive, std::string_view path) {
    if (half.seen != Halves::SeenBy32) return nullptr;
    if (hive == kLocalMachine) {
        return half.classesApart ? rowOf(kOlderMachineKeys, path) : rowOf(kMachineKeys, path);
    }
    return hive == kCurrentUser ? rowOf(kUserKeys, path) : nullptr;
}

}  // namespace

void setHalves(Halves halves) {
    machine().otherHalf.seen = halves;
    machine().otherHalf.filesAreLedAway = true;
    if (halves != Halves::None)
        machine().drives.makeFolder(machine().windowsFolder() + "\\" + std::string(kOtherSystem));
}

void OtherHalf::lead(Location& location) const {
    if (seen != Halves::SeenBy32) return;
    const std::size_t inWindows = namesInFolder(location, windows);
    if (inWindows == 0 || inWindows == location.count) return;
    std::string_view& name = location.names[inWindows];
    if (equalNoCase(name, kNative)) {
        name = kSystem;
    } else if (equalNoCase(name, kSystem) && filesAreLedAway &&
               !isShared(location.all().subspan(inWindows + 1))) {
        name = kOtherSystem;
    }
}

bool OtherHalf::leadsAway(std::size_t hive, std::string_view path) const {
    return redirection(*this, hive, path) != nullptr;
}

std::string OtherHalf::realKey(std::size_t hive, std::string_view path) const {
    const KeyRow* const row = redirection(*this, hive, path);
    if (row == nullptr) return std::string(path);
    return std::string(row->real).append(path.substr(row->key.size()));
}

}  // namespace bromvale::offline

using namespace bromvale::offline;

BOOL IsWow64Process(HANDLE, BOOL* is) {
    if (failsHere("IsWow64Process")) return FALSE;
    *is = machine().otherHalf.seen == Halves::SeenBy32 ? TRUE : FALSE;
    return TRUE;
}

BOOL Wow64DisableWow64FsRedirection(PVOID* old) {
    if (failsHere("Wow64DisableWow64FsRedirection")) return FALSE;
    OtherHalf& half = machine().otherHalf;
    if (half.seen != Halves::SeenBy32) return failed(ERROR_INVALID_FUNCTION);
    *old = half.filesAreLedAway ? nullptr : old;
    half.filesAreLedAway = false;
    return TRUE;
}

BOOL Wow64RevertWow64FsRedirection(PVOID old) {
    if (failsHere("Wow64RevertWow64FsRedirection")) return FALSE;
    machine().otherHalf.filesAreLedAway = old == nullptr;
    return TRUE;
}

UINT GetSystemWow64DirectoryA(LPSTR buffer, UINT size) {
    if (failsHere("GetSystemWow64DirectoryA")) return 0;
    if (machine().otherHalf.seen == Halves::None) return failed(ERROR_CALL_NOT_IMPLEMENTED);
    return answerLength(machine().windowsFolder() + "\\" + std::string(kOtherSystem), buffer, size);
}

namespace bromvale {

const OtherViewFunctions& otherViewFunctions() {
    static constexpr OtherViewFunctions kFunctions{&::IsWow64Process, &::Wow64DisableWow64FsRedirection,
                                                   &::Wow64RevertWow64FsRedirection,
                                                   &::GetSystemWow64DirectoryA};
    static constexpr OtherViewFunctions kNone{};
    return machine().os().isNt() ? kFunctions : kNone;
}

}  // namespace bromvale

// What SYSTEM.DAT and USER.DAT tell of a Windows 95, 98 or ME.
#include <algorithm>

#include "platform/offline/hives/disk/creg.h"
#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive_values.h"
#include "platform/offline/locale/stored_text.h"

namespace bromvale::offline {
namespace {

constexpr std::u16string_view kWindows = u"Software\\Microsoft\\Windows\\CurrentVersion";

std::u16string textIn(const CregKey& root, const std::u16string& path, std::u16string_view name) {
    const CregKey* const key = root.find(path);
    const CregValue* const value = key == nullptr ? nullptr : key->value(name);
    if (value == nullptr || (value->type != REG_SZ && value->type != REG_EXPAND_SZ)) return {};
    std::u16string text = utf16FromAnsi(value->data);
    text.resize(std::min(text.find(u'\0'), text.size()));
    return text;
}

std::u16string windowsText(const CregKey& root, std::u16string_view name) {
    return textIn(root, std::u16string(kWindows), name);
}

FoundHive cregNamed(const InsideFolder& drive, const std::string& folder, const std::string& entry,
                    HiveRole role) {
    FoundHive hive = fileAt(drive, folder, entry, role);
    if (hive.usable() && !isCreg(startOf(hive.path, 4).value_or("")))
        hive.problem = "it is no registry of Windows 95 to ME";
    return hive;
}

void addHive(DiskSearch& search, std::string_view name, HiveRole role) {
    const std::vector<std::string> names = namesLike(search.disk.folder, name);
    if (names.empty()) return;
    FoundHive hive = cregNamed(search.drive, search.disk.folder, names.front(), role);
    if (!hive.usable()) search.warn("The file " + hive.path + " can't be used: " + hive.problem + ".");
    search.disk.hives.push_back(std::move(hive));
}

// "4.90.3000". The high word of the build repeats the two numbers before, as Windows tells it.
OsVersion versionOf(std::u16string_view text) {
    OsVersion version{1, 0, 0, 0};
    for (DWORD* const number : {&version.major, &version.minor, &version.build}) {
        while (!text.empty() && text.front() >= u'0' && text.front() <= u'9' && *number < 0x10000) {
            *number = *number * 10 + static_cast<DWORD>(text.front() - u'0');
            text.remove_prefix(1);
        }
        if (!text.empty()) text.remove_prefix(1);
    }
    version.build = (version.build & 0xFFFF) | (version.major & 0xFF) << 24 | (version.minor & 0xFF) << 16;
    return version;
}

void addUser(DiskSearch& search, std::u16string name, const std::u16string& profile) {
    WindowsDisk& disk = search.disk;
    const InsidePath folder = search.hostPath(profile);
    DiskUser user;
    user.name = std::move(name);
    user.profile = profile;
    if (folder.isFolder()) {
        user.folder = folder.path;
        const bool known = std::ranges::any_of(
            disk.users, [&](const DiskUser& other) { return other.folder == folder.path; });
        if (known) return;
        for (const std::string& entry : namesLike(folder.path, "USER.DAT"))
            if (!user.hive) user.hive = cregNamed(search.drive, folder.path, entry, HiveRole::User);
    }
    if (!folder.isFolder()) {
        user.problem = "the profile's folder is not there";
    } else if (!user.hive) {
        user.problem = "the profile has no USER.DAT";
    } else if (!user.hive->usable()) {
        user.problem = user.hive->path + " can't be used: " + user.hive->problem;
    }
    disk.users.push_back(std::move(user));
}

// Those of the machine's list first, then folders that it doesn't have.
void find9xUsers(DiskSearch& search, const CregKey& machine) {
    const std::u16string list = std::u16string(kWindows) + u"\\ProfileList";
    if (const CregKey* const key = machine.find(list)) {
        for (const CregKey& entry : key->subKeys) {
            const std::u16string path = textIn(entry, u"", u"ProfileImagePath");
            if (!path.empty()) addUser(search, entry.name, search.expanded(path));
        }
    }
    const InsidePath profiles = search.hostPath(search.disk.profiles);
    if (!profiles.isFolder()) return;
    for (const std::string& entry : InsideFolder::entries(profiles.path)) {
        const InsidePath folder = search.drive.follow(profiles.path, entry);
        if (!folder.isFolder() || namesLike(folder.path, "USER.DAT").empty()) continue;
        const std::u16string name = wideFromStored(storedFromUtf8(entry));
        addUser(search, name, search.disk.profiles + u"\\" + name);
    }
}

DiskProblem unreadable(const std::string& file, const std::string& why) {
    DiskProblem problem;
    problem.what = "The registry " + file + " can't be read: " + why + ".";
    problem.why = "It tells which Windows this is and where its folders are.";
    problem.help =
        hasCregReader()
            ? "A copy of it may lie beside it as SYSTEM.DA0, or in SYSBCKUP as RB000.CAB; Windows' own "
              "\"scanreg /restore\" takes these."
            : "Install libcreg-dev and build the program again.";
    return problem;
}

}  // namespace

std::optional<DiskProblem> describe9x(DiskSearch& search) {
    WindowsDisk& disk = search.disk;
    addHive(search, "SYSTEM.DAT", HiveRole::Machine);
    addHive(search, "USER.DAT", HiveRole::Users);
    addHive(search, "CLASSES.DAT", HiveRole::MachineClasses);
    const FoundHive* const hive = disk.hive(HiveRole::Machine);
    if (hive == nullptr) return unreadable(disk.folder + "/SYSTEM.DAT", "it is not there");
    const auto read = readCreg(hive->path);
    if (const auto* why = std::get_if<std::string>(&read)) return unreadable(hive->path, *why);
    const CregKey& machine = std::get<CregTree>(read).root;
    placeOnDrive(search, windowsText(machine, u"SystemRoot"));
    disk.version = versionOf(windowsText(machine, u"VersionNumber"));
    disk.product = windowsText(machine, u"ProductName");
    disk.programFiles = windowsText(machine, u"ProgramFilesDir");
    disk.commonFiles = windowsText(machine, u"CommonFilesDir");
    disk.profiles = disk.windowsFolder + u"\\Profiles";
    disk.programData = disk.windowsFolder + u"\\All Users";
    find9xUsers(search, machine);
    findHibernation(search);
    return std::nullopt;
}

}  // namespace bromvale::offline

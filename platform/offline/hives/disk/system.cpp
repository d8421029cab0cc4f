// What the hives SOFTWARE and SYSTEM tell of a Windows NT to 11.
#include <charconv>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive_values.h"

namespace bromvale::offline {
namespace {

constexpr std::u16string_view kWindowsNt = u"Microsoft\\Windows NT\\CurrentVersion";
constexpr std::u16string_view kWindows = u"Microsoft\\Windows\\CurrentVersion";
constexpr std::u16string_view kWindows32 = u"Wow6432Node\\Microsoft\\Windows\\CurrentVersion";
constexpr std::u16string_view kProfileList = u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
constexpr DWORD kFirstBuildOf11 = 22000;

// A part that is damaged is told and left out; the others count.
template <class Part>
void guarded(DiskSearch& search, std::string_view what, const Part& part) {
    try {
        part();
    } catch (const HiveDamage& damage) {
        search.warn(std::string(what) + " can't be read: " + damage.what() + ".");
    }
}

DWORD numberOf(std::u16string_view& text) {
    DWORD number = 0;
    while (!text.empty() && text.front() >= u'0' && text.front() <= u'9' && number < 100000000) {
        number = number * 10 + static_cast<DWORD>(text.front() - u'0');
        text.remove_prefix(1);
    }
    if (!text.empty() && text.front() == u'.') text.remove_prefix(1);
    return number;
}

// The text stays "6.3" from 8.1 on, and the product of 11 calls itself 10.
void readVersion(DiskSearch& search, const Hive& software) {
    WindowsDisk& disk = search.disk;
    const std::u16string text = textAt(software, kWindowsNt, u"CurrentVersion").value_or(u"");
    const std::u16string build = textAt(software, kWindowsNt, u"CurrentBuildNumber").value_or(u"");
    std::u16string_view version = text;
    std::u16string_view number = build;
    disk.version = {2, numberOf(version), 0, numberOf(number)};
    disk.version.minor = numberOf(version);
    if (const auto major = numberAt(software, kWindowsNt, u"CurrentMajorVersionNumber")) {
        disk.version.major = *major;
        disk.version.minor = numberAt(software, kWindowsNt, u"CurrentMinorVersionNumber").value_or(0);
    }
    disk.product = textAt(software, kWindowsNt, u"ProductName").value_or(u"");
    disk.servicePack = textAt(software, kWindowsNt, u"CSDVersion").value_or(u"");
    const std::size_t ten = disk.product.find(u"Windows 10");
    if (disk.version.build >= kFirstBuildOf11 && ten != std::u16string::npos)
        disk.product.replace(ten, 10, u"Windows 11");
    if (disk.product.empty() && disk.version.major != 0) disk.product = u"Windows NT";
}

void readFolders(DiskSearch& search, const Hive& software) {
    WindowsDisk& disk = search.disk;
    const auto folder = [&](std::u16string_view key, std::u16string_view name) {
        return search.expanded(textAt(software, key, name).value_or(u""));
    };
    const auto either = [&](std::u16string_view name, std::u16string_view nameIn32) {
        std::u16string found = folder(kWindows, name);
        return found.empty() ? folder(kWindows32, nameIn32) : found;
    };
    disk.programFiles = folder(kWindows, u"ProgramFilesDir");
    disk.commonFiles = folder(kWindows, u"CommonFilesDir");
    disk.programFilesX86 = either(u"ProgramFilesDir (x86)", u"ProgramFilesDir");
    disk.commonFilesX86 = either(u"CommonFilesDir (x86)", u"CommonFilesDir");
    disk.profiles = folder(kProfileList, u"ProfilesDirectory");
    disk.programData = folder(kProfileList, u"ProgramData");
    disk.publicUser = folder(kProfileList, u"Public");
    if (disk.profiles.empty()) disk.profiles = disk.windowsFolder + u"\\Profiles";
    if (disk.programData.empty())
        disk.programData =
            disk.profiles + u"\\" + textAt(software, kProfileList, u"AllUsersProfile").value_or(u"All Users");
}

std::u16string controlSetKey(unsigned number) {
    std::u16string digits = u"00";
    for (const char c : std::to_string(number)) digits += static_cast<char16_t>(c);
    return u"ControlSet" + digits.substr(digits.size() - 3);
}

// The one that Windows would start with; where the choice is not to be had, the one of the last good start.
void readControlSet(DiskSearch& search, const Hive& system) {
    for (const std::u16string_view choice : {u"Current", u"Default", u"LastKnownGood"}) {
        const std::uint32_t number = numberAt(system, u"Select", choice).value_or(0);
        if (number == 0 || number > 999) continue;
        if (system.find(system.root(), controlSetKey(number)) == kNil) continue;
        search.disk.controlSet = number;
        if (choice != u"Current")
            search.warn("SYSTEM has no current control set; that of \"" + shown(choice) + "\" is taken.");
        return;
    }
    search.warn("SYSTEM names no control set that it has.");
}

void readSystem(DiskSearch& search, const Hive& system) {
    WindowsDisk& disk = search.disk;
    guarded(search, "The control set", [&] { readControlSet(search, system); });
    if (disk.controlSet != 0) {
        const std::u16string manager = controlSetKey(disk.controlSet) + u"\\Control\\Session Manager";
        guarded(search, "The environment", [&] {
            const auto processor = textAt(system, manager + u"\\Environment", u"PROCESSOR_ARCHITECTURE");
            if (processor) disk.is64Bit = processor->find(u"64") != std::u16string::npos;
        });
        guarded(search, "The power settings",
                [&] { disk.fastStart = numberAt(system, manager + u"\\Power", u"HiberbootEnabled") == 1u; });
    }
    guarded(search, "The list of drives", [&] { disk.letters = driveLetters(system); });
}

std::optional<FoundHive> machineHive(const InsideFolder& drive, const std::string& config,
                                     std::string_view name, HiveRole role, HiveContent content) {
    std::optional<FoundHive> hive = hiveNamed(drive, config, name, role, content);
    return hive || content == HiveContent::User ? hive : hiveByContent(drive, config, role, content);
}

void findMachineHives(DiskSearch& search, const std::string& config) {
    struct Row {
        std::string_view name;
        HiveRole role;
        HiveContent content;
    };
    for (const Row& row : {Row{"SOFTWARE", HiveRole::Software, HiveContent::Software},
                           Row{"SYSTEM", HiveRole::System, HiveContent::System},
                           Row{"DEFAULT", HiveRole::DefaultUser, HiveContent::User}}) {
        std::optional<FoundHive> hive = machineHive(search.drive, config, row.name, row.role, row.content);
        if (!hive) {
            search.warn("There is no hive " + std::string(row.name) + " in " + config + ".");
            continue;
        }
        if (!hive->usable()) search.warn("The hive " + hive->path + " can't be used: " + hive->problem + ".");
        search.disk.hives.push_back(std::move(*hive));
    }
}

DiskProblem withoutSoftware(const WindowsDisk& disk) {
    const FoundHive* const hive = disk.hive(HiveRole::Software);
    DiskProblem problem;
    problem.what = hive == nullptr ? "The Windows in " + disk.folder + " has no hive SOFTWARE."
                                   : "The hive " + hive->path + " can't be used: " + hive->problem + ".";
    problem.why = "It tells which Windows this is, where its folders are and who its users are.";
    problem.help =
        "Look at the disk's state first (SMART, chkdsk from a Windows setup medium). A copy of the hive may "
        "lie "
        "in System32/config/RegBack, in a restore point or in a backup; single hives can be read with "
        "--hive.";
    return problem;
}

}  // namespace

std::optional<DiskProblem> describeNt(DiskSearch& search) {
    WindowsDisk& disk = search.disk;
    const InsidePath config = search.drive.find(disk.folder, "System32\\config");
    findMachineHives(search, config.path);
    const FoundHive* const found = disk.hive(HiveRole::Software);
    if (found == nullptr || !found->usable()) return withoutSoftware(disk);
    const OpenHive software = openHive(found->path, found->logs);
    if (!software.hive) return withoutSoftware(disk);
    guarded(search, "The folder of Windows",
            [&] { placeOnDrive(search, textAt(*software.hive, kWindowsNt, u"SystemRoot").value_or(u"")); });
    if (disk.root.empty()) placeOnDrive(search, u"");
    guarded(search, "The version", [&] { readVersion(search, *software.hive); });
    disk.is64Bit = search.drive.find(disk.folder, "SysWOW64").isFolder();
    guarded(search, "The folders", [&] { readFolders(search, *software.hive); });
    if (const FoundHive* const system = disk.hive(HiveRole::System); system != nullptr && system->usable()) {
        const OpenHive open = openHive(system->path, system->logs);
        if (open.hive) readSystem(search, *open.hive);
    }
    if (!disk.is64Bit) {
        disk.programFilesX86.clear();
        disk.commonFilesX86.clear();
    }
    guarded(search, "The list of users", [&] { findUsers(search, *software.hive); });
    findHibernation(search);
    return std::nullopt;
}

}  // namespace bromvale::offline

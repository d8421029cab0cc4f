#include "bromvale-offline/rescue/machine_plan.h"

#include <array>

#include "platform/offline/locale/code_page.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/reg_files/reg_file.h"

extern const unsigned char embedded_components_reg[];
extern const unsigned long embedded_components_reg_size;

namespace bromvale::offline {
namespace {

constexpr const char16_t* kSettings = u"HKEY_CURRENT_USER\\Software\\Bromvale";
constexpr const char16_t* kVersion = u"HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion";
constexpr const char16_t* kClasses = u"HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID";

// Classes that were made for the start.
std::vector<std::u16string>& lentClasses() {
    static std::vector<std::u16string> classes;
    return classes;
}

// A drive of the program's own, in memory: log, undo files and complete copy go there and nowhere else. What
// the disk's machine has under that letter is not at hand.
char freeLetter(const MachinePlan& plan) {
    for (char letter = 'Z'; letter > 'C'; --letter) {
        if (!plan.drives.contains(letter)) return letter;
    }
    return 'B';
}

// The program looks for its components at the start and would begin to register them.
void lendComponents(Registry& registry) {
    Registry components(machine().otherHalf);
    static_cast<void>(
        loadRegText({reinterpret_cast<const char*>(embedded_components_reg), embedded_components_reg_size},
                    "components", components));
    for (const std::u16string& name : components.wideSubKeys(kClasses)) {
        const std::u16string path = std::u16string(kClasses) + u"\\" + name;
        if (registry.exists(path)) continue;
        registry.createKey(path);
        lentClasses().push_back(path);
    }
}

// The user's own settings could make the program remove and close by itself; here it does what the command
// line says.
void setOwnSettings(Registry& registry) {
    registry.deleteKey(kSettings);
    registry.setText(kSettings, u"1stRun", u"0");
}

// The folders of exported registries are looked at as well and not written.
void setUpFolders(const MachinePlan& plan, Machine& machine) {
    const auto rootOf = [](char letter) {
        return std::u16string{static_cast<char16_t>(letter), u':', u'\\'};
    };
    for (const auto& [letter, folder] : plan.drives) machine.drives.protect(rootOf(letter));
    if (plan.drives.contains(machine.appPath()[0]))
        machine.setAppPath(rootOf(freeLetter(plan)) + u"Bromvale");
}

}  // namespace

void setUpDisk(const MachinePlan& plan) {
    Machine& machine = offline::machine();
    if (!plan.isDisk) return setUpFolders(plan, machine);
    for (char letter = 'A'; letter <= 'Z'; ++letter) machine.drives.remove(letter);
    for (const auto& [letter, folder] : plan.drives) {
        machine.drives.addDisk(letter, folder);
        machine.drives.protect(std::u16string{static_cast<char16_t>(letter), u':', u'\\'});
    }
    const char own = freeLetter(plan);
    machine.drives.addMemory(own);
    machine.drives.othersAreElsewhere = true;
    machine.textRules.codePage = plan.codePage;
    machine.otherHalf.classesApart = plan.classesApart;
    machine.otherHalf.seen = plan.halves;
    machine.setOs(plan.os);
    const std::string programs =
        plan.programFiles.empty() ? "C:\\Programme" : storedFromWide(plan.programFiles);
    machine.setFolders(storedFromWide(plan.windowsFolder), programs);
    machine.setAppPath(std::u16string{static_cast<char16_t>(own), u':'} + u"\\Bromvale");
    machine.drives.ownFolder = machine.appPath();
    machine.user = ansiFromUtf16(plan.user);
    for (const auto& [name, value] : plan.environment) machine.environment[name] = value;
    if (!plan.profile.empty()) machine.environment["USERPROFILE"] = plan.profile;
}

void mountHives(const MachinePlan& plan, bool withThoseAgain) {
    Registry& registry = machine().registry;
    for (const Mount& mount : plan.mounts) {
        if (!withThoseAgain && mount.again) continue;
        if (mount.alone) registry.deleteKey(mount.path);
        mountHive(registry, mount.path, mount.hive, mount.place);
    }
    for (const CregMount& mount : plan.cregs) addCreg(registry, mount.path, mount.tree->root, plan.codePage);
}

void mountAll(const MachinePlan& plan) {
    Registry& registry = machine().registry;
    mountHives(plan, true);
    setOwnSettings(registry);
    lendComponents(registry);
    if (!registry.value(kVersion, u"ProgramFilesDir"))
        registry.setText(kVersion, u"ProgramFilesDir", wideFromStored(machine().programFiles()));
}

void startsScan() {
    Registry& registry = machine().registry;
    for (const std::u16string& path : lentClasses()) registry.deleteKey(path);
    lentClasses().clear();
    registry.tree().forgetRemovals();
}

}  // namespace bromvale::offline

#include "tests/proof/machine/stage.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "core/settings.h"
#include "core/state.h"
#include "platform/offline/files/other_half.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/machine.h"

namespace bromvale::proof {
namespace {

namespace fs = std::filesystem;
using offline::machine;

void putUpFiles(const Entry& entry, const std::string& hostPath, const std::string& drive) {
    switch (entry.kind) {
        case EntryKind::Folder:
            fs::create_directories(hostPath);
            for (const Entry& below : entry.entries)
                putUpFiles(below, hostPath + "/" + utf8(below.name), drive);
            return;
        case EntryKind::LinkToFolder: {
            std::string target = utf8(View(entry.target).substr(2));
            for (char& c : target) c = c == '\\' ? '/' : c;
            fs::create_symlink(drive + target, hostPath);
            return;
        }
        case EntryKind::DanglingLink: fs::create_symlink(drive + "/nirgends", hostPath); return;
        case EntryKind::File:
            std::ofstream(hostPath) << "Inhalt von " << hostPath.substr(drive.size());
            return;
    }
}

void putUpInMemory(const Entry& entry, const Text& path) {
    if (entry.kind == EntryKind::File) {
        machine().drives.writeFile(View(path), "Inhalt");
    } else {
        machine().drives.makeFolder(View(path));
    }
    for (const Entry& below : entry.entries) putUpInMemory(below, path + u"\\" + below.name);
}

void readFolder(const offline::Location& drive, std::vector<std::string>& names, DriveSnapshot& snapshot) {
    std::vector<std::string_view> views(names.begin(), names.end());
    std::vector<offline::FileInfo> entries;
    if (drive.volume->list(views, entries) != 0) return;
    for (const offline::FileInfo& entry : entries) {
        names.push_back(entry.name);
        std::string path;
        for (const std::string& name : names) path += "\\" + utf8(offline::wideFromStored(name));
        const bool folder = (entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        snapshot[path] =
            folder ? "<folder>" : machine().drives.readFile(fromUtf8("C:" + path)).value_or("<none>");
        if (folder) readFolder(drive, names, snapshot);
        names.pop_back();
    }
}

void putUpKeys(const Key& key, const Text& path) {
    offline::Registry& registry = machine().registry;
    registry.createKey(View(path));
    for (const Value& value : key.values)
        registry.setValue(View(path), View(value.name), value.type, value.bytes);
    for (const Key& below : key.keys) putUpKeys(below, path + u"\\" + below.name);
    if (key.denied) registry.deny(View(path));
}

void readKeys(const Text& path, RegistrySnapshot& registry) {
    StoredKey& key = registry[lower(View(path))];
    key.path = path;
    for (const offline::WideRegistryValue& value : machine().registry.wideValues(path))
        key.values.emplace(lower(View(value.name)), StoredData{value.name, value.type, value.bytes});
    for (const Text& below : machine().registry.wideSubKeys(path)) readKeys(path + u"\\" + below, registry);
}

void addKeys(const Key& key, const Text& path, RegistrySnapshot& registry) {
    StoredKey& stored = registry[lower(View(path))];
    stored.path = path;
    for (const Value& value : key.values)
        stored.values.emplace(lower(View(value.name)), StoredData{value.name, value.type, value.bytes});
    for (const Key& below : key.keys) addKeys(below, path + u"\\" + below.name, registry);
}

void readBack(Key& key, const Text& path) {
    Key now{key.name, {}, {}, key.denied};
    for (const offline::WideRegistryValue& value : machine().registry.wideValues(path))
        now.values.push_back({value.name, value.type, value.bytes});
    for (const Text& name : machine().registry.wideSubKeys(path)) {
        const Key* before = key.find(name);
        now.keys.push_back({name, {}, {}, before != nullptr && before->denied});
        if (before != nullptr) now.keys.back().keys = before->keys;
        readBack(now.keys.back(), path + u"\\" + name);
    }
    key = std::move(now);
}

constexpr View kMachineName = u"HKEY_LOCAL_MACHINE";
constexpr View kUserName = u"HKEY_CURRENT_USER";

}  // namespace

Stage::Stage(const Model& model, std::string hostFolder) : host_(std::move(hostFolder)) {
    putUpSystem(model.system);
    if (host_.empty()) {
        for (const Entry& entry : model.drive.entries) putUpInMemory(entry, u"C:\\" + entry.name);
    } else {
        putUpFiles(model.drive, hostDrive(), hostDrive());
        machine().drives.addFolder('C', hostDrive());
    }
    if (model.system.sixtyFour)
        offline::setHalves(model.system.programSixtyFour ? offline::Halves::SeenBy64
                                                         : offline::Halves::SeenBy32);
    machine().drives.currentDirectory = "C:\\Programme\\Bromvale";
    putUpState(model.system);
    putUpKeys(model.machine, Text(kMachineName));
    putUpKeys(model.user, Text(kUserName));
}

void Stage::putUpSystem(const System& system) {
    machine().setOs(*offline::osByName(system.os));
    machine().registry.setNtFamily(system.family != Family::Nine);
    machine().textRules.codePage = system.codePage;
    machine().drives.shortNames = system.shortNames;
}

void Stage::putUpState(const System& system) {
    fillState();
    OSName = system.os;
    if (system.family == Family::Nine) SysDir = "C:\\WINDOWS\\SYSTEM\\";
    if (system.family != Family::Modern) RegFileHeader = "REGEDIT4\r\n\r\n";
}

std::string Stage::machineSystemFolder() {
    return machine().systemFolder() + "\\";
}

std::string Stage::fileOnHost(const std::string& path) const {
    std::ifstream in(hostDrive() + "/" + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

RegistrySnapshot readRegistry() {
    RegistrySnapshot registry;
    for (const View hive : {kMachineName, kUserName}) readKeys(Text(hive), registry);
    return registry;
}

DriveSnapshot readMemoryDrive() {
    DriveSnapshot snapshot;
    offline::Location drive;
    std::vector<std::string> names;
    if (machine().drives.locate(View(u"C:\\"), drive) == 0) readFolder(drive, names, snapshot);
    return snapshot;
}

RegistrySnapshot snapshotOf(const Model& model) {
    RegistrySnapshot registry;
    addKeys(model.machine, Text(kMachineName), registry);
    addKeys(model.user, Text(kUserName), registry);
    return registry;
}

void readBack(Model& model) {
    readBack(model.machine, Text(kMachineName));
    readBack(model.user, Text(kUserName));
}

}  // namespace bromvale::proof

#include "tests/hives/disk/made_disk.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "platform/offline/locale/stored_text.h"
#include "tests/hives/disk/made_disk_parts.h"

namespace bromvale::offline {

namespace fs = std::filesystem;

namespace {

struct Row9x {
    Generation generation;
    const char* product;
    const char* version;
};
constexpr Row9x k9x[] = {{Generation::W95, "Microsoft Windows 95", "4.00.950"},
                         {Generation::W98, "Microsoft Windows 98", "4.10.1998"},
                         {Generation::Me, "Microsoft Windows ME", "4.90.3000"}};

MadeKey named(std::u16string_view name) {
    MadeKey key;
    key.name = name;
    return key;
}

void make9x(MadeDisk& disk, const DiskPlan& plan, const Row9x& row) {
    disk.windows = disk.config = disk.root / "WINDOWS";
    MadeCregKey machine;
    const std::string windows = "Software\\Microsoft\\Windows\\CurrentVersion";
    machine.at(windows).values = {{"SystemRoot", 1, "C:\\WINDOWS"},
                                  {"VersionNumber", 1, row.version},
                                  {"ProductName", 1, row.product},
                                  {"ProgramFilesDir", 1, "C:\\Programme"}};
    machine.at("System\\CurrentControlSet");
    machine.at(windows + "\\ProfileList\\J\xFCrgen").values = {
        {"ProfileImagePath", 1, "C:\\WINDOWS\\Profiles\\J\xFCrgen"}};
    if (plan.machine) plan.machine(machine);
    disk.system = disk.software = disk.windows / "SYSTEM.DAT";
    writeFile(disk.system, cregBytes(machine));
    writeFile(disk.windows / "SYSTEM.DA0", "old");
    MadeCregKey users;
    users.at(".DEFAULT\\Software");
    writeFile(disk.windows / "USER.DAT", cregBytes(users));
    MadeCregKey classes;
    classes.at("CLSID");
    if (row.generation == Generation::Me) writeFile(disk.windows / "Classes.dat", cregBytes(classes));
    for (const char16_t* const name : {u"J\u00FCrgen", u"Anna"}) {
        MadeDisk::User user;
        user.name = name;
        user.profile = u"C:\\WINDOWS\\Profiles\\" + user.name;
        user.folder = disk.windows / "Profiles" / hostPath(user.name);
        user.hive = user.folder / "user.dat";
        writeFile(user.hive, cregBytes(users));
        disk.users.push_back(std::move(user));
    }
}

}  // namespace

std::u16string wide(std::string_view utf8) {
    return wideFromStored(storedFromUtf8(utf8));
}

fs::path hostPath(std::u16string path) {
    std::ranges::replace(path, u'\\', u'/');
    return {utf8FromStored(storedFromWide(path))};
}

std::ostream& operator<<(std::ostream& out, Generation generation) {
    constexpr std::array kNames{"W95",   "W98",   "Me",       "Nt4", "W2000", "Xp",
                                "Vista", "Seven", "SevenX64", "Ten", "Eleven"};
    return out << kNames[static_cast<std::size_t>(generation)];
}

std::string bytesOf(std::u16string_view text) {
    std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
    return bytes + std::string(2, '\0');
}

MadeValue textValue(std::u16string name, std::u16string_view text, std::uint32_t type) {
    MadeValue value;
    value.name = std::move(name);
    value.type = type;
    value.data = bytesOf(text);
    return value;
}

MadeValue numberValue(std::u16string name, std::uint32_t number) {
    MadeValue value;
    value.name = std::move(name);
    value.type = 4;
    value.data = std::string(reinterpret_cast<const char*>(&number), sizeof number);
    return value;
}

MadeKey& keyAt(MadeKey& root, std::u16string_view path) {
    MadeKey* key = &root;
    while (!path.empty()) {
        const std::u16string_view name = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(path.size(), name.size() + 1));
        const auto found = std::ranges::find(key->subKeys, name, &MadeKey::name);
        key = found != key->subKeys.end() ? &*found : &key->subKeys.emplace_back(named(name));
    }
    return *key;
}

void writeFile(const fs::path& file, std::string_view bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void make9xDisk(MadeDisk& disk, const DiskPlan& plan) {
    for (const Row9x& row : k9x)
        if (row.generation == plan.generation) make9x(disk, plan, row);
}

MadeDisk makeDisk(const fs::path& root, const DiskPlan& plan) {
    MadeDisk disk;
    disk.root = root;
    fs::create_directories(root);
    makeNtDisk(disk, plan);
    make9xDisk(disk, plan);
    return disk;
}

}  // namespace bromvale::offline

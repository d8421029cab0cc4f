// Disks of NT to 11.
#include "platform/offline/locale/stored_text.h"
#include "tests/hives/disk/made_disk.h"
#include "tests/hives/disk/made_disk_parts.h"
#include "tests/hives/disk/nt_generations.h"

namespace bromvale::offline {

namespace fs = std::filesystem;

namespace {

std::string mbrLetter() {
    return {"\x3E\xA0\xBE\x5C\0\0\x10\0\0\0\0\0", 12};
}
std::string gptLetter() {
    return "DMIO:ID:" + std::string("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10", 16);
}

class NtDisk {
  public:
    NtDisk(MadeDisk& disk, const DiskPlan& plan, const NtRow& row) : disk_(disk), plan_(plan), row_(row) {
        drive_ = std::u16string{static_cast<char16_t>(plan.letter), u':'};
    }

    void make() {
        disk_.windows = disk_.root / row_.windows;
        disk_.config = disk_.windows / row_.config;
        addUser(u"J\u00FCrgen Gro\u00DF", "S-1-5-21-1-2-3-1001");
        addUser(row_.generation == Generation::Nt4 ? u"Anna" : u"\u0141ukasz", "S-1-5-21-1-2-3-1002");
        writeSoftware();
        writeSystem();
        MadeHive standard = userHive(0);
        writeFile(disk_.config / row_.hives[2], bytesOf(standard));
        if (fs::path(row_.profiles) == "Users" || row_.x64) makeLinks();
        makeBystanders();
        if (row_.x64) fs::create_directories(disk_.windows / "SysWOW64");
    }

  private:
    [[nodiscard]] bool classes() const { return row_.local[0] != u'\0'; }
    [[nodiscard]] MadeHive hive(std::u16string_view root) const {
        MadeHive made;
        made.minorVersion = row_.minorVersion;
        made.root.name = root;
        return made;
    }
    // Before 1.5 there are no hashes.
    void write(const fs::path& file, MadeHive& made) const {
        if (made.minorVersion < 5) useLists(made.root);
        writeFile(file, bytesOf(made));
    }
    static void useLists(MadeKey& key) {
        key.list.kind = key_list::kNames;
        for (MadeKey& subKey : key.subKeys) useLists(subKey);
    }

    void addUser(std::u16string name, std::string sid) {
        MadeDisk::User user;
        std::u16string parent = row_.profilesPath;
        if (const auto at = parent.find(u"%SystemDrive%"); at == 0) parent.replace(0, 13, drive_);
        if (const auto at = parent.find(u"%SystemRoot%"); at == 0)
            parent.replace(0, 12, drive_ + row_.systemRoot);
        user.profile = parent + u"\\" + name;
        user.name = std::move(name);
        user.sid = std::move(sid);
        user.folder = disk_.root / row_.profiles / hostPath(user.name);
        const std::size_t number = disk_.users.size();
        MadeHive made = userHive(number);
        if (plan_.user) plan_.user(made, number);
        user.hive = user.folder / (row_.x64 ? "ntuser.dat" : "NTUSER.DAT");
        write(user.hive, made);
        if (classes()) {
            MadeHive own = hive(wide(user.sid) + u"_Classes");
            keyAt(own.root, u"CLSID");
            if (plan_.classes) plan_.classes(own, number);
            user.classes = user.folder / hostPath(row_.local) / "Microsoft/Windows/UsrClass.dat";
            write(user.classes, own);
        }
        disk_.users.push_back(std::move(user));
    }

    [[nodiscard]] MadeHive userHive(std::size_t number) const {
        MadeHive made = hive(u"ROOT");
        keyAt(made.root, u"Control Panel");
        keyAt(made.root, u"Environment");
        MadeKey& explorer = keyAt(made.root, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer");
        explorer.values.push_back(textValue(u"Logon User Name", number == 0 ? u"jgross" : u"lukasz"));
        if (classes())
            keyAt(explorer, u"User Shell Folders")
                .values.push_back(
                    textValue(u"Local AppData", std::u16string(u"%USERPROFILE%\\") + row_.local, 2));
        return made;
    }

    void writeSoftware() {
        MadeHive made = hive(u"CsiTool-CreateHive-{0}");
        keyAt(made.root, u"Classes\\CLSID");
        MadeKey& nt = keyAt(made.root, u"Microsoft\\Windows NT\\CurrentVersion");
        nt.values = {textValue(u"CurrentVersion", wide(row_.version)),
                     textValue(u"CurrentBuildNumber", wide(row_.build)),
                     textValue(u"SystemRoot", drive_ + row_.systemRoot)};
        if (row_.product[0] != '\0') nt.values.push_back(textValue(u"ProductName", wide(row_.product)));
        if (row_.generation == Generation::Seven)
            nt.values.push_back(textValue(u"CSDVersion", u"Service Pack 1"));
        if (row_.major >= 0) {
            nt.values.push_back(
                numberValue(u"CurrentMajorVersionNumber", static_cast<std::uint32_t>(row_.major)));
            nt.values.push_back(numberValue(u"CurrentMinorVersionNumber", 0));
        }
        MadeKey& windows = keyAt(made.root, u"Microsoft\\Windows\\CurrentVersion");
        windows.values = {textValue(u"ProgramFilesDir", drive_ + row_.programs),
                          textValue(u"CommonFilesDir", drive_ + row_.programs + u"\\Common Files")};
        if (row_.x64)
            windows.values.push_back(textValue(u"ProgramFilesDir (x86)", drive_ + row_.programs + u" (x86)"));
        addProfileList(keyAt(nt, u"ProfileList"));
        if (plan_.software) plan_.software(made);
        disk_.software = disk_.config / row_.hives[0];
        write(disk_.software, made);
    }

    void addProfileList(MadeKey& list) const {
        const std::u16string parent = row_.profilesPath;
        list.values = {textValue(u"ProfilesDirectory", parent, 2)};
        if (row_.generation >= Generation::Vista) {
            list.values.push_back(textValue(u"ProgramData", u"%SystemDrive%\\ProgramData", 2));
            list.values.push_back(textValue(u"Public", parent + u"\\Public", 2));
            list.values.push_back(textValue(u"Default", parent + u"\\Default", 2));
        } else {
            list.values.push_back(textValue(u"AllUsersProfile", u"All Users"));
            list.values.push_back(textValue(u"DefaultUserProfile", u"Default User"));
        }
        const auto add = [&](std::u16string_view sid, std::u16string_view path) {
            keyAt(list, sid).values.push_back(textValue(u"ProfileImagePath", path, 2));
        };
        add(u"S-1-5-18", u"%systemroot%\\system32\\config\\systemprofile");
        add(u"S-1-5-19", row_.generation >= Generation::Vista ? u"%systemroot%\\ServiceProfiles\\LocalService"
                                                              : parent + u"\\LocalService");
        add(u"S-1-5-80-11-22-33", u"%SystemDrive%\\Users\\MSSQL");
        for (const MadeDisk::User& user : disk_.users) add(wide(user.sid), parent + u"\\" + user.name);
    }

    void writeSystem() {
        MadeHive made = hive(u"$$$PROTO.HIV");
        keyAt(made.root, u"Select").values = {numberValue(u"Current", 2), numberValue(u"Default", 1),
                                              numberValue(u"LastKnownGood", 1)};
        keyAt(made.root, u"ControlSet001");
        MadeKey& manager = keyAt(made.root, u"ControlSet002\\Control\\Session Manager");
        keyAt(manager, u"Environment").values = {
            textValue(u"PROCESSOR_ARCHITECTURE", row_.x64 ? u"AMD64" : u"x86"),
            textValue(u"windir", u"%SystemRoot%", 2)};
        if (row_.generation >= Generation::Ten)
            keyAt(manager, u"Power").values = {numberValue(u"HiberbootEnabled", 1)};
        if (row_.generation != Generation::Nt4) addLetters(keyAt(made.root, u"MountedDevices"));
        if (plan_.system) plan_.system(made);
        disk_.system = disk_.config / row_.hives[1];
        write(disk_.system, made);
    }

    static void addLetters(MadeKey& mounted) {
        const auto add = [&](std::u16string_view name, std::string data) {
            MadeValue value;
            value.name = name;
            value.type = 3;
            value.data = std::move(data);
            mounted.values.push_back(std::move(value));
        };
        const auto device = [](std::u16string_view text) {
            std::string bytes = bytesOf(text);
            bytes.resize(bytes.size() - 2);
            return bytes;
        };
        add(u"\\DosDevices\\C:", mbrLetter());
        add(u"\\??\\Volume{656b1715-ecf6-11df-92e6-806e6f6e6963}", mbrLetter());
        add(u"\\DosDevices\\F:", gptLetter());
        add(u"\\DosDevices\\D:", device(u"\\??\\IDE#CdRomNECVMWar_VMware_IDE_CDR10#5&1#"));
        add(u"\\DosDevices\\A:", device(u"\\??\\FDC#GENERIC_FLOPPY_DRIVE#6&1#"));
        add(u"\\DosDevices\\E:", device(u"_??_USBSTOR#Disk&Ven_&Prod_Stick#1#"));
    }

    // As the programs that mount such disks show Windows' own links: with the host's path, and relative.
    void makeLinks() const {
        fs::create_directory_symlink(disk_.root / row_.profiles, disk_.root / "Documents and Settings");
        fs::create_directory_symlink("Users", disk_.root / "Dokumente und Einstellungen");
        fs::create_directory_symlink("Default", disk_.root / row_.profiles / "Default User");
    }

    // What must not be taken for the machine's or a user's.
    void makeBystanders() const {
        for (const char* const name : {"SOFTWARE", "SYSTEM", "DEFAULT"}) {
            writeFile(disk_.config / "RegBack" / name, "");
            writeFile(disk_.config / (std::string(row_.hives[0]) + "{guid}.TxR.0.regtrans-ms"), "x");
        }
        writeFile(disk_.config / "TxR" / "SOFTWARE", "x");
        writeFile(disk_.config / (std::string(row_.hives[0]) + ".sav"), "x");
        MadeHive standard = userHive(2);
        for (const char* const name : {"Default", "LocalService"})
            writeFile(disk_.root / row_.profiles / name / "NTUSER.DAT", bytesOf(standard));
        fs::create_directories(disk_.root / row_.profiles / "Public");
    }

    MadeDisk& disk_;
    const DiskPlan& plan_;
    const NtRow& row_;
    std::u16string drive_;
};

}  // namespace

void makeNtDisk(MadeDisk& disk, const DiskPlan& plan) {
    for (const NtRow& row : kNt)
        if (row.generation == plan.generation) NtDisk(disk, plan, row).make();
}

}  // namespace bromvale::offline

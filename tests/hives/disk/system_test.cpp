// What SOFTWARE and SYSTEM tell of a Windows, and what is taken where they don't.
#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kNt = u"Microsoft\\Windows NT\\CurrentVersion";
constexpr std::u16string_view kWindows = u"Microsoft\\Windows\\CurrentVersion";

class DiskSystem : public DiskTest {
  protected:
    DiskSystem() : DiskTest(memory()) {}
    [[nodiscard]] WindowsDisk diskWith(Generation generation, const std::function<void(MadeHive&)>& software,
                                       const std::function<void(MadeHive&)>& system = {}) const {
        DiskPlan plan;
        plan.generation = generation;
        plan.software = software;
        plan.system = system;
        fs::remove_all(folder() / "disk");
        return found(makeDisk(folder() / "disk", plan).root);
    }
    static void take(MadeKey& key, std::u16string_view name) {
        std::erase_if(key.values, [&](const MadeValue& value) { return value.name == name; });
    }
    static void put(MadeKey& key, const MadeValue& value) {
        take(key, value.name);
        key.values.push_back(value);
    }
};

TEST_F(DiskSystem, ElevenIsKnownByItsBuildAlone) {
    const auto productOf = [&](std::u16string_view build, std::u16string_view name) {
        return diskWith(Generation::Ten,
                        [&](MadeHive& software) {
                            put(keyAt(software.root, kNt), textValue(u"CurrentBuildNumber", build));
                            put(keyAt(software.root, kNt), textValue(u"ProductName", name));
                        })
            .product;
    };
    EXPECT_EQ(productOf(u"21999", u"Windows 10 Pro"), u"Windows 10 Pro");
    EXPECT_EQ(productOf(u"22000", u"Windows 10 Pro"), u"Windows 11 Pro");
    EXPECT_EQ(productOf(u"22000", u"Das Windows 10"), u"Das Windows 11");
    EXPECT_EQ(productOf(u"22000", u"Windows Server"), u"Windows Server");
}

TEST_F(DiskSystem, VersionsComeAsNumbersOrAsText) {
    const auto versionOf = [&](const std::function<void(MadeKey&)>& change) {
        return diskWith(Generation::Ten, [&](MadeHive& software) { change(keyAt(software.root, kNt)); });
    };
    WindowsDisk disk = versionOf([](MadeKey& nt) { take(nt, u"CurrentMinorVersionNumber"); });
    EXPECT_EQ(disk.version.major, 10u);
    EXPECT_EQ(disk.version.minor, 0u);
    disk = versionOf([](MadeKey& nt) { put(nt, numberValue(u"CurrentMinorVersionNumber", 3)); });
    EXPECT_EQ(disk.version.minor, 3u);
    disk = versionOf([](MadeKey& nt) { take(nt, u"CurrentMajorVersionNumber"); });
    EXPECT_EQ(disk.version.major, 6u);
    EXPECT_EQ(disk.version.minor, 3u);
    EXPECT_EQ(disk.version.platform, 2u);
    disk = versionOf([](MadeKey& nt) {
        take(nt, u"CurrentMajorVersionNumber");
        put(nt, textValue(u"CurrentVersion", u"1029.387x9"));
        put(nt, textValue(u"CurrentBuildNumber", u"7601 SP"));
        take(nt, u"ProductName");
    });
    EXPECT_EQ(disk.version.major, 1029u);
    EXPECT_EQ(disk.version.minor, 387u);
    EXPECT_EQ(disk.version.build, 7601u);
    EXPECT_EQ(disk.product, u"Windows NT");
    disk = versionOf([](MadeKey& nt) {
        for (const char16_t* const name :
             {u"CurrentMajorVersionNumber", u"CurrentVersion", u"CurrentBuildNumber", u"ProductName"})
            take(nt, name);
    });
    EXPECT_EQ(disk.version.major, 0u);
    EXPECT_EQ(disk.version.build, 0u);
    EXPECT_EQ(disk.product, u"");
    disk = versionOf([](MadeKey& nt) {
        put(nt, textValue(u"CurrentBuildNumber", u"1234567890"));
        put(nt, textValue(u"CSDVersion", u"Service Pack 7"));
    });
    EXPECT_EQ(disk.version.build, 123456789u) << "no number is that long";
    EXPECT_EQ(disk.servicePack, u"Service Pack 7");
}

TEST_F(DiskSystem, TheFoldersOf32BitsStandInEitherHalf) {
    WindowsDisk disk = diskWith(Generation::SevenX64, [](MadeHive& software) {
        put(keyAt(software.root, kWindows), textValue(u"CommonFilesDir (x86)", u"C:\\c86"));
    });
    EXPECT_EQ(disk.programFilesX86, u"C:\\Program Files (x86)");
    EXPECT_EQ(disk.commonFilesX86, u"C:\\c86");
    disk = diskWith(Generation::SevenX64, [](MadeHive& software) {
        take(keyAt(software.root, kWindows), u"ProgramFilesDir (x86)");
        keyAt(software.root, u"Wow6432Node\\Microsoft\\Windows\\CurrentVersion").values = {
            textValue(u"ProgramFilesDir", u"%SystemDrive%\\p32", 2),
            textValue(u"CommonFilesDir", u"C:\\c32")};
    });
    EXPECT_EQ(disk.programFiles, u"C:\\Program Files");
    EXPECT_EQ(disk.programFilesX86, u"C:\\p32");
    EXPECT_EQ(disk.commonFilesX86, u"C:\\c32");
}

TEST_F(DiskSystem, A32BitWindowsHasNoFoldersBesidesItsOwn) {
    const WindowsDisk disk = diskWith(Generation::Xp, [](MadeHive& software) {
        put(keyAt(software.root, kWindows), textValue(u"ProgramFilesDir (x86)", u"C:\\p86"));
        put(keyAt(software.root, kWindows), textValue(u"CommonFilesDir (x86)", u"C:\\c86"));
    });
    EXPECT_EQ(disk.programFilesX86, u"");
    EXPECT_EQ(disk.commonFilesX86, u"");
}

TEST_F(DiskSystem, TheControlSetIsThatOfTheNextStart) {
    struct Row {
        std::uint32_t current;
        std::uint32_t standard;
        std::uint32_t good;
        unsigned expected;
        const char* warning;
    };
    const Row rows[] = {
        {1, 2, 2, 1, ""},
        {10, 2, 2, 10, ""},
        {999, 2, 2, 999, ""},
        {1000, 2, 1, 2, "SYSTEM has no current control set; that of \"Default\" is taken."},
        {0, 7, 1, 1, "SYSTEM has no current control set; that of \"LastKnownGood\" is taken."},
        {0, 0, 0, 0, "SYSTEM names no control set that it has."},
        {7, 8, 9, 0, "SYSTEM names no control set that it has."}};
    for (const Row& row : rows) {
        const WindowsDisk disk = diskWith(Generation::Seven, {}, [&](MadeHive& system) {
            keyAt(system.root, u"Select").values = {numberValue(u"Current", row.current),
                                                    numberValue(u"Default", row.standard),
                                                    numberValue(u"LastKnownGood", row.good)};
            keyAt(system.root, u"ControlSet010");
            keyAt(system.root, u"ControlSet999");
            keyAt(system.root, u"ControlSet000");
            keyAt(system.root, u"ControlSet1000");
        });
        EXPECT_EQ(disk.controlSet, row.expected);
        std::vector<std::string> warnings;
        if (row.warning[0] != '\0') warnings.emplace_back(row.warning);
        EXPECT_EQ(disk.warnings, warnings);
    }
}

TEST_F(DiskSystem, WhatTheProcessorIsDecidesWhereItIsTold) {
    const auto with = [&](Generation generation, const char16_t* processor) {
        return diskWith(generation, {}, [&](MadeHive& system) {
            MadeKey& environment =
                keyAt(system.root, u"ControlSet002\\Control\\Session Manager\\Environment");
            take(environment, u"PROCESSOR_ARCHITECTURE");
            if (processor != nullptr) put(environment, textValue(u"PROCESSOR_ARCHITECTURE", processor));
        });
    };
    EXPECT_TRUE(with(Generation::Seven, u"ARM64").is64Bit);
    const WindowsDisk x86 = with(Generation::SevenX64, u"x86");
    EXPECT_FALSE(x86.is64Bit);
    EXPECT_EQ(x86.programFilesX86, u"");
    EXPECT_TRUE(with(Generation::SevenX64, nullptr).is64Bit) << "SysWOW64 is there";
    EXPECT_FALSE(with(Generation::Seven, nullptr).is64Bit);
}

TEST_F(DiskSystem, FastStartIsOneAndNothingElse) {
    for (const std::uint32_t number : {0u, 1u, 2u}) {
        const WindowsDisk disk = diskWith(Generation::Ten, {}, [&](MadeHive& system) {
            keyAt(system.root, u"ControlSet002\\Control\\Session Manager\\Power").values = {
                numberValue(u"HiberbootEnabled", number)};
        });
        EXPECT_EQ(disk.fastStart, number == 1);
    }
}

TEST_F(DiskSystem, AHibernationFileOfAPageThatIsNoneIsDoubtful) {
    const MadeDisk made = make(Generation::Seven);
    const fs::path file = made.root / "hiberfil.sys";
    writeFile(file, std::string(4096, 'x'));
    EXPECT_EQ(found(made.root).hibernation, Hibernation::Doubtful);
    writeFile(file, std::string(4095, 'x'));
    EXPECT_EQ(found(made.root).hibernation, Hibernation::Hibernated);
    fs::remove(file);
    fs::create_symlink("none", file);
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.hibernation, Hibernation::Doubtful);
    EXPECT_EQ(disk.hibernationFile, (fs::canonical(made.root) / "hiberfil.sys").string());
}

std::string utf16(std::u16string_view text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

TEST_F(DiskSystem, WhatStandsBehindALetterIsKnownByItsName) {
    using Kind = DriveLetter::Kind;
    struct Row {
        std::u16string name;
        std::string data;
        Kind kind;
    };
    const Row rows[] = {
        {u"\\DosDevices\\a:", utf16(u"\\??\\GENERIC#fdc#1"), Kind::Floppy},
        {u"\\DosDevices\\B:", utf16(u"\\??\\SCSI#FloppyDisk"), Kind::Floppy},
        {u"\\dosdevices\\c:", utf16(u"_??_USBSTOR#CdRom"), Kind::Cd},
        {u"\\DosDevices\\D:", utf16(u"_??_UsbStor#Disk"), Kind::UsbStick},
        {u"\\DosDevices\\E:", utf16(u"STORAGE#RemovableMedia#7"), Kind::OtherRemovable},
        {u"\\DosDevices\\F:", "DMIO:ID:\xAB\xCD\xEF\x01\x23\x45\x67\x89\x9A\xBC\xDE\xF0\x12\x34\x56\x78",
         Kind::GptPartition},
        {u"\\DosDevices\\G:", "DMIO:ix:0123456789ABCDEF", Kind::Unknown},
        {u"\\DosDevices\\H:", utf16(u"FDC"), Kind::Unknown},
        {u"\\DosDevices\\I:", std::string(11, 'x'), Kind::Unknown},
        {u"\\DosDevices\\J:", std::string("\1\2\3\4\5\6\7\x08\x09\x0A\x0B\x0C", 12), Kind::Partition},
        {u"\\DosDevices\\K:", std::string(4096, 'x'), Kind::Unknown},
        {u"\\DosDevices\\Z:", std::string(24, 'x'), Kind::Unknown},
    };
    const WindowsDisk disk = diskWith(Generation::Seven, {}, [&](MadeHive& system) {
        MadeKey& mounted = keyAt(system.root, u"MountedDevices");
        mounted.values.clear();
        for (std::size_t i = std::size(rows); i-- > 0;)
            mounted.values.push_back({rows[i].name, 3, rows[i].data});
        mounted.values.push_back({u"\\DosDevices\\L:", 3, std::string(4097, 'x')});
        for (const char16_t* const name :
             {u"\\DosDevices\\@:", u"\\DosDevices\\[:", u"\\DosDevices\\MM", u"\\DosDevicex\\M:",
              u"\\DosDevices\\M:\\", u"\\DosDevices\\M", u"M:"})
            mounted.values.push_back({name, 3, "x"});
    });
    ASSERT_EQ(disk.letters.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(disk.letters[i].kind, rows[i].kind) << i;
        EXPECT_EQ(disk.letters[i].letter, i == 11 ? 'Z' : static_cast<char>('A' + i));
    }
    EXPECT_EQ(disk.letters[5].partitionGuid, "01EFCDAB-4523-8967-9ABC-DEF012345678");
    EXPECT_EQ(disk.letters[9].diskSignature, 0x04030201u);
    EXPECT_EQ(disk.letters[9].partitionStart, 0x0C0B0A0908070605u);
    EXPECT_EQ(disk.letters[7].device, u"FDC");
    EXPECT_EQ(disk.letters[9].device, u"");
}

}  // namespace
}  // namespace bromvale::offline

// A Windows on a mounted disk: each generation is found with all that the disk tells of it.
#include "platform/offline/hives/disk/disk.h"

#include "platform/offline/hives/disk/creg.h"
#include "tests/hives/disk/disk_files.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

class Disk : public DiskTest {};

struct Expected {
    Generation generation;
    OsVersion version;
    std::u16string_view product;
    std::u16string_view windows;
    bool x64;
    std::u16string_view programs;
};

class DiskOf : public DiskTest, public ::testing::WithParamInterface<Expected> {};

TEST_P(DiskOf, IsFoundFromItsRootAndFromItsWindowsFolder) {
    const Expected& expected = GetParam();
    if (expected.version.platform == 1 && !hasCregReader()) GTEST_SKIP() << "built without libcreg";
    const MadeDisk made = make(expected.generation);
    const auto before = state(made.root);
    for (const fs::path& given : {made.root, made.windows}) {
        SCOPED_TRACE(given);
        const WindowsDisk disk = found(given);
        EXPECT_EQ(disk.warnings, std::vector<std::string>());
        EXPECT_EQ(disk.nt, expected.version.platform == 2);
        EXPECT_EQ(disk.root, fs::canonical(made.root));
        EXPECT_EQ(disk.folder, fs::canonical(made.windows));
        EXPECT_EQ(disk.letter, 'C');
        EXPECT_EQ(disk.windowsFolder, expected.windows);
        EXPECT_EQ(disk.version.platform, expected.version.platform);
        EXPECT_EQ(disk.version.major, expected.version.major);
        EXPECT_EQ(disk.version.minor, expected.version.minor);
        EXPECT_EQ(disk.version.build, expected.version.build);
        EXPECT_EQ(disk.product, expected.product);
        EXPECT_EQ(disk.is64Bit, expected.x64);
        EXPECT_EQ(disk.programFiles, expected.programs);
        EXPECT_EQ(disk.programFilesX86,
                  expected.x64 ? std::u16string(expected.programs) + u" (x86)" : std::u16string());
        EXPECT_EQ(disk.controlSet, disk.nt ? 2u : 0u);
        EXPECT_EQ(disk.fastStart, disk.version.major == 10);
        EXPECT_EQ(disk.hibernation, Hibernation::None);
        ASSERT_EQ(disk.users.size(), 2u);
        for (std::size_t i = 0; i < 2; ++i) {
            const DiskUser& user = disk.users[i];
            EXPECT_EQ(user.problem, "");
            EXPECT_EQ(user.name, made.users[i].name);
            EXPECT_EQ(user.sid, made.users[i].sid);
            EXPECT_EQ(user.profile, made.users[i].profile);
            EXPECT_EQ(user.folder, fs::canonical(made.users[i].folder));
            ASSERT_TRUE(user.hive);
            EXPECT_EQ(user.hive->path, fs::canonical(made.users[i].hive));
            EXPECT_FALSE(user.hive->isLink);
            EXPECT_FALSE(user.mandatory);
            EXPECT_EQ(user.classes.has_value(), !made.users[i].classes.empty());
            if (user.classes) {
                EXPECT_EQ(user.classes->path, fs::canonical(made.users[i].classes));
                EXPECT_EQ(user.classes->problem, "");
            }
        }
        const FoundHive* const machine = disk.hive(disk.nt ? HiveRole::Software : HiveRole::Machine);
        ASSERT_NE(machine, nullptr);
        EXPECT_EQ(machine->path, fs::canonical(made.software));
        EXPECT_EQ(disk.hives.size(), disk.nt || disk.version.minor == 90 ? 3u : 2u);
        EXPECT_EQ(disk.letters.size(), disk.nt && disk.version.major > 4 ? 5u : 0u);
    }
    EXPECT_EQ(state(made.root), before);
}

INSTANTIATE_TEST_SUITE_P(
    Generation, DiskOf,
    ::testing::Values(
        Expected{Generation::W95,
                 {1, 4, 0, 0x040003B6},
                 u"Microsoft Windows 95",
                 u"C:\\WINDOWS",
                 false,
                 u"C:\\Programme"},
        Expected{Generation::W98,
                 {1, 4, 10, 0x040A07CE},
                 u"Microsoft Windows 98",
                 u"C:\\WINDOWS",
                 false,
                 u"C:\\Programme"},
        Expected{Generation::Me,
                 {1, 4, 90, 0x045A0BB8},
                 u"Microsoft Windows ME",
                 u"C:\\WINDOWS",
                 false,
                 u"C:\\Programme"},
        Expected{Generation::Nt4, {2, 4, 0, 1381}, u"Windows NT", u"C:\\WINNT", false, u"C:\\Programme"},
        Expected{Generation::W2000,
                 {2, 5, 0, 2195},
                 u"Microsoft Windows 2000",
                 u"C:\\WINNT",
                 false,
                 u"C:\\Program Files"},
        Expected{Generation::Xp,
                 {2, 5, 1, 2600},
                 u"Microsoft Windows XP",
                 u"C:\\WINDOWS",
                 false,
                 u"C:\\Programme"},
        Expected{Generation::Vista,
                 {2, 6, 0, 6002},
                 u"Windows Vista (TM) Business",
                 u"C:\\Windows",
                 false,
                 u"C:\\Program Files"},
        Expected{Generation::Seven,
                 {2, 6, 1, 7601},
                 u"Windows 7 Professional",
                 u"C:\\Windows",
                 false,
                 u"C:\\Program Files"},
        Expected{Generation::SevenX64,
                 {2, 6, 1, 7601},
                 u"Windows 7 Ultimate",
                 u"C:\\Windows",
                 true,
                 u"C:\\Program Files"},
        Expected{Generation::Ten,
                 {2, 10, 0, 19045},
                 u"Windows 10 Pro",
                 u"C:\\WINDOWS",
                 true,
                 u"C:\\Program Files"},
        Expected{Generation::Eleven,
                 {2, 10, 0, 22631},
                 u"Windows 11 Home",
                 u"C:\\Windows",
                 true,
                 u"C:\\Program Files"}));

// Before Vista by a name below the profiles, which is that of the language; then by a path of its own.
TEST_F(Disk, FoldersOfAllUsersAreReadFromTheRegistry) {
    DiskPlan plan;
    plan.generation = Generation::Xp;
    plan.software = [](MadeHive& software) {
        MadeKey& list = keyAt(software.root, u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList");
        for (MadeValue& value : list.values) {
            if (value.name == u"AllUsersProfile") value = textValue(u"AllUsersProfile", u"Alle Benutzer");
        }
    };
    const WindowsDisk xp = found(makeDisk(folder() / "disk", plan).root);
    EXPECT_EQ(xp.profiles, u"C:\\Dokumente und Einstellungen");
    EXPECT_EQ(xp.programData, u"C:\\Dokumente und Einstellungen\\Alle Benutzer");
    EXPECT_EQ(xp.publicUser, u"");
    EXPECT_EQ(xp.commonFiles, u"C:\\Programme\\Common Files");
    EXPECT_EQ(xp.commonFilesX86, u"");
}

TEST_F(Disk, OfVistaAndLaterTheyHavePathsOfTheirOwn) {
    const WindowsDisk seven = found(make(Generation::SevenX64).root);
    EXPECT_EQ(seven.profiles, u"C:\\Users");
    EXPECT_EQ(seven.programData, u"C:\\ProgramData");
    EXPECT_EQ(seven.publicUser, u"C:\\Users\\Public");
    EXPECT_EQ(seven.commonFiles, u"C:\\Program Files\\Common Files");
}

TEST_F(Disk, WithoutAListOfProfilesTheyAreWhereTheFirstNtHadThem) {
    DiskPlan plan;
    plan.generation = Generation::Nt4;
    plan.software = [](MadeHive& software) {
        keyAt(software.root, u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList").values.clear();
    };
    const WindowsDisk disk = found(makeDisk(folder() / "disk", plan).root);
    EXPECT_EQ(disk.profiles, u"C:\\WINNT\\Profiles");
    EXPECT_EQ(disk.programData, u"C:\\WINNT\\Profiles\\All Users");
}

TEST_F(Disk, TheDrivesLettersTellWhatTheyStandFor) {
    const WindowsDisk disk = found(make(Generation::SevenX64).root);
    ASSERT_EQ(disk.letters.size(), 5u);
    using Kind = DriveLetter::Kind;
    const auto expect = [&](std::size_t index, char letter, Kind kind, bool removable) {
        EXPECT_EQ(disk.letters[index].letter, letter);
        EXPECT_EQ(disk.letters[index].kind, kind);
        EXPECT_EQ(disk.letters[index].removable(), removable);
    };
    expect(0, 'A', Kind::Floppy, true);
    expect(1, 'C', Kind::Partition, false);
    expect(2, 'D', Kind::Cd, true);
    expect(3, 'E', Kind::UsbStick, true);
    expect(4, 'F', Kind::GptPartition, false);
    EXPECT_EQ(disk.letters[1].diskSignature, 0x5CBEA03Eu);
    EXPECT_EQ(disk.letters[1].partitionStart, 0x100000u);
    EXPECT_EQ(disk.letters[4].partitionGuid, "04030201-0605-0807-090A-0B0C0D0E0F10");
    EXPECT_TRUE(disk.letters[2].device.starts_with(u"\\??\\IDE#CdRomNECVMWar"));
}

TEST_F(Disk, LogsStandBesideTheirHivesInAnyCase) {
    const MadeDisk made = make(Generation::SevenX64);
    writeFile(made.config / "SOFTWARE.LOG1", "");
    writeFile(made.config / "software.log2", "x");
    writeFile(made.config / "Software.Log", "x");
    writeFile(made.users[0].folder / "NTUSER.DAT.log1", "x");
    const WindowsDisk disk = found(made.root);
    const FoundHive* const software = disk.hive(HiveRole::Software);
    ASSERT_NE(software, nullptr);
    ASSERT_EQ(software->logs.size(), 3u);
    EXPECT_EQ(software->logs[0].path, fs::canonical(made.config / "Software.Log"));
    EXPECT_EQ(software->logs[0].name, LogName::Log);
    EXPECT_EQ(software->logs[1].name, LogName::Log1);
    EXPECT_EQ(software->logs[2].path, fs::canonical(made.config / "software.log2"));
    EXPECT_EQ(software->logs[2].name, LogName::Log2);
    ASSERT_EQ(disk.users[0].hive->logs.size(), 1u);
}

TEST_F(Disk, ADirtyHiveIsReadWithItsLog) {
    const MadeDisk made = make(Generation::Ten);
    const std::string before = bytesOf(made.software);
    DiskPlan plan;
    plan.generation = Generation::Ten;
    plan.software = [](MadeHive& software) {
        for (MadeValue& value : keyAt(software.root, u"Microsoft\\Windows NT\\CurrentVersion").values)
            if (value.name == u"ProductName") value = textValue(u"ProductName", u"Windows 10 Uni");
    };
    const std::string after = bytesOf(makeDisk(folder() / "after", plan).software);
    std::string dirty = before;
    setSequence(dirty, 2, 1);
    writeFile(made.software, dirty);
    writeFile(made.config / "SOFTWARE.LOG1", newLog(dirty, 2, {{2, before, after}}));
    EXPECT_EQ(found(made.root).product, u"Windows 10 Uni");
}

TEST_F(Disk, AHibernatedOneSaysSo) {
    const MadeDisk made = make(Generation::Ten);
    const fs::path file = made.root / "HiberFil.sys";
    const std::string rest(8192, '\0');
    const std::pair<std::string, Hibernation> kCases[] = {{"hibr" + rest, Hibernation::Hibernated},
                                                          {"HIBR" + rest, Hibernation::Hibernated},
                                                          {"", Hibernation::Hibernated},
                                                          {std::string(4095, 'x'), Hibernation::Hibernated},
                                                          {rest, Hibernation::Doubtful},
                                                          {"wake" + rest, Hibernation::Doubtful}};
    for (const auto& [content, expected] : kCases) {
        writeFile(file, content);
        const WindowsDisk disk = found(made.root);
        EXPECT_EQ(disk.hibernation, expected) << content.substr(0, 4) << content.size();
        EXPECT_EQ(disk.hibernationFile, fs::canonical(file));
    }
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_EQ(found(made.root).hibernation, Hibernation::Doubtful);
    fs::remove(file);
    fs::create_symlink("/dev/zero", file);
    EXPECT_EQ(found(made.root).hibernation, Hibernation::Doubtful);
}

TEST_F(Disk, AHibernated9xSaysSoToo) {
    if (!hasCregReader()) GTEST_SKIP() << "built without libcreg";
    const MadeDisk made = make(Generation::Me);
    EXPECT_EQ(found(made.root).hibernation, Hibernation::None);
    writeFile(made.root / "HIBERFIL.SYS", "hibr");
    EXPECT_EQ(found(made.root).hibernation, Hibernation::Hibernated);
}

TEST_F(Disk, OneThatIsNoDriveCHasItsLetter) {
    DiskPlan plan;
    plan.letter = 'D';
    const WindowsDisk disk = found(makeDisk(folder() / "disk", plan).root);
    EXPECT_EQ(disk.letter, 'D');
    EXPECT_EQ(disk.windowsFolder, u"D:\\Windows");
    EXPECT_EQ(disk.programFiles, u"D:\\Program Files");
    ASSERT_EQ(disk.users.size(), 2u);
    EXPECT_EQ(disk.users[0].problem, "");
    EXPECT_TRUE(disk.users[0].profile.starts_with(u"D:\\Users\\"));
}

TEST_F(Disk, HivesAreKnownByWhatTheyHold) {
    const MadeDisk made = make(Generation::Seven);
    fs::rename(made.software, made.config / "SOFT");
    EXPECT_EQ(found(made.root).hive(HiveRole::Software)->path, fs::canonical(made.config / "SOFT"));
    fs::copy_file(made.system, made.software);
    const DiskProblem told = problem(made.root);
    EXPECT_NE(told.what.find("SOFTWARE can't be used: it holds something else."), std::string::npos)
        << told.what;
}

TEST_F(Disk, WhereTheNameIsThereTwiceTheOneThatCanBeUsedIsTaken) {
    const MadeDisk made = make(Generation::Seven);
    fs::rename(made.software, made.config / "Software");
    writeFile(made.software, "");
    EXPECT_EQ(found(made.root).hive(HiveRole::Software)->path, fs::canonical(made.config / "Software"));
}

TEST_F(Disk, WithoutTheLibraryFor9xThePackageIsNamed) {
    if (hasCregReader()) GTEST_SKIP() << "built with libcreg";
    const DiskProblem told = problem(make(Generation::W98).root);
    EXPECT_NE(told.what.find("SYSTEM.DAT can't be read: this program was built without libcreg"),
              std::string::npos)
        << told.what;
    EXPECT_NE(told.help.find("libcreg-dev"), std::string::npos);
}

class RealRegistryDisk : public DiskTest {};

TEST_F(RealRegistryDisk, OfRealHivesTellsTheirWindows) {
    const fs::path root = folder() / "disk";
    const fs::path config = root / "Windows/System32/config";
    writeFile(config / "SOFTWARE", realHive("win7-x86-SOFTWARE"));
    writeFile(config / "SYSTEM", realHive("win7-SYSTEM"));
    writeFile(config / "DEFAULT", realHive("winxp-NTUSER.DAT"));
    const fs::path user = root / "Users/Somebody";
    writeFile(user / "NTUSER.DAT", realHive("win10-dirty-NTUSER.DAT"));
    writeFile(user / "ntuser.dat.LOG1", realHive("win10-dirty-NTUSER.DAT.LOG1"));
    writeFile(user / "ntuser.dat.LOG2", realHive("win10-dirty-NTUSER.DAT.LOG2"));
    writeFile(user / "AppData/Local/Microsoft/Windows/UsrClass.dat", realHive("win81-UsrClass.dat"));
    const WindowsDisk disk = found(root);
    EXPECT_EQ(disk.version.major, 6u);
    EXPECT_EQ(disk.version.minor, 1u);
    EXPECT_EQ(disk.version.build, 7601u);
    EXPECT_EQ(disk.servicePack, u"Service Pack 1");
    EXPECT_EQ(disk.windowsFolder, u"C:\\Windows");
    EXPECT_FALSE(disk.is64Bit);
    EXPECT_EQ(disk.controlSet, 1u);
    EXPECT_EQ(disk.letters.size(), 4u);
    EXPECT_EQ(disk.hives.size(), 3u);
    EXPECT_EQ(disk.warnings, std::vector<std::string>());
    // Eight of its list, whose folders are not there, and the folder.
    ASSERT_EQ(disk.users.size(), 9u);
    const DiskUser& somebody = disk.users.back();
    EXPECT_EQ(somebody.name, u"Somebody");
    EXPECT_EQ(somebody.problem, "");
    ASSERT_TRUE(somebody.hive && somebody.classes);
    EXPECT_EQ(somebody.hive->logs.size(), 2u);
    EXPECT_TRUE(somebody.classes->usable());
    EXPECT_TRUE(somebody.sid.starts_with("S-1-5-21-"));
}

}  // namespace
}  // namespace bromvale::offline

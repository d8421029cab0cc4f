// Disks as nobody would make them by accident: they are told, and nothing outside is opened.
#include <algorithm>
#include <random>

#include "tests/hives/disk/disk_files.h"
#include "tests/hives/hive_rounds.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

class OddDisk : public DiskTest {
  protected:
    static void expectProblem(const fs::path& root, std::string_view part) {
        const DiskProblem told = problem(root);
        EXPECT_NE(told.what.find(part), std::string::npos) << told.what;
    }
};

TEST_F(OddDisk, AHiveThatIsALinkIsReadInsideAndMarked) {
    const MadeDisk made = make(Generation::Seven);
    fs::rename(made.software, made.root / "moved");
    fs::create_symlink("../../../moved", made.software);
    const WindowsDisk disk = found(made.root);
    EXPECT_TRUE(disk.hive(HiveRole::Software)->isLink);
    EXPECT_EQ(disk.hive(HiveRole::Software)->path, fs::canonical(made.root / "moved"));
    fs::rename(made.root / "moved", folder() / "moved");
    fs::remove(made.software);
    fs::create_symlink(folder() / "moved", made.software);
    expectProblem(made.root, "SOFTWARE can't be used: it is a link that leads out of the disk");
    fs::remove(made.software);
    fs::create_symlink("SOFTWARE", made.software);
    expectProblem(made.root, "SOFTWARE can't be used: it is a link that leads in a circle");
    fs::remove(made.software);
    fs::create_symlink("nothing", made.software);
    expectProblem(made.root, "SOFTWARE can't be used: it is a link to something that is not there");
}

TEST_F(OddDisk, WhatStandsInPlaceOfAHiveIsTold) {
    const MadeDisk made = make(Generation::Seven);
    const std::string good = bytesOf(made.software);
    const std::pair<std::string, std::string> kCases[] = {
        {"", "the file is empty"},
        {"regf", "the file is shorter than a first sector"},
        {std::string(8192, '\0'), "the file does not begin with \"regf\""},
        {good.substr(0, 4096), "the hive's bins reach beyond the end of the file"},
        {good.substr(0, 4096) + std::string(good.size() - 4096, '\0'),
         "an offset leads to no cell that is in use"}};
    for (const auto& [content, part] : kCases) {
        writeFile(made.software, content);
        expectProblem(made.root, part);
    }
    fs::remove(made.software);
    fs::create_directory(made.software);
    expectProblem(made.root, "SOFTWARE can't be used: it is a folder");
    fs::remove(made.software);
    ASSERT_EQ(::mkfifo(made.software.c_str(), 0600), 0);
    expectProblem(made.root, "SOFTWARE can't be used: it is no plain file");
}

TEST_F(OddDisk, WithoutAUsableSystemTheRestIsFound) {
    const MadeDisk made = make(Generation::SevenX64);
    writeFile(made.system, "");
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.controlSet, 0u);
    EXPECT_TRUE(disk.is64Bit);
    EXPECT_EQ(disk.users.size(), 2u);
    ASSERT_EQ(disk.warnings.size(), 1u);
    EXPECT_NE(disk.warnings[0].find("can't be used: the file is empty."), std::string::npos);
}

TEST_F(OddDisk, AWindowsFolderThatIsALinkIsNoSecondWindows) {
    const MadeDisk made = make(Generation::Seven);
    fs::create_directory_symlink("Windows", made.root / "WINNT");
    DiskPlan plan;
    plan.generation = Generation::Ten;
    fs::create_directory_symlink(makeDisk(folder() / "other", plan).windows, made.root / "Windows10");
    EXPECT_EQ(found(made.root).version.build, 7601u);
    EXPECT_EQ(found(made.root / "WINNT").folder, fs::canonical(made.windows));
}

TEST_F(OddDisk, AFolderOfAnotherNameThanWindowsSaysIsTakenAndTold) {
    const MadeDisk made = make(Generation::Seven);
    fs::rename(made.windows, made.root / "Kopie");
    const WindowsDisk disk = found(made.root / "Kopie");
    EXPECT_EQ(disk.windowsFolder, u"C:\\Kopie");
    EXPECT_EQ(disk.root, fs::canonical(made.root));
    ASSERT_EQ(disk.warnings.size(), 1u);
    EXPECT_NE(disk.warnings[0].find("\"C:\\Windows\""), std::string::npos) << disk.warnings[0];
}

TEST_F(OddDisk, WhatTheHivesSayMayBeAnything) {
    const auto set = [](const std::u16string& key, std::u16string name, MadeValue value) {
        value.name = std::move(name);
        return [=](MadeHive& hive) {
            MadeKey& made = keyAt(hive.root, key);
            std::erase_if(made.values, [&](const MadeValue& old) { return old.name == value.name; });
            made.values.push_back(value);
        };
    };
    const std::u16string nt = u"Microsoft\\Windows NT\\CurrentVersion";
    const std::u16string huge(20000, u'x');
    MadeValue bytes;
    bytes.type = 3;
    bytes.data = std::string(3, '\xFF');
    const std::u16string odd[] = {u"",
                                  huge,
                                  u"\\\\server\\share",
                                  u"C:",
                                  u"C:\\",
                                  u"C:\\..\\..\\..",
                                  u"99999999999999999999.9",
                                  u"%SystemRoot%%SystemRoot%",
                                  u"\xD800"};
    for (const std::u16string& text : odd) {
        fs::remove_all(folder() / "disk");
        DiskPlan user;
        user.generation = Generation::Seven;
        user.software =
            set(nt + u"\\ProfileList\\S-1-5-21-1-2-3-1001", u"ProfileImagePath", textValue(u"", text, 2));
        static_cast<void>(findWindows(makeDisk(folder() / "disk", user).root.string()));
        for (const char16_t* const name : {u"SystemRoot", u"CurrentVersion", u"CurrentBuildNumber"}) {
            fs::remove_all(folder() / "disk");
            DiskPlan plan;
            plan.generation = Generation::Seven;
            plan.software = set(nt, name, textValue(name, text));
            static_cast<void>(findWindows(makeDisk(folder() / "disk", plan).root.string()));
        }
    }
    for (const MadeValue& value :
         {numberValue(u"", 0), numberValue(u"", 5000), textValue(u"", u"2"), bytes}) {
        fs::remove_all(folder() / "disk");
        DiskPlan plan;
        plan.generation = Generation::Seven;
        plan.system = set(u"Select", u"Current", value);
        const WindowsDisk disk = found(makeDisk(folder() / "disk", plan).root);
        EXPECT_EQ(disk.controlSet, 1u);
        EXPECT_EQ(
            disk.warnings,
            (std::vector<std::string>{"SYSTEM has no current control set; that of \"Default\" is taken."}));
    }
    fs::remove_all(folder() / "disk");
    DiskPlan plan;
    plan.system = set(u"MountedDevices", u"\\DosDevices\\Z:", bytes);
    const WindowsDisk disk = found(makeDisk(folder() / "disk", plan).root);
    ASSERT_EQ(disk.letters.size(), 6u);
    EXPECT_EQ(disk.letters.back().kind, DriveLetter::Kind::Unknown);
}

TEST_F(OddDisk, MutatedHivesGiveADiskOrAProblem) {
    const MadeDisk made = make(Generation::SevenX64);
    const fs::path files[] = {made.software, made.system, made.users[0].hive, made.users[0].classes};
    std::mt19937 numbers(5);
    for (std::uint32_t round = hiveRounds(1500) / 10; round > 0; --round) {
        const fs::path& file = files[numbers() % std::size(files)];
        const std::string good = bytesOf(file);
        std::string bytes = good;
        for (auto left = 1 + numbers() % 6; left > 0; --left)
            bytes[numbers() % bytes.size()] = static_cast<char>(numbers());
        writeFile(file, bytes);
        static_cast<void>(findWindows(made.root.string()));
        writeFile(file, good);
    }
    EXPECT_EQ(found(made.root).warnings, std::vector<std::string>());
}

}  // namespace
}  // namespace bromvale::offline

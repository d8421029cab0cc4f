// What the registry of Windows 95 to ME tells, and what is said where it tells nothing.
#include <tuple>

#include "platform/offline/hives/disk/creg.h"
#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

constexpr const char* kWindows = "Software\\Microsoft\\Windows\\CurrentVersion";

class Disk9x : public DiskTest {
  protected:
    Disk9x() : DiskTest(memory()) {}
    void SetUp() override {
        if (!hasCregReader()) GTEST_SKIP() << "built without libcreg";
    }
    [[nodiscard]] MadeDisk madeWith(const std::function<void(MadeCregKey&)>& change,
                                    Generation generation = Generation::W98) const {
        DiskPlan plan;
        plan.generation = generation;
        plan.machine = change;
        fs::remove_all(folder() / "disk");
        return makeDisk(folder() / "disk", plan);
    }
    static void put(MadeCregKey& machine, const MadeCregValue& value) {
        auto& values = machine.at(kWindows).values;
        std::erase_if(values, [&](const MadeCregValue& other) { return other.name == value.name; });
        values.push_back(value);
    }
};

TEST_F(Disk9x, TellsItsFolders) {
    const MadeDisk made = madeWith([](MadeCregKey& machine) {
        put(machine, {"CommonFilesDir", 2, "C:\\Programme\\Gemeinsame Dateien\\ \xDC"});
        put(machine, {"ProgramFilesDir", 1, std::string("C:\\Prog\0ramme", 13)});
        put(machine, {"ProductName", 3, "Bytes"});
    });
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.commonFiles, u"C:\\Programme\\Gemeinsame Dateien\\ \u00DC");
    EXPECT_EQ(disk.programFiles, u"C:\\Prog");
    EXPECT_EQ(disk.product, u"");
    EXPECT_EQ(disk.profiles, u"C:\\WINDOWS\\Profiles");
    EXPECT_EQ(disk.programData, u"C:\\WINDOWS\\All Users");
    EXPECT_EQ(disk.publicUser, u"");
    ASSERT_EQ(disk.hives.size(), 2u);
    EXPECT_EQ(disk.hives[0].role, HiveRole::Machine);
    EXPECT_EQ(disk.hives[1].role, HiveRole::Users);
    EXPECT_EQ(disk.users[0].hive->role, HiveRole::User);
    const WindowsDisk me = found(madeWith({}, Generation::Me).root);
    ASSERT_EQ(me.hives.size(), 3u);
    EXPECT_EQ(me.hives[2].role, HiveRole::MachineClasses);
}

TEST_F(Disk9x, AVersionIsThreeNumbersOfWhichTwoAreInTheBuildAgain) {
    const std::tuple<const char*, DWORD, DWORD, DWORD> rows[] = {
        {"4.10.2222", 4, 10, 0x040A08AE},        {"4.90", 4, 90, 0x045A0000}, {"", 0, 0, 0}, {"x", 0, 0, 0},
        {"259.258.65537", 259, 258, 0x03020001}, {"4 9/8", 4, 9, 0x04090008}};
    for (const auto& row : rows) {
        const char* const text = std::get<0>(row);
        const WindowsDisk disk = found(madeWith([&](MadeCregKey& machine) {
                                           put(machine, {"VersionNumber", 1, text});
                                       }).root);
        EXPECT_EQ(disk.version.platform, 1u);
        EXPECT_EQ(disk.version.major, std::get<1>(row)) << text;
        EXPECT_EQ(disk.version.minor, std::get<2>(row)) << text;
        EXPECT_EQ(disk.version.build, std::get<3>(row)) << text;
    }
}

TEST_F(Disk9x, AUserThatCannotBeLookedAtIsListedWithWhy) {
    const MadeDisk made = madeWith([](MadeCregKey& machine) {
        const std::string list = std::string(kWindows) + "\\ProfileList\\";
        machine.at(list + "Weg").values = {{"ProfileImagePath", 1, "C:\\WINDOWS\\Profiles\\Weg"}};
        machine.at(list + "Leer").values = {{"ProfileImagePath", 2, "%windir%\\Profiles\\Leer"}};
        machine.at(list + "Kaputt").values = {{"ProfileImagePath", 1, "C:\\WINDOWS\\Profiles\\Kaputt"}};
        machine.at(list + "Ohne").values = {{"Anderes", 1, "C:\\WINDOWS\\Profiles\\Anna"}};
        machine.at(list + "Zweimal").values = {{"ProfileImagePath", 1, "C:\\WINDOWS\\PROFILES\\KAPUTT"}};
    });
    const fs::path profiles = made.windows / "Profiles";
    fs::create_directory(profiles / "Leer");
    writeFile(profiles / "Kaputt/User.dat", "regf");
    fs::create_directory(profiles / "Niemand");
    const WindowsDisk disk = found(made.root);
    std::map<std::u16string, std::string> problems;
    for (const DiskUser& user : disk.users) problems[user.name] = user.problem;
    const std::map<std::u16string, std::string> expected{
        {u"J\u00FCrgen", ""},
        {u"Weg", "the profile's folder is not there"},
        {u"Leer", "the profile has no USER.DAT"},
        {u"Kaputt", (fs::canonical(profiles) / "Kaputt/User.dat").string() +
                        " can't be used: it is no registry of Windows 95 to ME"},
        {u"Anna", ""}};
    EXPECT_EQ(problems, expected);
    EXPECT_EQ(disk.users.size(), expected.size());
    EXPECT_EQ(disk.users.back().name, u"Anna") << "folders without an entry come last";
    EXPECT_EQ(disk.users.back().profile, u"C:\\WINDOWS\\Profiles\\Anna");
}

TEST_F(Disk9x, HivesThatCannotBeUsedAreWarnings) {
    const MadeDisk made = madeWith({}, Generation::Me);
    writeFile(made.windows / "USER.DAT", "CREX");
    fs::remove(made.windows / "Classes.dat");
    fs::create_directory(made.windows / "Classes.dat");
    const WindowsDisk disk = found(made.root);
    const std::string windows = fs::canonical(made.windows).string();
    EXPECT_EQ(disk.warnings,
              (std::vector<std::string>{
                  "The file " + windows + "/USER.DAT can't be used: it is no registry of Windows 95 to ME.",
                  "The file " + windows + "/Classes.dat can't be used: it is a folder."}));
    EXPECT_EQ(disk.hives.size(), 3u);
}

TEST_F(Disk9x, WithoutTheMachinesRegistryThereIsNothing) {
    const MadeDisk made = madeWith({});
    writeFile(made.system, "CREG");
    const DiskProblem told = problem(made.root);
    EXPECT_EQ(told.what,
              "The registry " + fs::canonical(made.system).string() +
                  " can't be read: the file ends, or its cell does, before what it is said to hold.");
    EXPECT_EQ(told.why, "It tells which Windows this is and where its folders are.");
    EXPECT_EQ(
        told.help,
        "A copy of it may lie beside it as SYSTEM.DA0, or in SYSBCKUP as RB000.CAB; Windows' own \"scanreg "
        "/restore\" takes these.");
    writeFile(made.system, "CREX");
    EXPECT_EQ(problem(made.root).what,
              made.root.string() +
                  " holds no Windows: no folder in it has System32/config with hives, or a SYSTEM.DAT.");
}

}  // namespace
}  // namespace bromvale::offline

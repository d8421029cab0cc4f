// The users of a disk: those of the machine's list and those whose folders alone are there.
#include <algorithm>

#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kProfileList = u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList";

class DiskUsers : public DiskTest {
  protected:
    // With more entries in the list of profiles.
    MadeDisk makeWith(std::initializer_list<std::pair<std::u16string, std::u16string>> entries) const {
        DiskPlan plan;
        plan.generation = Generation::Seven;
        plan.software = [&](MadeHive& software) {
            for (const auto& [sid, path] : entries)
                keyAt(software.root, std::u16string(kProfileList) + u"\\" + sid)
                    .values.push_back(textValue(u"ProfileImagePath", path, 2));
        };
        return makeDisk(folder() / "disk", plan);
    }
    static const DiskUser* userOf(const WindowsDisk& disk, std::u16string_view name) {
        const auto user = std::ranges::find(disk.users, name, &DiskUser::name);
        return user == disk.users.end() ? nullptr : &*user;
    }
    static std::string classesOf(std::u16string_view sid) {
        MadeHive hive;
        hive.root.name = std::u16string(sid) + u"_Classes";
        return offline::bytesOf(hive);
    }
};

TEST_F(DiskUsers, AFolderWithoutAnEntryIsAUserWhoseClassesTellTheSid) {
    const MadeDisk made = make(Generation::Seven);
    fs::copy(made.users[0].folder, made.root / "Users/Vergessen", fs::copy_options::recursive);
    fs::remove(made.root / "Users/Vergessen/AppData/Local/Microsoft/Windows/UsrClass.dat");
    writeFile(made.root / "Users/Vergessen/AppData/Local/Microsoft/Windows/usrclass.DAT",
              classesOf(u"S-1-5-21-9"));
    fs::create_directory(made.root / "Users/Nobody");
    writeFile(made.root / "Users/desktop.ini", "x");
    const WindowsDisk disk = found(made.root);
    ASSERT_EQ(disk.users.size(), 3u);
    EXPECT_EQ(disk.users[2].name, u"Vergessen");
    EXPECT_EQ(disk.users[2].sid, "S-1-5-21-9");
    EXPECT_EQ(disk.users[2].profile, u"C:\\Users\\Vergessen");
    ASSERT_TRUE(disk.users[2].classes);
    EXPECT_TRUE(disk.users[2].classes->usable());
}

TEST_F(DiskUsers, AMandatoryProfileSaysSo) {
    const MadeDisk made = make(Generation::Xp);
    fs::rename(made.users[0].hive, made.users[0].folder / "ntuser.man");
    const WindowsDisk disk = found(made.root);
    EXPECT_TRUE(disk.users[0].mandatory);
    EXPECT_EQ(disk.users[0].hive->path, fs::canonical(made.users[0].folder / "ntuser.man"));
    EXPECT_FALSE(disk.users[1].mandatory);
}

TEST_F(DiskUsers, ClassesAreFoundWhereverTheUsersHiveSays) {
    DiskPlan plan;
    plan.generation = Generation::Xp;
    plan.user = [](MadeHive& user, std::size_t number) {
        MadeKey& folders =
            keyAt(user.root, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders");
        if (number == 0) folders.values = {textValue(u"Local AppData", u"C:\\Daten\\Lokal", 2)};
        if (number == 1) folders.values.clear();
    };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const fs::path moved = made.root / "Daten/Lokal/Microsoft/Windows/UsrClass.dat";
    fs::create_directories(moved.parent_path());
    fs::rename(made.users[0].classes, moved);
    const WindowsDisk disk = found(made.root);
    ASSERT_EQ(disk.users.size(), 2u);
    ASSERT_TRUE(disk.users[0].classes);
    EXPECT_EQ(disk.users[0].classes->path, fs::canonical(moved));
    ASSERT_TRUE(disk.users[1].classes);
    EXPECT_EQ(disk.users[1].classes->path, fs::canonical(made.users[1].classes));
    EXPECT_EQ(disk.users[0].account, u"jgross");
}

TEST_F(DiskUsers, ClassesOfSomebodyElseAreNotTheUsers) {
    const MadeDisk made = make(Generation::Seven);
    writeFile(made.users[0].classes, classesOf(u"S-1-5-21-666"));
    writeFile(made.users[1].classes, bytesOf(made.users[1].hive));
    const WindowsDisk disk = found(made.root);
    ASSERT_TRUE(disk.users[0].classes);
    EXPECT_EQ(disk.users[0].classes->problem, "it belongs to S-1-5-21-666");
    EXPECT_EQ(disk.users[1].classes->problem, "it holds something else");
}

TEST_F(DiskUsers, OneWhoseProfileIsNotToBeHadIsListedWithWhy) {
    const MadeDisk made = makeWith({{u"S-1-5-21-7", u"E:\\Profile\\Otto"},
                                    {u"S-1-5-21-8", u"%SystemDrive%\\Users\\Weg"},
                                    {u"S-1-5-21-9", u"%SystemDrive%\\Users\\Leer"},
                                    {u"S-1-5-21-10", u"C:\\Users\\J\u00FCrgen Gro\u00DF"},
                                    {u"S-1-5-21-11.bak", u"C:\\Users\\Kaputt"}});
    fs::create_directories(made.root / "Users/Leer");
    writeFile(made.root / "Users/Kaputt/NTUSER.DAT", "regf");
    const WindowsDisk disk = found(made.root);
    const auto expect = [&](std::u16string_view name, std::string_view problem) {
        const DiskUser* const user = userOf(disk, name);
        ASSERT_NE(user, nullptr);
        EXPECT_NE(user->problem.find(problem), std::string::npos) << user->problem;
    };
    expect(u"Otto", "lies on a drive that is not at hand: E:\\Profile\\Otto");
    expect(u"Weg", "the profile's folder is not there");
    expect(u"Leer", "the profile has no NTUSER.DAT");
    expect(u"Kaputt", "can't be used: the file is shorter than a first sector");
    EXPECT_EQ(userOf(disk, u"Kaputt")->sid, "S-1-5-21-11");
    // Two entries of one folder are one user.
    EXPECT_EQ(disk.users.size(), 6u);

    DiskPlan plan;
    plan.generation = Generation::Seven;
    const MadeDisk other = makeDisk(folder() / "other", plan);
    fs::create_directories(folder() / "e/profile");
    fs::copy(other.users[0].folder, folder() / "e/profile/OTTO", fs::copy_options::recursive);
    const auto result = findWindows(made.root.string(), {{'e', (folder() / "e").string()}});
    ASSERT_TRUE(std::holds_alternative<WindowsDisk>(result));
    const DiskUser* const otto = userOf(std::get<WindowsDisk>(result), u"Otto");
    ASSERT_NE(otto, nullptr);
    EXPECT_EQ(otto->problem, "");
    EXPECT_EQ(otto->folder, fs::canonical(folder() / "e/profile/OTTO"));
}

TEST_F(DiskUsers, AProfileBehindWindowsOwnLinkIsFollowed) {
    const MadeDisk made = makeWith({{u"S-1-5-21-7", u"%SystemDrive%\\Documents and Settings\\Otto"}});
    fs::copy(made.users[0].folder, made.root / "Users/Otto", fs::copy_options::recursive);
    fs::remove_all(made.root / "Users/Otto/AppData");
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.users.size(), 3u);
    EXPECT_EQ(userOf(disk, u"Otto")->folder, fs::canonical(made.root / "Users/Otto"));
    EXPECT_FALSE(userOf(disk, u"Otto")->classes);
}

TEST_F(DiskUsers, AProfileBehindALinkThatLeadsOutIsNotTouched) {
    const MadeDisk made = makeWith({{u"S-1-5-21-7", u"C:\\Users\\Otto"}});
    fs::copy(made.users[0].folder, folder() / "outside", fs::copy_options::recursive);
    fs::create_directory_symlink(folder() / "outside", made.root / "Users/Otto");
    fs::remove(made.users[1].hive);
    fs::create_symlink(folder() / "outside/NTUSER.DAT", made.users[1].hive);
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(userOf(disk, u"Otto")->folder, "");
    EXPECT_EQ(userOf(disk, u"Otto")->problem,
              "the profile's folder lies behind a link that leads out of the disk");
    EXPECT_EQ(disk.users[1].hive->problem, "it is a link that leads out of the disk");
}

}  // namespace
}  // namespace bromvale::offline

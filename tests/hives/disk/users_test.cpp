// The users of a disk: those of the machine's list and those whose folders alone are there.
#include <algorithm>

#include "platform/offline/hives/hive.h"
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
    EXPECT_EQ(disk.users[0].problem, "");
    EXPECT_EQ(disk.users[0].account, u"jgross");
    EXPECT_EQ(disk.users[0].hive->role, HiveRole::User);
    EXPECT_EQ(disk.users[0].hive->path, fs::canonical(made.users[0].folder / "ntuser.man"));
    EXPECT_FALSE(disk.users[1].mandatory);
}

TEST_F(DiskUsers, AMandatoryProfileWithoutAnEntryIsAUserToo) {
    const MadeDisk made = make(Generation::Seven);
    fs::create_directory(made.root / "Users/Kiosk");
    fs::copy(made.users[0].hive, made.root / "Users/Kiosk/Ntuser.man");
    fs::create_directory(made.root / "Users/Kiosk2");
    writeFile(made.root / "Users/Kiosk2/NTUSER.MA", "x");
    const WindowsDisk disk = found(made.root);
    ASSERT_EQ(disk.users.size(), 3u);
    EXPECT_EQ(disk.users[2].name, u"Kiosk");
    EXPECT_TRUE(disk.users[2].mandatory);
    EXPECT_EQ(disk.users[2].problem, "");
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

// Deeper than it is looked for without the hive.
TEST_F(DiskUsers, ClassesAreFoundBelowTheUsersProfileThatTheHiveNamesByAVariable) {
    DiskPlan plan;
    plan.generation = Generation::Xp;
    plan.user = [](MadeHive& user, std::size_t) {
        keyAt(user.root, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders")
            .values = {textValue(u"Local AppData", u"%USERPROFILE%\\Eins\\Zwei\\Drei", 2)};
    };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const fs::path moved = made.users[0].folder / "Eins/Zwei/Drei/Microsoft/Windows/UsrClass.dat";
    fs::create_directories(moved.parent_path());
    fs::rename(made.users[0].classes, moved);
    const WindowsDisk disk = found(made.root);
    ASSERT_FALSE(disk.users.empty());
    ASSERT_TRUE(disk.users[0].classes);
    EXPECT_EQ(disk.users[0].classes->path, fs::canonical(moved));
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

TEST_F(DiskUsers, EachReasonIsToldWordForWord) {
    const MadeDisk made = makeWith({{u"S-1-5-21-7", u"E:\\Profile\\Otto"},
                                    {u"S-1-5-21-8", u"C:\\Users\\Weg"},
                                    {u"S-1-5-21-9", u"C:\\Users\\Leer"},
                                    {u"S-1-5-21-10", u"C:\\Users\\Datei"},
                                    {u"S-1-5-21-11", u"C:\\Users\\Kaputt"},
                                    {u"S-1-5-21-12", u"C:\\Users\\Schaden"}});
    fs::create_directories(made.root / "Users/Leer");
    writeFile(made.root / "Users/Datei", "x");
    const std::string broken = fs::canonical(made.root).string() + "/Users/Kaputt/NTUSER.DAT";
    writeFile(broken, "regf");
    std::string bytes = bytesOf(made.users[0].hive);
    const Hive hive{HiveBytes(bytes)};
    const HiveKey explorer =
        hive.key(cellOf(bytes, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer"));
    bytes[hive.cell(hive.values(explorer)[0]).place()] = 'x';
    const std::string damaged = fs::canonical(made.root).string() + "/Users/Schaden/NTUSER.DAT";
    writeFile(damaged, bytes);
    const WindowsDisk disk = found(made.root);
    const auto problemOf = [&](std::u16string_view name) { return userOf(disk, name)->problem; };
    EXPECT_EQ(problemOf(u"Otto"), "the profile lies on a drive that is not at hand: E:\\Profile\\Otto");
    EXPECT_EQ(problemOf(u"Weg"), "the profile's folder is not there");
    EXPECT_EQ(problemOf(u"Leer"), "the profile has no NTUSER.DAT");
    EXPECT_EQ(problemOf(u"Datei"), "the profile's folder is a file");
    EXPECT_EQ(problemOf(u"Kaputt"), broken + " can't be used: the file is shorter than a first sector");
    EXPECT_EQ(problemOf(u"Schaden"), damaged + " is damaged: an offset leads to no value");
    EXPECT_EQ(userOf(disk, u"Datei")->folder, "");
}

// Neither by the list nor by their folders.
TEST_F(DiskUsers, ServicesAreNone) {
    const std::u16string services[] = {u"S-1-5-18",   u"S-1-5-19",   u"S-1-5-20",   u"S-1-5-80-1",
                                       u"S-1-5-82-1", u"S-1-5-83-1", u"S-1-5-90-1", u"S-1-5-96-1"};
    const std::u16string users[] = {u"S-1-5-21-9", u"S-1-5-180", u"S-1-5-81-1", u"S-1-5-8"};
    DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [&](MadeHive& software) {
        MadeKey& list = keyAt(software.root, kProfileList);
        list.subKeys.clear();
        for (const auto& sid : services)
            keyAt(list, sid).values = {textValue(u"ProfileImagePath", u"C:\\Users\\x" + sid, 2)};
        for (const auto& sid : users)
            keyAt(list, sid).values = {textValue(u"ProfileImagePath", u"C:\\Users\\x" + sid, 2)};
        keyAt(list, u"S-1-5-21-10");
    };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const std::string hive = bytesOf(made.users[0].hive);
    for (const auto& sid : services)
        writeFile(made.root / "Users" / ("x" + std::string(sid.begin(), sid.end())) / "NTUSER.DAT", hive);
    const WindowsDisk disk = found(made.root);
    std::vector<std::u16string> names;
    for (const DiskUser& user : disk.users) names.push_back(user.name);
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::u16string>{u"J\u00FCrgen Gro\u00DF", u"xS-1-5-180", u"xS-1-5-21-9",
                                                  u"xS-1-5-8", u"xS-1-5-81-1", u"\u0141ukasz"}))
        << "those of no list by their folders";
}

TEST_F(DiskUsers, TemplatesAreNone) {
    DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [](MadeHive& software) {
        keyAt(software.root, kProfileList).values = {
            textValue(u"ProfilesDirectory", u"%SystemDrive%\\Users", 2),
            textValue(u"DefaultUserProfile", u"Standard"), textValue(u"AllUsersProfile", u"Alle"),
            textValue(u"Default", u"C:\\Users\\Vorgabe"), textValue(u"Public", u"C:\\Users\\Gemein\\")};
    };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const std::string hive = bytesOf(made.users[0].hive);
    fs::remove(made.root / "Users/Default User");
    for (const char* const name : {"Default", "DEFAULT USER", "All Users", "public", "LocalService",
                                   "NetworkService", "standard", "Alle", "Vorgabe", "Gemein"})
        writeFile(made.root / "Users" / name / "NTUSER.DAT", hive);
    EXPECT_EQ(found(made.root).users.size(), 2u);
    writeFile(made.root / "Users/Defaults/NTUSER.DAT", hive);
    EXPECT_EQ(found(made.root).users.size(), 3u);
}

TEST_F(DiskUsers, AreLookedForBesideThoseOfTheListButNotInTheRootOfADrive) {
    const MadeDisk made = makeWith({{u"S-1-5-21-7", u"C:\\Profile\\Otto"}, {u"S-1-5-21-8", u"C:\\Eva"}});
    const std::string hive = bytesOf(made.users[0].hive);
    for (const char* const name : {"Profile/Otto", "Profile/Beate", "Eva", "Adam"})
        writeFile(made.root / name / "NTUSER.DAT", hive);
    const WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.users.size(), 5u);
    ASSERT_NE(userOf(disk, u"Beate"), nullptr);
    EXPECT_EQ(userOf(disk, u"Beate")->profile, u"C:\\Profile\\Beate");
    EXPECT_EQ(userOf(disk, u"Adam"), nullptr);
}

TEST_F(DiskUsers, WithoutAListAreThoseOfTheProfilesFolder) {
    DiskPlan plan;
    plan.generation = Generation::Seven;
    plan.software = [](MadeHive& software) { keyAt(software.root, kProfileList).subKeys.clear(); };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const WindowsDisk disk = found(made.root);
    ASSERT_EQ(disk.users.size(), 2u);
    EXPECT_EQ(disk.users[0].sid, made.users[0].sid) << "by the classes";
    EXPECT_EQ(disk.users[0].account, u"jgross");
}

TEST_F(DiskUsers, AMandatoryOneIsKnownByItsFolderToo) {
    const MadeDisk made =
        makeWith({{u"S-1-5-21-7", u"C:\\Users\\Otto.MAN"}, {u"S-1-5-21-8", u"C:\\Users\\.man"}});
    const std::string hive = bytesOf(made.users[0].hive);
    writeFile(made.root / "Users/Otto.MAN/NTUSER.DAT", hive);
    writeFile(made.root / "Users/.man/NTUSER.DAT", hive);
    const WindowsDisk disk = found(made.root);
    EXPECT_TRUE(userOf(disk, u"Otto.MAN")->mandatory);
    EXPECT_FALSE(userOf(disk, u".man")->mandatory);
}

TEST_F(DiskUsers, ClassesOfVistaAreKnownWithoutTheUsersHive) {
    const MadeDisk made = make(Generation::Seven);
    writeFile(made.users[0].folder / "AAA/BBB/Microsoft/Windows/UsrClass.dat",
              bytesOf(made.users[0].classes));
    writeFile(made.users[0].hive, "regf");
    const WindowsDisk disk = found(made.root);
    ASSERT_TRUE(disk.users[0].classes);
    EXPECT_EQ(disk.users[0].classes->path, fs::canonical(made.users[0].classes));
}

// Wherever they lie two folders deep, the first that is one; before Vista nothing else tells.
TEST_F(DiskUsers, ClassesTwoFoldersDeepAreFoundBehindOthers) {
    DiskPlan plan;
    plan.generation = Generation::Xp;
    plan.user = [](MadeHive& user, std::size_t) {
        keyAt(user.root, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders")
            .values.clear();
    };
    const MadeDisk made = makeDisk(folder() / "disk", plan);
    const fs::path user = made.users[0].folder;
    fs::create_directories(user / "Anderes/Leer");
    fs::create_directories(user / "Anderes/Weiter/Microsoft");
    writeFile(user / "Anderes/datei", "x");
    writeFile(user / "datei", "x");
    writeFile(user / "Zuletzt/Ordner/Microsoft/Windows/UsrClass.dat", classesOf(u"S-1-5-21-9"));
    const WindowsDisk disk = found(made.root);
    ASSERT_TRUE(disk.users[0].classes);
    EXPECT_EQ(disk.users[0].classes->path, fs::canonical(made.users[0].classes));
    EXPECT_EQ(disk.users[0].classes->role, HiveRole::UserClasses);
    EXPECT_EQ(disk.users[0].hive->role, HiveRole::User);
}

}  // namespace
}  // namespace bromvale::offline

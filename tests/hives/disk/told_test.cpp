// What a user reads where no Windows is found or a part of it can't be read, word for word.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "platform/offline/hives/disk/disk_parts.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

TEST_F(DiskTest, TheStartOfAFileIsWhatItHasAtMost) {
    std::ofstream(folder() / "short") << "abc";
    EXPECT_EQ(startOf((folder() / "short").string(), 10), "abc");
    EXPECT_EQ(startOf((folder() / "short").string(), 2), "ab");
    EXPECT_EQ(startOf((folder() / "missing").string(), 2), std::nullopt);
    EXPECT_EQ(startOf(folder().string(), 2), std::nullopt);
    ASSERT_EQ(::mkfifo((folder() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(startOf((folder() / "pipe").string(), 2), "") << "nobody writes, and nobody waits";
}

class DiskTold : public DiskTest {
  protected:
    DiskTold() : DiskTest(memory()) {}
    void expectTold(const fs::path& path, const std::string& what, const std::string& why,
                    const std::string& help) const {
        const DiskProblem told = problem(path);
        EXPECT_EQ(told.what, what);
        EXPECT_EQ(told.why, why);
        EXPECT_EQ(told.help, help);
        EXPECT_TRUE(told.choices.empty());
    }
    [[nodiscard]] MadeDisk seven(const std::function<void(DiskPlan&)>& change = {}) const {
        DiskPlan plan;
        plan.generation = Generation::Seven;
        if (change) change(plan);
        fs::remove_all(folder() / "disk");
        return makeDisk(folder() / "disk", plan);
    }
    // The first value of a key in a hive's file is none any more.
    static void spoilValue(const fs::path& file, std::u16string_view path) {
        std::string bytes = bytesOf(file);
        const Hive hive{HiveBytes(bytes)};
        const HiveKey key = hive.key(cellOf(bytes, path));
        ASSERT_GT(key.valueCount, 0u);
        const std::size_t place = hive.cell(hive.values(key)[0]).place();
        bytes[place] = 'x';
        writeFile(file, bytes);
    }
    static void spoilKey(const fs::path& file, std::u16string_view path) {
        std::string bytes = bytesOf(file);
        bytes[Hive{HiveBytes(bytes)}.cell(cellOf(bytes, path)).place()] = 'x';
        writeFile(file, bytes);
    }
};

constexpr const char* kNothing = "Nothing is looked at where the registry of a Windows was not found.";

// Of several traces the first counts: they go one by one.
TEST_F(DiskTold, WhatAFolderIsThatHoldsNoWindows) {
    struct Row {
        const char* path;
        const char* what;
        const char* help;
    };
    const Row rows[] = {
        {"dislocker-file", " holds a disk of BitLocker that is unlocked, but not mounted.",
         "Mount the file dislocker-file in it (mount -o loop,ro), and give that folder."},
        {"EFI/Microsoft/Boot", " is the small partition from which the computer starts.",
         "Mount the partition on which Windows itself is, mostly the largest one."},
        {"Boot/BCD", " is the small partition from which Windows starts.",
         "Mount the partition on which Windows itself is, mostly the largest one."},
        {"CONFIG", " is a folder inside of Windows.", "Give the Windows folder, or the root of the disk."},
        {"windows/system32", " has a Windows folder without a registry.",
         "Look whether System32/config is there and holds the files SOFTWARE and SYSTEM; a backup may have "
         "them."},
        {"Windows.old/Windows/System32/config", " has an earlier Windows only, in Windows.old.",
         "Give the folder Windows.old/Windows if that one is meant."},
        {"System Volume Information", " is a disk of Windows, but no Windows is on it.",
         "Mount the partition on which the folder Windows is."},
        {"Fotos", " holds no Windows: no folder in it has System32/config with hives, or a SYSTEM.DAT.",
         "Give the root of the disk, or the Windows folder itself."}};
    const fs::path disk = folder() / "disk";
    for (const Row& row : rows) fs::create_directories(disk / row.path);
    for (const Row& row : rows) {
        expectTold(disk, disk.string() + row.what, kNothing, row.help);
        fs::remove_all(disk / row.path);
    }
    fs::remove_all(disk);
    fs::create_directory(disk);
    expectTold(disk, disk.string() + " is empty: probably nothing is mounted there.", kNothing,
               "Mount the disk there (mount -o ro /dev/sdXN " + disk.string() + ").");
}

TEST_F(DiskTold, WhatAFileIs) {
    const std::string image = write("image", "\xEB\x58\x90-FVE-FS-");
    expectTold(
        image, image + " is a volume that BitLocker has encrypted.",
        "Without its key nothing on it can be read.",
        "Unlock it with the recovery key (cryptsetup bitlkOpen, or dislocker), mount what comes of it, and "
        "give that folder.");
    for (const char* const content : {"", "-FVE-FS-", "\xEB\x58\x90-FVE-FS", "\xEB\x58\x90NTFS    "}) {
        write("image", content);
        expectTold(image, image + " is no folder.", "What is looked at is a disk that is mounted.",
                   "Mount it read-only (mount -o ro /dev/sdXN FOLDER), and give the folder.");
    }
}

TEST_F(DiskTold, WhatCannotBeRead) {
    const std::string why = "The folders and the registry of Windows lie there.";
    const std::string none = (folder() / "none").string();
    expectTold(none, none + " can't be read: No such file or directory.", why,
               "Give the folder where the disk is mounted.");
    const fs::path locked = folder() / "locked";
    fs::create_directories(locked / "below");
    fs::permissions(locked, fs::perms::none);
    const bool root = ::geteuid() == 0;
    ASSERT_EQ(0, ::chmod(folder().c_str(), 0755));
    ASSERT_TRUE(!root || ::setresuid(65534, 65534, 0) == 0);
    for (const fs::path& path : {locked, locked / "below"}) {
        expectTold(path, path.string() + " can't be read: Permission denied.", why,
                   "Start the program as a user who may read the disk (root, with sudo).");
    }
    ASSERT_TRUE(!root || ::setresuid(0, 0, 0) == 0);
    fs::permissions(locked, fs::perms::owner_all);
}

// One that may read it may not always hide that he did.
TEST_F(DiskTold, WhatAFileOfSomebodyElseIs) {
    const std::string image = write("image", "\xEB\x58\x90-FVE-FS-");
    ASSERT_EQ(0, ::chmod(folder().c_str(), 0755));
    const bool root = ::geteuid() == 0;
    ASSERT_TRUE(!root || ::seteuid(65534) == 0);
    EXPECT_EQ(problem(image).what, image + " is a volume that BitLocker has encrypted.");
    ASSERT_TRUE(!root || ::seteuid(0) == 0);
}

TEST_F(DiskTold, LookingLeavesNoTraceInTheTimesAndNoFileOpen) {
    const std::string image = write("image", "\xEB\x58\x90-FVE-FS-");
    const timespec old[2] = {{1'000'000'000, 0}, {1'100'000'000, 0}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, image.c_str(), old, 0));
    const int before = ::dup(STDIN_FILENO);
    ::close(before);
    static_cast<void>(problem(image));
    const int after = ::dup(STDIN_FILENO);
    ::close(after);
    EXPECT_EQ(after, before);
    struct stat state {};
    ASSERT_EQ(0, ::stat(image.c_str(), &state));
    EXPECT_EQ(state.st_atim.tv_sec, 1'000'000'000);
}

TEST_F(DiskTold, SeveralWindowsWithTheirFolders) {
    const MadeDisk xp = make(Generation::Xp);
    const MadeDisk two = make(Generation::W2000);
    EXPECT_EQ(problem(xp.root).text(),
              "There are 2 Windows on this disk.\nEach has its own registry, and what is right in one is "
              "wrong in the "
              "other.\nGive the folder of the one that is meant:\n  " +
                  fs::canonical(xp.windows).string() + "\n  " + fs::canonical(two.windows).string() + "\n");
}

constexpr const char* kSoftwareTells =
    "It tells which Windows this is, where its folders are and who its users are.";
constexpr const char* kSoftwareHelp =
    "Look at the disk's state first (SMART, chkdsk from a Windows setup medium). A copy of the hive may lie "
    "in "
    "System32/config/RegBack, in a restore point or in a backup; single hives can be read with --hive.";

TEST_F(DiskTold, AWindowsWithoutItsSoftware) {
    const MadeDisk made = seven();
    writeFile(made.software, "");
    expectTold(made.root,
               "The hive " + fs::canonical(made.software).string() + " can't be used: the file is empty.",
               kSoftwareTells, kSoftwareHelp);
    fs::remove(made.software);
    const std::string without =
        "The Windows in " + fs::canonical(made.windows).string() + " has no hive SOFTWARE.";
    expectTold(made.root, without, kSoftwareTells, kSoftwareHelp);
    // By what it holds, where the names are others; what has an end is a copy.
    fs::rename(made.system, made.config / "sys");
    fs::remove(made.config / "DEFAULT");
    expectTold(made.root, without, kSoftwareTells, kSoftwareHelp);
    fs::rename(made.config / "sys", made.config / "sys.old");
    EXPECT_EQ(problem(made.root).what, made.root.string() + " has a Windows folder without a registry.");
    fs::rename(made.config / "sys.old", made.config / "sys");
    writeFile(made.config / "sys", "regx");
    EXPECT_EQ(problem(made.root).what, made.root.string() + " has a Windows folder without a registry.");
    writeFile(made.config / "software", "");
    EXPECT_EQ(problem(made.root).what, "The hive " + (fs::canonical(made.config) / "software").string() +
                                           " can't be used: the file is empty.");
}

TEST_F(DiskTold, HivesThatAreMissingOrUnusableAreWarnings) {
    const MadeDisk made = seven();
    fs::rename(made.config / "DEFAULT", made.config / "sonst");
    writeFile(made.system, "");
    const WindowsDisk disk = found(made.root);
    const std::string config = fs::canonical(made.config).string();
    EXPECT_EQ(disk.warnings,
              (std::vector<std::string>{"The hive " + config + "/SYSTEM can't be used: the file is empty.",
                                        "There is no hive DEFAULT in " + config + "."}));
    ASSERT_EQ(disk.hives.size(), 2u);
    EXPECT_EQ(disk.hives[0].role, HiveRole::Software);
    EXPECT_EQ(disk.hives[1].role, HiveRole::System);
    EXPECT_EQ(disk.hive(HiveRole::DefaultUser), nullptr);
    EXPECT_EQ(disk.controlSet, 0u);
    EXPECT_TRUE(disk.letters.empty());
}

TEST_F(DiskTold, WhatCannotBeReadOfTheHivesIsToldAndTheRestCounts) {
    const std::string why = " can't be read: an offset leads to no value.";
    const auto expect = [&](bool system, std::u16string_view key, const std::vector<std::string>& warnings) {
        const MadeDisk made = seven();
        spoilValue(system ? made.system : made.software, key);
        const WindowsDisk disk = found(made.root);
        EXPECT_EQ(disk.warnings, warnings);
        EXPECT_EQ(disk.users.size(), 2u);
        EXPECT_EQ(disk.letters.size(), system && key == u"MountedDevices" ? 0u : 5u);
    };
    expect(true, u"Select", {"The control set" + why});
    expect(true, u"ControlSet002\\Control\\Session Manager\\Environment", {"The environment" + why});
    expect(true, u"MountedDevices", {"The list of drives" + why});
    expect(false, u"Microsoft\\Windows\\CurrentVersion", {"The folders" + why});
    const std::string windows = fs::canonical(seven().windows).string();
    expect(
        false, u"Microsoft\\Windows NT\\CurrentVersion",
        {"The folder of Windows" + why,
         "Windows calls its folder by no name, but it lies in " + windows + "; it is taken for C:\\Windows.",
         "The version" + why});
    const MadeDisk made = seven([](DiskPlan& plan) {
        plan.system = [](MadeHive& hive) {
            keyAt(hive.root, u"ControlSet002\\Control\\Session Manager\\Power").values = {
                numberValue(u"HiberbootEnabled", 1)};
        };
    });
    EXPECT_TRUE(found(made.root).fastStart);
    spoilValue(made.system, u"ControlSet002\\Control\\Session Manager\\Power");
    EXPECT_EQ(found(made.root).warnings, std::vector<std::string>{"The power settings" + why});
}

TEST_F(DiskTold, WhatCannotBeReadOfTheUsersIsTold) {
    const std::u16string list = u"Microsoft\\Windows NT\\CurrentVersion\\ProfileList";
    MadeDisk made = seven();
    spoilValue(made.software, list + u"\\S-1-5-21-1-2-3-1001");
    WindowsDisk disk = found(made.root);
    EXPECT_EQ(disk.warnings,
              std::vector<std::string>{
                  "An entry of the list of users can't be read: an offset leads to no value."});
    EXPECT_EQ(disk.users.size(), 2u) << "the folder is there";
    made = seven();
    spoilKey(made.software, list + u"\\S-1-5-21-1-2-3-1001");
    disk = found(made.root);
    EXPECT_EQ(disk.warnings,
              std::vector<std::string>{
                  "The list of users can't be read: a sub key is no key, or belongs to another one."});
    EXPECT_TRUE(disk.users.empty());
}

TEST_F(DiskTold, AFolderThatWindowsCallsOtherwise) {
    const MadeDisk made = seven();
    fs::rename(made.windows, made.root / "Kopie");
    EXPECT_EQ(found(made.root).warnings,
              std::vector<std::string>{"Windows calls its folder \"C:\\Windows\", but it lies in " +
                                       fs::canonical(made.root / "Kopie").string() +
                                       "; it is taken for C:\\Kopie."});
}

TEST_F(DiskTold, TheEntryAsWrittenComesBeforeThoseOfOtherCase) {
    for (const char* const name : {"SOFTWARE", "Software", "software", "soft"})
        writeFile(folder() / name, "x");
    using Names = std::vector<std::string>;
    EXPECT_EQ(namesLike(folder().string(), "software"), (Names{"software", "SOFTWARE", "Software"}));
    EXPECT_EQ(namesLike(folder().string(), "Software"), (Names{"Software", "SOFTWARE", "software"}));
    EXPECT_EQ(namesLike(folder().string(), "SoftWare"), (Names{"SOFTWARE", "Software", "software"}));
}

}  // namespace
}  // namespace bromvale::offline

// What is no Windows, or more than one: told with what helps.
#include "tests/hives/disk/disk_files.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;

class DiskProblems : public DiskTest {};

TEST_F(DiskProblems, SeveralAreAnErrorThatNamesThem) {
    const MadeDisk xp = make(Generation::Xp);
    const MadeDisk two = make(Generation::W2000);
    const DiskProblem told = problem(xp.root);
    EXPECT_EQ(told.what, "There are 2 Windows on this disk.");
    EXPECT_EQ(told.choices,
              (std::vector<std::string>{fs::canonical(xp.windows), fs::canonical(two.windows)}));
    EXPECT_EQ(found(two.windows).version.build, 2195u);
    EXPECT_EQ(found(two.windows).users.size(), 2u);
}

TEST_F(DiskProblems, AnEarlierWindowsBesideIsNoSecondOne) {
    const MadeDisk made = make(Generation::Ten);
    DiskPlan plan;
    plan.generation = Generation::Seven;
    const MadeDisk old = makeDisk(made.root / "Windows.old", plan);
    EXPECT_EQ(found(made.root).version.build, 19045u);
    EXPECT_EQ(found(old.windows).version.build, 7601u);
    EXPECT_EQ(found(old.windows).root, fs::canonical(old.root));
}

TEST_F(DiskProblems, AFolderThatIsNoWindowsIsToldWithWhatHelps) {
    const auto expect = [&](const fs::path& path, const std::string& what) {
        const DiskProblem told = problem(path);
        EXPECT_NE(told.what.find(what), std::string::npos) << told.what;
        EXPECT_NE(told.why, "");
        EXPECT_NE(told.help, "");
    };
    fs::create_directory(folder() / "empty");
    expect(folder() / "empty", "is empty: probably nothing is mounted there");
    expect(folder() / "none", "can't be read: No such file or directory");
    write("image", "\xEB\x58\x90-FVE-FS-" + std::string(512, '\0'));
    expect(folder() / "image", "is a volume that BitLocker has encrypted");
    write("other", "x");
    expect(folder() / "other", "is no folder");
    write("locked/dislocker-file", "x");
    expect(folder() / "locked", "holds a disk of BitLocker that is unlocked, but not mounted");
    write("efi/EFI/Microsoft/Boot/BCD", "x");
    expect(folder() / "efi", "is the small partition from which the computer starts");
    write("data/Fotos/x.jpg", "x");
    expect(folder() / "data", "holds no Windows");
    const MadeDisk made = make(Generation::Seven);
    expect(made.windows / "System32", "is a folder inside of Windows");
    fs::remove(made.software);
    fs::remove(made.system);
    fs::remove(made.config / "DEFAULT");
    expect(made.root, "has a Windows folder without a registry");
}

}  // namespace
}  // namespace bromvale::offline

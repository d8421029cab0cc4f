// The way back from a cleaning.
#include "platform/offline/hives/cleaning/undo.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>

#include "platform/offline/hives/cleaning/recovery.h"
#include "tests/hives/cleaning/disk.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;

class CleaningUndoTest : public CleaningTest {
  protected:
    void clean(const std::vector<HiveToClean>& hives, const std::string& stamp = kStamp) const {
        Cleaning cleaning = cleaningOf(hives);
        cleaning.stamp = stamp;
        HostFiles files;
        ASSERT_EQ("", describe(cleanHives(files, cleaning, {})));
    }
    CleaningResult undo(const std::string& stamp = kStamp, bool force = false) const {
        HostFiles files;
        return undoCleaning(files, folders(), stamp, {}, {}, force, {});
    }
    static void expectRefused(const CleaningResult& result, RefusalKind kind) {
        EXPECT_EQ(State::Refused, result.state);
        ASSERT_EQ(1u, result.refusals.size()) << describe(result);
        EXPECT_EQ(kind, result.refusals[0].kind) << describe(result);
    }
    // `then` and nothing but the list and the complete copy.
    void expectBack(const FolderState& then) const {
        for (const auto& [name, bytes] : state()) {
            const auto old = then.find(name);
            if (old != then.end()) {
                EXPECT_TRUE(bytes == old->second) << name;
            } else {
                EXPECT_TRUE(name.ends_with(".list") || name.ends_with(".reg")) << name;
            }
        }
        for (const auto& [name, bytes] : then) EXPECT_TRUE(fs::exists(path(name))) << name;
    }
};

TEST_F(CleaningUndoTest, HivesAndLogsComeBackByteForByte) {
    const HiveToClean software = placeDirty("config/SOFTWARE");
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const FolderState before = state();
    clean({software, user});
    HostFiles files;
    std::vector<std::string> steps;
    const CleaningResult result = undoCleaning(
        files, folders(), kStamp, {}, {}, false,
        [&](const std::string& hive, const std::string& step) { steps.push_back(hive + ": " + step); });
    EXPECT_EQ("", describe(result));
    EXPECT_EQ(State::Done, result.state);
    expectBack(before);
    EXPECT_EQ(
        (std::vector<std::string>{software.path + ": Hive and logs are back, byte for byte as they were",
                                  user.path + ": Hive and logs are back, byte for byte as they were"}),
        steps);
    // And again from the start.
    clean({software, user}, "later");
    EXPECT_EQ("", describe(undo("later")));
    expectBack(before);
}

TEST_F(CleaningUndoTest, ASecondUndoIsRefused) {
    clean({placeDirty("SOFTWARE")});
    ASSERT_EQ(State::Done, undo().state);
    const FolderState after = state();
    expectRefused(undo(), RefusalKind::AlreadyUndone);
    expectRefused(undo(kStamp, true), RefusalKind::AlreadyUndone);
    EXPECT_EQ(after, state());
}

TEST_F(CleaningUndoTest, AnUnknownStampIsRefused) {
    clean({placeDirty("SOFTWARE")});
    const FolderState after = state();
    for (const char* const stamp : {"2026", "", "../2026-11-22_09-16-05", "*"})
        expectRefused(undo(stamp), RefusalKind::UnknownStamp);
    EXPECT_EQ(after, state());
}

TEST_F(CleaningUndoTest, AChangedHiveIsPutBackByForceAloneAndKeptAside) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    clean({order});
    std::string changed = bytesOf(order.path);
    changed[changed.size() - 9] ^= 1;
    write("SOFTWARE", changed);
    const FolderState after = state();
    expectRefused(undo(), RefusalKind::ChangedSinceCleaning);
    EXPECT_EQ(after, state());
    const CleaningResult result = undo(kStamp, true);
    EXPECT_EQ("", describe(result));
    const std::string aside = "SOFTWARE.bromvale-2026-11-22_09-16-05.aside";
    ASSERT_EQ(1u, result.hives.size());
    EXPECT_EQ(path(aside), result.hives[0].copy);
    EXPECT_TRUE(changed == bytesOf(path(aside)));
    fs::remove(path(aside));
    expectBack(before);
}

TEST_F(CleaningUndoTest, ALogThatHasAppearedCountsAsAChange) {
    clean({placeClean("SOFTWARE")});
    write("software.log2", "");
    expectRefused(undo(), RefusalKind::ChangedSinceCleaning);
}

TEST_F(CleaningUndoTest, ALogThatHasAppearedIsKeptAsideWhereTheHiveComesBackByForce) {
    const HiveToClean order = placeClean("SOFTWARE");
    const FolderState before = state();
    clean({order});
    write("SOFTWARE.LOG2", "neu");
    EXPECT_EQ("", describe(undo(kStamp, true)));
    const std::string aside = path("SOFTWARE.LOG2.bromvale-2026-11-22_09-16-05.aside");
    EXPECT_EQ("neu", bytesOf(aside));
    fs::remove(aside);
    fs::remove(path("SOFTWARE.bromvale-2026-11-22_09-16-05.aside"));
    expectBack(before);
}

TEST_F(CleaningUndoTest, ADamagedOrMissingHiveComesBackByForce) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    for (const bool missing : {false, true}) {
        const std::string stamp = missing ? "second" : "first";
        clean({order}, stamp);
        if (missing) {
            fs::remove(order.path);
        } else {
            write("SOFTWARE", "no hive");
        }
        expectRefused(undo(stamp), RefusalKind::ChangedSinceCleaning);
        EXPECT_EQ("", describe(undo(stamp, true)));
        fs::remove(path("SOFTWARE.bromvale-first.aside"));
        expectBack(before);
    }
}

TEST_F(CleaningUndoTest, ADamagedCopyIsRefusedEvenByForce) {
    clean({placeDirty("SOFTWARE")});
    for (const char* const name : {"SOFTWARE", "SOFTWARE.LOG1", "SOFTWARE.LOG2"}) {
        const std::string copy = std::string(name) + ".bromvale-" + kStamp;
        const std::string bytes = bytesOf(path(copy));
        write(copy, bytes + "x");
        expectRefused(undo(), RefusalKind::CopyDamaged);
        fs::remove(path(copy));
        expectRefused(undo(kStamp, true), RefusalKind::CopyDamaged);
        // A link to the right bytes is no copy either.
        fs::create_symlink(write("elsewhere", bytes), path(copy));
        expectRefused(undo(kStamp, true), RefusalKind::CopyDamaged);
        fs::remove(path(copy));
        write(copy, bytes);
    }
    EXPECT_EQ("", describe(undo()));
}

TEST_F(CleaningUndoTest, TheLaterOneOfTwoGoesFirst) {
    const HiveToClean first = placeDirty("SOFTWARE");
    const FolderState before = state();
    clean({first}, "1");
    const FolderState between = state();
    const HiveToClean second = place("SOFTWARE", bytesOf(path("SOFTWARE")), {}, {u"Names\\Key1"});
    clean({second}, "2");
    expectRefused(undo("1"), RefusalKind::ChangedSinceCleaning);
    EXPECT_EQ("", describe(undo("2")));
    expectBack(between);
    EXPECT_EQ("", describe(undo("1")));
    for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
}

TEST_F(CleaningUndoTest, AHibernatedWindowsIsNotPutBack) {
    clean({placeDirty("SOFTWARE")});
    HostFiles files;
    DiskState disk;
    disk.hibernated = true;
    expectRefused(undoCleaning(files, folders(), kStamp, disk, {}, true, {}), RefusalKind::Hibernated);
}

TEST_F(CleaningUndoTest, AnotherOneAtWorkIsWaitedFor) {
    clean({placeDirty("SOFTWARE")});
    const int held = ::open(folder().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(0, ::flock(held, LOCK_EX));
    expectRefused(undo(), RefusalKind::Busy);
    ::close(held);
    EXPECT_EQ("", describe(undo()));
}

TEST_F(CleaningUndoTest, TheListTellsWhatThereIs) {
    const HiveToClean software = placeDirty("SOFTWARE");
    clean({software}, "1");
    write("NTUSER.DAT.bromvale-odd.list", "bromvale cleaning 1\nstamp: odd\n");
    HostFiles files;
    ListedCleanings list = listCleanings(files, folders());
    EXPECT_EQ((std::vector<std::string>{path("NTUSER.DAT.bromvale-odd.list")}), list.unreadable);
    ASSERT_EQ(1u, list.cleanings.size());
    ASSERT_EQ(1u, list.cleanings[0].hives.size());
    const ListedHive& hive = list.cleanings[0].hives[0];
    EXPECT_EQ(software.path, hive.path);
    EXPECT_EQ(CleaningState::Done, hive.state);
    EXPECT_EQ(10u, hive.keys.size());
    EXPECT_EQ("HKEY_LOCAL_MACHINE\\Software\\Hashes\\Key1", hive.keys[0]);
    EXPECT_EQ(13u, hive.removed);
    EXPECT_TRUE(hive.copiesWhole);
    EXPECT_FALSE(hive.changedSince);
    EXPECT_TRUE(list.cleanings[0].canBeUndone());
    ASSERT_EQ(State::Done, undo("1").state);
    list = listCleanings(files, folders());
    EXPECT_EQ(CleaningState::Undone, list.cleanings.at(0).hives.at(0).state);
    EXPECT_FALSE(list.cleanings[0].canBeUndone());
}

TEST_F(CleaningUndoTest, NothingGoesOnThatIsNotUnfinished) {
    clean({placeClean("SOFTWARE")}, "1");
    HostFiles files;
    const CleaningResult result = goOnWithCleaning(files, folders(), "1", {});
    EXPECT_EQ(State::Refused, result.state);
    EXPECT_EQ(": No cleaning \"1\" is unfinished.\n", describe(result));
}

}  // namespace
}  // namespace bromvale::offline

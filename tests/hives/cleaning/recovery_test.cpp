// What an end in the middle has left is described, and only that is gone on with.
#include "platform/offline/hives/cleaning/recovery.h"

#include <filesystem>

#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/cleaning/undo.h"
#include "tests/hives/cleaning/disk.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;
using WayOn = UnfinishedCleaning::WayOn;

constexpr const char* kTakesBack =
    "A cleaning was stopped before a hive was replaced. Hives and logs are as they were; what was half-made "
    "is removed.";
constexpr const char* kFinishes =
    "A cleaning was stopped after the first new hive had taken its place. The others follow, and the old "
    "logs "
    "are moved aside.";
constexpr const char* kFinishesUndo =
    "Putting a cleaning back was stopped in the middle. It goes on, until hives and logs are as they were.";
constexpr const char* kHalfList =
    "The program was stopped while it wrote a list, and had done nothing else. The half list is removed.";

class CleaningRecoveryTest : public CleaningTest {
  protected:
    CleaningRecoveryTest() : CleaningTest(memory()) {}

    // The program ends before this step is told.
    void killAt(const std::vector<HiveToClean>& orders, const std::string& step, int time = 1) const {
        HostFiles files;
        try {
            static_cast<void>(
                cleanHives(files, cleaningOf(orders), [&](const auto&, const std::string& told) {
                    if (told.starts_with(step) && --time == 0) throw Killed();
                }));
            ADD_FAILURE() << "never told: " << step;
        } catch (const Killed&) {
        }
    }
    [[nodiscard]] UnfinishedCleaning theUnfinished() const {
        HostFiles files;
        std::vector<UnfinishedCleaning> all = unfinishedCleanings(files, folders());
        EXPECT_EQ(1u, all.size());
        return all.empty() ? UnfinishedCleaning() : all[0];
    }
    [[nodiscard]] CleaningResult goOnWith(const std::string& stamp,
                                          std::vector<std::string>* steps = nullptr) const {
        HostFiles files;
        return goOnWithCleaning(files, folders(), stamp, [steps](const auto& hive, const auto& step) {
            if (steps != nullptr) steps->push_back(hive + ": " + step);
        });
    }
    void expectUnfinished(WayOn way, const std::string& what, const std::vector<std::string>& hives) const {
        const UnfinishedCleaning cleaning = theUnfinished();
        EXPECT_EQ(kStamp, cleaning.stamp);
        EXPECT_EQ(way, cleaning.wayOn);
        EXPECT_EQ(what, cleaning.what);
        EXPECT_EQ(hives, cleaning.hives);
    }
};

TEST_F(CleaningRecoveryTest, BeforeTheFirstReplacementItIsTakenBack) {
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const HiveToClean software = placeDirty("config/SOFTWARE");
    const FolderState before = state();
    for (const char* const step : {"Copied to", "2 keys taken out", "13 keys taken out"}) {
        SCOPED_TRACE(step);
        killAt({user, software}, step);
        std::vector<std::string> hives{user.path};
        if (step[0] == '1') hives.push_back(software.path);
        expectUnfinished(WayOn::TakeBack, kTakesBack, hives);
        std::vector<std::string> steps;
        const CleaningResult result = goOnWith(kStamp, &steps);
        EXPECT_EQ(State::TakenBack, result.state);
        EXPECT_EQ("", describe(result));
        std::vector<std::string> told;
        for (const std::string& hive : hives)
            told.push_back(hive + ": Taken back: hive and logs are as they were");
        EXPECT_EQ(told, steps);
        EXPECT_EQ(before, state());
    }
}

TEST_F(CleaningRecoveryTest, BehindTheFirstReplacementItIsFinished) {
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const HiveToClean software = placeDirty("config/SOFTWARE");
    const FolderState before = state();
    killAt({user, software}, "Cleaned: ");
    expectUnfinished(WayOn::Finish, kFinishes, {software.path});
    std::vector<std::string> steps;
    EXPECT_EQ(State::Done, goOnWith(kStamp, &steps).state);
    EXPECT_EQ((std::vector<std::string>{software.path + ": Cleaned: 13 keys"}), steps);
    expectCleaned(user, before);
    expectCleaned(software, before);
}

// One whose new hive is in its place while its logs still lie beside it.
TEST_F(CleaningRecoveryTest, AReplacedHiveWhoseLogsStillLieBesideItIsFinished) {
    const HiveToClean software = placeDirty("SOFTWARE");
    const FolderState before = state();
    killAt({software}, "Proved by two readers");
    const std::string fresh = software.path + ".bromvale-" + kStamp + ".new";
    fs::rename(fresh, software.path);
    expectUnfinished(WayOn::Finish, kFinishes, {software.path});
    EXPECT_EQ(State::Done, goOnWith(kStamp).state);
    expectCleaned(software, before);
}

TEST_F(CleaningRecoveryTest, AnUndoIsFinished) {
    const HiveToClean software = placeDirty("config/SOFTWARE");
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const FolderState before = state();
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({software, user}), {})));
    EXPECT_THROW(undoCleaning(files, folders(), kStamp, {}, {}, false,
                              [](const std::string&, const std::string&) { throw Killed(); }),
                 Killed);
    expectUnfinished(WayOn::FinishUndo, kFinishesUndo, {user.path});
    std::vector<std::string> steps;
    const CleaningResult result = goOnWith(kStamp, &steps);
    EXPECT_EQ(State::Done, result.state);
    EXPECT_EQ((std::vector<std::string>{user.path + ": Hive and logs are back, byte for byte as they were"}),
              steps);
    for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
}

TEST_F(CleaningRecoveryTest, AHalfListAloneIsRemoved) {
    placeClean("SOFTWARE");
    const FolderState before = state();
    const std::string half = write(std::string("SOFTWARE.bromvale-") + kStamp + ".list.new", "bromvale cl");
    expectUnfinished(WayOn::TakeBack, kHalfList, {half});
    EXPECT_EQ(State::TakenBack, goOnWith(kStamp).state);
    EXPECT_EQ(before, state());
}

// Each stamp by itself, in their order, and nothing of what is over.
TEST_F(CleaningRecoveryTest, EachStampStandsForItself) {
    HostFiles files;
    HostFolder folder(files, HiveFilesTest::folder().string());
    const auto store = [&](const char* stamp, const char* hive, CleaningState state, std::size_t part) {
        CleaningRecord record;
        record.stamp = stamp;
        record.hive = hive;
        record.state = state;
        record.part = part;
        record.old = {1, 1};
        storeRecord(folder, record);
    };
    store("2", "B", CleaningState::Begun, 1);
    store("2", "A", CleaningState::Ready, 2);
    store("1", "A", CleaningState::Begun, 1);
    store("3", "A", CleaningState::Done, 1);
    store("4", "A", CleaningState::Undone, 1);
    store("5", "A", CleaningState::Abandoned, 1);
    store("6", "A", CleaningState::Done, 1);
    store("6", "B", CleaningState::Begun, 2);
    store("7", "A", CleaningState::Abandoned, 1);
    store("7", "B", CleaningState::Begun, 2);
    const std::vector<UnfinishedCleaning> all = unfinishedCleanings(files, folders());
    ASSERT_EQ(4u, all.size());
    EXPECT_EQ("1", all[0].stamp);
    EXPECT_EQ("2", all[1].stamp);
    EXPECT_EQ((std::vector<std::string>{path("B"), path("A")}), all[1].hives) << "in the order of the parts";
    EXPECT_EQ(WayOn::TakeBack, all[1].wayOn);
    EXPECT_EQ("6", all[2].stamp);
    EXPECT_EQ(WayOn::Finish, all[2].wayOn) << "one hive is done, so the others follow";
    EXPECT_EQ("7", all[3].stamp);
    EXPECT_EQ(WayOn::TakeBack, all[3].wayOn);
    for (const char* const over : {"3", "4", "5", "none"}) {
        const CleaningResult result = goOnWith(over);
        EXPECT_EQ(State::Refused, result.state);
        ASSERT_EQ(1u, result.refusals.size());
        EXPECT_EQ(RefusalKind::UnknownStamp, result.refusals[0].kind);
        EXPECT_EQ("", result.refusals[0].path);
        EXPECT_EQ("No cleaning \"" + std::string(over) + "\" is unfinished.", result.refusals[0].what);
    }
}

class ReadOnlyFiles : public HostFiles {
  public:
    HostSpace space(const HostHandle&) override { return {1u << 30, true}; }
};

TEST_F(CleaningRecoveryTest, OnADiskThatIsReadOnlyNothingGoesOn) {
    const HiveToClean software = placeDirty("SOFTWARE");
    killAt({software}, "Proved by two readers");
    const FolderState half = state();
    ReadOnlyFiles files;
    const CleaningResult result = goOnWithCleaning(files, folders(), kStamp, {});
    EXPECT_EQ(State::Refused, result.state);
    ASSERT_EQ(1u, result.refusals.size());
    EXPECT_EQ(RefusalKind::ReadOnly, result.refusals[0].kind);
    EXPECT_EQ(HiveFilesTest::folder().string(), result.refusals[0].path);
    EXPECT_EQ("The disk is mounted read-only.", result.refusals[0].what);
    EXPECT_EQ(half, state());
}

TEST_F(CleaningRecoveryTest, WhileAnotherOneIsAtWorkNothingGoesOn) {
    const HiveToClean software = placeDirty("SOFTWARE");
    killAt({software}, "Proved by two readers");
    HostFiles files;
    HostFolder other(files, HiveFilesTest::folder().string());
    ASSERT_TRUE(other.lock());
    const CleaningResult result = goOnWith(kStamp);
    EXPECT_EQ(State::Refused, result.state);
    ASSERT_EQ(1u, result.refusals.size());
    EXPECT_EQ(RefusalKind::Busy, result.refusals[0].kind);
    EXPECT_EQ(HiveFilesTest::folder().string(), result.refusals[0].path);
    EXPECT_EQ("Another cleaning or undo is at work in the folder.", result.refusals[0].what);
}

TEST_F(CleaningRecoveryTest, AFolderThatCannotBeReadLeavesItUnfinished) {
    HostFiles files;
    const std::vector<std::string> none{path("none")};
    const CleaningResult result = goOnWithCleaning(files, none, kStamp, {});
    EXPECT_EQ(State::Unfinished, result.state);
    EXPECT_EQ("open folder \"" + path("none") + "\": No such file or directory", result.problem);
    EXPECT_THROW(static_cast<void>(unfinishedCleanings(files, none)), HostFailure);
}

// A hive that Windows has written since must not lose what it has.
TEST_F(CleaningRecoveryTest, AHiveThatWasChangedSinceIsNotReplacedByTheNewOne) {
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const HiveToClean software = placeDirty("config/SOFTWARE");
    killAt({user, software}, "Cleaned: ");
    const std::string changed = bytesOf(software.path) + "x";
    write("config/SOFTWARE", changed);
    std::vector<std::string> steps;
    EXPECT_EQ(State::Done, goOnWith(kStamp, &steps).state);
    EXPECT_EQ((std::vector<std::string>{
                  software.path + ": Hive or logs were changed by another program meanwhile and stay so; "
                                  "the copies were kept"}),
              steps);
    EXPECT_EQ(changed, bytesOf(software.path));
    HostFiles files;
    EXPECT_TRUE(unfinishedCleanings(files, folders()).empty());
}

}  // namespace
}  // namespace bromvale::offline

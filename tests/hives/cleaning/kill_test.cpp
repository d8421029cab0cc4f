// The program ends, or the disk fails, at every call of a cleaning, of the way on from half of one and of an
// undo. What lies there afterwards is looked at, then the next start goes on.
#include <cerrno>
#include <optional>
#include <vector>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/cleaning/recovery.h"
#include "platform/offline/hives/cleaning/undo.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/cleaning/disk.h"
#include "tests/hives/hive_rounds.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

using State = CleaningResult::State;

struct Trouble {
    const char* name;
    int number;  // 0: killed
    bool after;
    bool forever;
};

constexpr Trouble kTroubles[] = {{"killed", 0, false, false},
                                 {"EIO", EIO, false, false},
                                 {"EIO after the call", EIO, true, false},
                                 {"ENOSPC from here on", ENOSPC, false, true},
                                 {"EROFS from here on", EROFS, false, true},
                                 {"EIO from here on", EIO, false, true}};

// Two hives in two folders, one of them dirty.
class CleaningTroubleTest : public CleaningTest {
  protected:
    CleaningTroubleTest() : CleaningTest(memory()) {
        orders_ = {placeDirty("config/SOFTWARE"), placeClean("user/NTUSER.DAT")};
        before_ = state();
        paths_ = folders();
        HostFiles files;
        EXPECT_EQ("", offline::describe(cleanHives(files, cleaningOf(orders_), {})));
        cleaned_ = state();
        EXPECT_EQ("", offline::describe(undo(files, false)));
        undone_ = state();
        restore(before_);
    }

    CleaningResult undo(HostFiles& files, bool force) const {
        return undoCleaning(files, paths_, kStamp, {}, {}, force, {});
    }
    // How many calls it makes without trouble.
    template <class Work>
    int callsOf(const FolderState& from, Work work) {
        restore(from);
        TroubledFiles files;
        files.piece = kPiece;
        work(files);
        replacement_ = files.firstReplacement;
        return files.calls;
    }
    // With trouble at one call. What was not yet on the disk is lost if the program ends.
    template <class Work>
    std::optional<CleaningResult> run(const FolderState& from, const Trouble& trouble, int at,
                                      Work work) const {
        restore(from);
        TroubledFiles files;
        files.piece = kPiece;
        files.troubleAt = at;
        files.number = trouble.number;
        files.after = trouble.after;
        files.forever = trouble.forever;
        std::optional<CleaningResult> result;
        try {
            result = work(files);
        } catch (const Killed&) {
            loseUnsynced(files.unsynced);
        }
        return result;
    }
    void loseUnsynced(const std::set<std::string>& names) const {
        for (const auto& [name, bytes] : state()) {
            const std::string file = name.substr(name.rfind('/') + 1);
            if (names.contains(file)) write(name, std::string_view(bytes).substr(0, bytes.size() / 2));
        }
    }

    // Each hive is the old one with its logs, or the whole new one.
    void expectEachWhole() const {
        const FolderState now = state();
        for (const HiveToClean& order : orders_) {
            const std::string name = order.path.substr(folder().string().size() + 1);
            ASSERT_TRUE(now.contains(name)) << name << " is gone";
            if (now.at(name) == cleaned_.at(name)) continue;
            EXPECT_TRUE(now.at(name) == before_.at(name)) << name << " is neither old nor new";
            for (const LogToClean& log : order.logs) {
                const std::string logName = log.path.substr(folder().string().size() + 1);
                EXPECT_TRUE(now.contains(logName) && now.at(logName) == before_.at(logName))
                    << logName << " is missing beside the old hive";
            }
        }
    }
    // Whole in one of these states, nothing else lying about.
    void expectOneOf(std::initializer_list<const FolderState*> states) const {
        const FolderState now = state();
        for (const FolderState* state : states)
            if (now == *state) return;
        std::string names;
        for (const auto& [name, bytes] : now) names += "\n" + name + " " + std::to_string(bytes.size());
        ADD_FAILURE() << "neither of the states that are allowed:" << names;
    }

    static constexpr std::size_t kPiece = 8192;
    int replacement_ = -1;  // the call that puts the first new hive into its place
    std::vector<HiveToClean> orders_;
    std::vector<std::string> paths_;
    FolderState before_;
    FolderState cleaned_;
    FolderState undone_;
};

bool everyCall() {
    return hiveRounds(0) >= 1000;
}

// A quick run leaves most calls out.
int stride(const Trouble& trouble) {
    return everyCall() ? 1 : trouble.number == 0 ? 5 : 23;
}

// Where hives and logs change their names it leaves out less.
int strideAt(const Trouble& trouble, int at, int replacement) {
    const int quick = at < replacement - 5 ? stride(trouble) : trouble.number == 0 ? 1 : 7;
    return everyCall() ? 1 : quick;
}

TEST_F(CleaningTroubleTest, ACleaningLeavesTheOldStateOrTheNewOne) {
    const auto work = [&](HostFiles& files) { return cleanHives(files, cleaningOf(orders_), {}); };
    const int calls = callsOf(before_, work);
    const int replacement = replacement_;
    ASSERT_GT(calls, 100);
    ASSERT_GT(replacement, 0);
    std::size_t finished = 0;
    for (const Trouble& trouble : kTroubles) {
        for (int at = 0; at < calls; at += strideAt(trouble, at, replacement)) {
            SCOPED_TRACE(std::string(trouble.name) + " at call " + std::to_string(at));
            const auto result = run(before_, trouble, at, work);
            expectEachWhole();
            if (result && result->state == State::Done) {
                expectOneOf({&cleaned_});
            } else if (result && result->state != State::Unfinished) {
                EXPECT_NE("", offline::describe(*result));
                expectOneOf({&before_});
            }
            goOn();
            expectOneOf({&before_, &cleaned_});
            finished += state() == cleaned_ ? 1U : 0U;
            if (HasFailure()) return;
        }
    }
    EXPECT_GT(finished, 10u);
}

TEST_F(CleaningTroubleTest, TheNextStartMayEndAnywhereTooAndTheOneAfterItGoesOn) {
    const auto work = [&](HostFiles& files) { return cleanHives(files, cleaningOf(orders_), {}); };
    const auto way = [&](HostFiles& files) { return goOnWithCleaning(files, paths_, kStamp, {}); };
    const int calls = callsOf(before_, work);
    const int replacement = replacement_;
    FolderState last;
    for (int at = 0; at < calls; at += strideAt(kTroubles[0], at, replacement)) {
        run(before_, kTroubles[0], at, work);
        const FolderState half = state();
        HostFiles files;
        if (half == last || unfinishedCleanings(files, paths_).empty()) continue;
        last = half;
        const int more = callsOf(half, way);
        const FolderState end = state();
        for (const Trouble& trouble : kTroubles) {
            for (int second = 0; second < more; second += stride(trouble)) {
                SCOPED_TRACE("killed at call " + std::to_string(at) + ", then " + trouble.name + " at " +
                             std::to_string(second));
                run(half, trouble, second, way);
                expectEachWhole();
                goOn();
                expectOneOf({&end});
                if (HasFailure()) return;
            }
        }
    }
}

// What file systems can leave that rename in several steps: both names, no name, logs before the hive.
TEST_F(CleaningTroubleTest, HalfARenameIsMended) {
    const auto work = [&](HostFiles& files) { return cleanHives(files, cleaningOf(orders_), {}); };
    const std::string hive = "config/SOFTWARE";
    const std::string copy = hive + ".bromvale-" + kStamp;
    int at = callsOf(before_, work);
    FolderState half = cleaned_;
    while (half[hive] != before_.at(hive)) {
        run(before_, kTroubles[0], --at, work);
        half = state();
    }
    ASSERT_TRUE(half.contains(copy + ".new"));
    FolderState both = half;
    both[hive] = half.at(copy + ".new");
    FolderState none = half;
    none.erase(hive);
    FolderState logsFirst = half;
    logsFirst.erase(hive + ".LOG1");
    logsFirst.erase(hive + ".LOG2");
    for (const auto& [state, end] :
         {std::pair(&both, &cleaned_), {&none, &before_}, {&logsFirst, &before_}}) {
        restore(*state);
        goOn();
        expectOneOf({end});
    }
    // The same of an undo.
    FolderState undoing = cleaned_;
    const auto back = [&](HostFiles& files) { return undo(files, false); };
    for (at = 0; !undoing.contains(copy + ".aside"); ++at) {
        run(cleaned_, kTroubles[0], at, back);
        undoing = state();
    }
    undoing.erase(hive);
    restore(undoing);
    goOn();
    expectOneOf({&undone_});
}

TEST_F(CleaningTroubleTest, AnUndoLeavesTheNewStateOrTheOldOne) {
    const auto work = [&](HostFiles& files) { return undo(files, false); };
    const int calls = callsOf(cleaned_, work);
    ASSERT_GT(calls, 30);
    for (const Trouble& trouble : kTroubles) {
        for (int at = 0; at < calls; at += everyCall() ? 1 : trouble.number == 0 ? 2 : 9) {
            SCOPED_TRACE(std::string(trouble.name) + " at call " + std::to_string(at));
            const auto result = run(cleaned_, trouble, at, work);
            expectEachWhole();
            if (result && result->state == State::Done) expectOneOf({&undone_});
            if (result && result->state == State::Refused) expectOneOf({&cleaned_});
            const FolderState half = state();
            goOn();
            expectOneOf({&cleaned_, &undone_});
            if (trouble.number == 0 && half != cleaned_ && half != undone_) {
                const auto way = [&](HostFiles& files) {
                    return goOnWithCleaning(files, paths_, kStamp, {});
                };
                const int more = callsOf(half, way);
                for (int second = 0; second < more; second += stride(trouble)) {
                    run(half, trouble, second, way);
                    expectEachWhole();
                    goOn();
                    expectOneOf({&cleaned_, &undone_});
                }
            }
            if (HasFailure()) return;
        }
    }
}

// Windows has run since and ended in the middle: its hive is dirty and needs its own logs.
TEST_F(CleaningTroubleTest, AForcedUndoNeverLeavesAHiveWithTheLogsOfAnother) {
    restore(cleaned_);
    std::string present = cleaned_.at("config/SOFTWARE");
    setSequence(present, 100, 99);
    const std::string log = newLog(present, 99, {{99, present, present}});
    write("config/SOFTWARE", present);
    write("config/SOFTWARE.LOG1", log);
    write("config/SOFTWARE.LOG", "a log that there was none of");
    const FolderState changed = state();
    HiveImage replayed{std::string_view(before_.at("config/SOFTWARE"))};
    const HiveLog oldLog{LogName::Log1, HiveBytes(before_.at("config/SOFTWARE.LOG1"))};
    ASSERT_EQ(Replay::State::Replayed, replayLogs(replayed, std::span(&oldLog, 1)).state);

    const auto work = [&](HostFiles& files) { return undo(files, true); };
    const int calls = callsOf(changed, work);
    const FolderState end = state();
    EXPECT_EQ(before_.at("config/SOFTWARE"), end.at("config/SOFTWARE"));
    for (int at = 0; at < calls; ++at) {
        SCOPED_TRACE("killed at call " + std::to_string(at));
        run(changed, kTroubles[0], at, work);
        FolderState now = state();
        const std::string& hive = now["config/SOFTWARE"];
        if (hive == present) {
            EXPECT_TRUE(now["config/SOFTWARE.LOG1"] == log);
        } else if (hive == before_.at("config/SOFTWARE")) {
            EXPECT_TRUE(now["config/SOFTWARE.LOG1"] == before_.at("config/SOFTWARE.LOG1"));
        } else {
            EXPECT_TRUE(hive == replayed.bytes().all()) << "none of the states that there may be";
        }
        goOn();
        expectOneOf({&end, &changed});
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace bromvale::offline

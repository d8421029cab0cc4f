// What stops a cleaning or an undo in its middle, word for word, and what it has told until then.
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>

#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/cleaning/recovery.h"
#include "platform/offline/hives/cleaning/undo.h"
#include "tests/hives/cleaning/disk.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;

struct CleaningProgressStop : HostFailure {
    CleaningProgressStop() : HostFailure("tell", "user", EIO) {}
};

// Does something once, before the first call of that name for that file.
class InterruptedFiles : public HostFiles {
  public:
    std::string call;
    std::string name;
    std::function<int()> work;

  protected:
    int failureBefore(std::string_view called, const std::string& of) override {
        if (called != call || of != name || !work) return 0;
        return std::exchange(work, nullptr)();
    }
};

class CleaningStopTest : public CleaningTest {
  protected:
    CleaningStopTest() : CleaningTest(memory()) {}

    static constexpr const char* kCopy = "SOFTWARE.bromvale-2026-11-22_09-16-05";

    // Cleans, and writes something else into a file before that call.
    CleaningResult cleanWith(const HiveToClean& order, const std::string& call, const std::string& name,
                             const std::function<int()>& work) {
        InterruptedFiles files;
        files.call = call;
        files.name = name;
        files.work = work;
        steps_.clear();
        return cleanHives(files, cleaningOf({order}), [&](const std::string& path, const std::string& step) {
            steps_.push_back(path + ": " + step);
        });
    }
    CleaningResult cleanWithOther(const HiveToClean& order, const std::string& call, const std::string& name,
                                  const std::string& file, const std::string& bytes) {
        return cleanWith(order, call, name, [&] {
            write(file, bytes);
            return 0;
        });
    }
    std::vector<std::string> steps_;
};

TEST_F(CleaningStopTest, ACopyThatIsNotWhatWasWrittenStopsIt) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    for (const std::string& copy : {std::string(kCopy), std::string("SOFTWARE.LOG2.bromvale-") + kStamp}) {
        const CleaningResult result = cleanWithOther(order, "read", copy, copy, "other");
        EXPECT_EQ("The file \"" + path(copy) + "\" is not what was written into it", result.problem);
        EXPECT_EQ(State::TakenBack, result.state);
        EXPECT_EQ(before, state());
        EXPECT_EQ((std::vector<std::string>{order.path + ": Taken back: hive and logs are as they were"}),
                  steps_);
    }
}

TEST_F(CleaningStopTest, WhatTheProofFindsStopsIt) {
    const HiveToClean order = placeClean("SOFTWARE");
    const FolderState before = state();
    const std::string whole = offline::bytesOf(MadeHive());
    std::string faulty = whole;
    setSequence(faulty, 2, 1);
    setInBaseBlock(faulty, base_block::kFormat, 2);
    const auto expect = [&](const char* end, const std::string& bytes, const std::string& problem) {
        SCOPED_TRACE(problem);
        const std::string file = std::string(kCopy) + end;
        const CleaningResult result = cleanWithOther(order, "read", file, file, bytes);
        EXPECT_EQ(problem, result.problem);
        EXPECT_EQ(State::TakenBack, result.state);
        EXPECT_EQ(before, state());
        EXPECT_EQ(
            (std::vector<std::string>{order.path + ": Copied to " + path(kCopy),
                                      order.path + ": The hive is clean", order.path + ": 2 keys taken out",
                                      order.path + ": Taken back: hive and logs are as they were"}),
            steps_);
    };
    expect(".replayed", faulty,
           "The strict check of the replayed hive finds 2 faults: the sequence numbers differ: a change was "
           "not finished");
    expect(".new", faulty,
           "The strict check of the new hive finds 2 faults: the sequence numbers differ: a change was not "
           "finished");
    expect(".replayed", whole, "The files that were written do not hold what was written into them");
    expect(".new", whole, "The files that were written do not hold what was written into them");
}

// Whose children others wait for, as under some services.
TEST_F(CleaningStopTest, ASecondReaderThatCannotBeWaitedForStopsIt) {
    const HiveToClean order = placeClean("SOFTWARE");
    const FolderState before = state();
    std::signal(SIGCHLD, SIG_IGN);
    HostFiles files;
    const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
    std::signal(SIGCHLD, SIG_DFL);
    EXPECT_EQ(
        "For the second reader the new hive is not the old one without the keys: the second reader "
        "(libhivex) "
        "can't be waited for: No child processes",
        result.problem);
    EXPECT_EQ(State::TakenBack, result.state);
    EXPECT_EQ(before, state());
}

TEST_F(CleaningStopTest, AHiveThatWasChangedWhileItWasCleanedStaysAndIsLeftAlone) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    const std::string changed = before.at("SOFTWARE") + "x";
    const std::string list = std::string(kCopy) + ".list";
    // The last thing before all hives are looked at.
    CleaningResult result =
        cleanWithOther(order, "remove", std::string(kCopy) + ".replayed", "SOFTWARE", changed);
    EXPECT_EQ("The hive \"" + order.path + "\" or one of its logs was changed by another program meanwhile",
              result.problem);
    EXPECT_EQ(State::TakenBack, result.state);
    EXPECT_EQ(order.path +
                  ": Hive or logs were changed by another program meanwhile and stay so; the copies "
                  "were kept",
              steps_.back());
    EXPECT_EQ(changed, bytesOf(order.path));
    EXPECT_EQ(before.at("SOFTWARE"), bytesOf(path(kCopy)));
    EXPECT_EQ(CleaningState::Abandoned, readRecord(bytesOf(path(list))).value().state);
}

TEST_F(CleaningStopTest, ANewHiveThatWasChangedTakesNoPlace) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    const std::string fresh = std::string(kCopy) + ".new";
    HostFiles files;
    const CleaningResult result =
        cleanHives(files, cleaningOf({order}), [&](const std::string&, const std::string& step) {
            if (step == "Proved by two readers") write(fresh, "other");
        });
    EXPECT_EQ("The new hive \"" + path(fresh) + "\" was changed", result.problem);
    EXPECT_EQ(State::Unfinished, result.state);
    for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
}

TEST_F(CleaningStopTest, AFailureThatTakingBackMeetsAsWellIsTold) {
    const HiveToClean order = placeClean("SOFTWARE");
    TroubledFiles files;
    files.number = EIO;
    files.forever = true;
    TroubledFiles counting;
    ASSERT_EQ(State::Done, cleanHives(counting, cleaningOf({order}), {}).state);
    HostFiles plain;
    ASSERT_EQ(State::Done, undoCleaning(plain, folders(), kStamp, {}, {}, false, {}).state);
    for (const auto& [name, bytes] : state())
        if (name != "SOFTWARE") fs::remove(path(name));
    files.troubleAt = counting.firstReplacement / 2;
    const CleaningResult result = cleanHives(files, cleaningOf({order}), {});
    EXPECT_EQ(State::Unfinished, result.state);
    const std::size_t second = result.problem.find("; taking back was stopped as well: ");
    ASSERT_NE(std::string::npos, second) << result.problem;
    EXPECT_TRUE(result.problem.substr(0, second).ends_with(": Input/output error"));
    EXPECT_TRUE(result.problem.ends_with(": Input/output error"));
    goOn();
    EXPECT_EQ(1u, state().size());
}

// Nobody need listen.
TEST_F(CleaningStopTest, WhatIsReplayedIsToldWithWhatWasWrongInIt) {
    HiveToClean order = placeDirty("SOFTWARE");
    std::string log = bytesOf(order.logs[0].path);
    const std::string hive = bytesOf(order.path);
    log += newLog(hive, 9, {{9, hive, hive}}).substr(kSectorSize);
    write("SOFTWARE.LOG1", log);
    order.logs[0].shown = printOf(log);
    const CleaningResult result = cleanWith(order, "", "", {});
    ASSERT_EQ("", describe(result));
    ASSERT_EQ(5u, steps_.size());
    EXPECT_EQ(order.path +
                  ": 1 entries of LOG1 replayed; LOG1 ends early: what should be entry 8 has the "
                  "number 9",
              steps_[1]);
}

TEST_F(CleaningStopTest, WithoutACompleteCopyNoneIsNamed) {
    HiveToClean order = placeClean("SOFTWARE");
    order.completeCopy.clear();
    const CleaningResult result = cleanWith(order, "", "", {});
    ASSERT_EQ(1u, result.hives.size());
    EXPECT_EQ(order.path, result.hives[0].path);
    EXPECT_EQ("", result.hives[0].completeCopy);
    EXPECT_EQ(path(std::string(kCopy) + ".list"), result.hives[0].list);
    EXPECT_FALSE(fs::exists(path(std::string(kCopy) + ".reg")));
    EXPECT_EQ(3u, state().size());
}

TEST_F(CleaningStopTest, AnUndoNamesWhatItHasPutBack) {
    const HiveToClean order = placeClean("SOFTWARE");
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    const CleaningResult result = undoCleaning(files, folders(), kStamp, {}, {}, false, {});
    ASSERT_EQ(1u, result.hives.size());
    EXPECT_EQ(order.path, result.hives[0].path);
    EXPECT_EQ(2u, result.hives[0].removed);
    EXPECT_EQ("", result.hives[0].copy);
    EXPECT_EQ("", result.hives[0].completeCopy);
    EXPECT_EQ(path(std::string(kCopy) + ".list"), result.hives[0].list);
}

// The copy was whole when it was asked for.
TEST_F(CleaningStopTest, AnUndoThatPutsBackSomethingElseSaysSo) {
    const HiveToClean order = placeDirty("SOFTWARE");
    HostFiles plain;
    ASSERT_EQ("", describe(cleanHives(plain, cleaningOf({order}), {})));
    InterruptedFiles files;
    files.call = "rename";
    files.name = kCopy;
    files.work = [&] {
        write(kCopy, "other");
        return 0;
    };
    const CleaningResult result = undoCleaning(files, folders(), kStamp, {}, {}, false, {});
    EXPECT_EQ(State::Unfinished, result.state);
    EXPECT_EQ("The hive \"" + order.path + "\" or one of its logs is not what the copies held",
              result.problem);
}

TEST_F(CleaningStopTest, AnUndoWhoseFolderCannotBeReadIsUnfinishedWithTheReason) {
    HostFiles files;
    const std::vector<std::string> none{path("none")};
    const CleaningResult result = undoCleaning(files, none, kStamp, {}, {}, false, {});
    EXPECT_EQ(State::Unfinished, result.state);
    EXPECT_EQ("open folder \"" + path("none") + "\": No such file or directory", result.problem);
}

// The first hive has taken its place when the second is seen to be another one.
TEST_F(CleaningStopTest, ASecondHiveThatWasChangedMeanwhileTakesNoPlace) {
    const HiveToClean user = placeClean("user/NTUSER.DAT");
    const HiveToClean software = placeDirty("SOFTWARE");
    HostFiles files;
    const CleaningResult result =
        cleanHives(files, cleaningOf({user, software}), [&](const std::string&, const std::string& step) {
            if (step.starts_with("Cleaned")) write("SOFTWARE.LOG2", "other");
        });
    EXPECT_EQ(
        "The hive \"" + software.path + "\" or one of its logs was changed by another program meanwhile",
        result.problem);
    EXPECT_EQ(State::Unfinished, result.state);
}

TEST_F(CleaningStopTest, OldLogsThatCannotBeReplayedStopAForcedUndo) {
    const HiveToClean order = placeDirty("SOFTWARE");
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    HostFolder folder(files, HiveFilesTest::folder().string());
    CleaningRecord record = findRecords(folder).records.at(0);
    const std::string copy = "SOFTWARE.LOG1.bromvale-" + record.stamp;
    write(copy, "no log");
    record.logs[0].print = printOf("no log");
    storeRecord(folder, record);
    write("SOFTWARE", "no hive");
    const CleaningResult result = undoCleaning(files, folders(), kStamp, {}, {}, true, {});
    EXPECT_EQ("The logs of the old hive \"" + path(kCopy) + "\" can't be replayed", result.problem);
    EXPECT_EQ(State::Unfinished, result.state);
}

TEST_F(CleaningStopTest, WhatABrokenOffUndoHasLeftGoesWithTheNextOne) {
    const HiveToClean order = placeClean("SOFTWARE");
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    write(std::string(kCopy) + ".replayed", "half");
    ASSERT_EQ("", describe(undoCleaning(files, folders(), kStamp, {}, {}, false, {})));
    EXPECT_FALSE(fs::exists(path(std::string(kCopy) + ".replayed")));
    EXPECT_EQ(3u, state().size());
}

TEST_F(CleaningStopTest, HalfOfWhatStandsInBetweenIsNoHindrance) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    HostFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    write("SOFTWARE", "no hive");
    write(std::string(kCopy) + ".replayed", "half");
    ASSERT_EQ("", describe(undoCleaning(files, folders(), kStamp, {}, {}, true, {})));
    EXPECT_FALSE(fs::exists(path(std::string(kCopy) + ".replayed")));
    for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
}

// Everything that reaches the disk, in its order: names without what is the same in all of them.
class OrderedFiles : public HostFiles {
  public:
    std::vector<std::string> calls;
    std::string failing;

  protected:
    int failureBefore(std::string_view call, const std::string& name) override {
        constexpr std::string_view kWriting[] = {"create", "sync", "rename", "link", "remove"};
        if (std::ranges::find(kWriting, call) == std::end(kWriting)) return 0;
        std::string file = name;
        if (const std::size_t at = file.find(".bromvale-2026-11-22_09-16-05"); at != file.npos)
            file.replace(at, 29, "~");
        calls.push_back(std::string(call) + " " + (name.starts_with('/') ? "folder" : file));
        return calls.back() == failing ? EIO : 0;
    }
};

using Calls = std::vector<std::string>;

TEST_F(CleaningStopTest, WhatACleaningDoesComesToTheDiskInThisOrder) {
    HiveToClean order = placeClean("H");
    write("H.LOG1", "");
    order.logs.push_back({LogName::Log1, path("H.LOG1"), printOf("")});
    OrderedFiles files;
    ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    EXPECT_EQ(
        (Calls{// its list before anything else
               "create H~.list.new", "sync H~.list.new", "rename H~.list.new", "sync folder",
               // copies
               "create H~", "sync H~", "create H.LOG1~", "sync H.LOG1~", "create H~.reg", "sync H~.reg",
               "sync folder",
               // the hive after its replay, and without the keys
               "create H~.replayed", "sync H~.replayed", "create H~.new", "sync H~.new", "remove H~.replayed",
               // proved
               "create H~.list.new", "sync H~.list.new", "rename H~.list.new", "sync folder",
               // in its place; only then the logs go
               "rename H~.new", "sync folder", "rename H.LOG1", "sync folder",
               // done
               "create H~.list.new", "sync H~.list.new", "rename H~.list.new", "sync folder"}),
        files.calls);
    files.calls.clear();
    ASSERT_EQ("", describe(undoCleaning(files, folders(), kStamp, {}, {}, false, {})));
    EXPECT_EQ((Calls{"create H~.list.new", "sync H~.list.new", "rename H~.list.new", "sync folder",
                     // a second name for what is there
                     "link H",
                     // the logs first
                     "rename H.LOG1~", "sync folder", "rename H~", "sync folder", "remove H~.aside",
                     "create H~.list.new", "sync H~.list.new", "rename H~.list.new", "sync folder"}),
              files.calls);
}

TEST_F(CleaningStopTest, WhatIsTakenBackLeavesTheDiskInThisOrder) {
    HiveToClean order = placeClean("H");
    write("H.LOG1", "");
    order.logs.push_back({LogName::Log1, path("H.LOG1"), printOf("")});
    OrderedFiles files;
    const CleaningResult result =
        cleanHives(files, cleaningOf({order}), [&](const auto&, const std::string& step) {
            if (step.ends_with("keys taken out")) {
                files.calls.clear();
                throw CleaningProgressStop();
            }
        });
    EXPECT_EQ(State::TakenBack, result.state);
    EXPECT_EQ((Calls{"remove H~.replayed", "remove H~.new", "sync folder", "remove H~.reg", "remove H.LOG1~",
                     "remove H~", "sync folder", "remove H~.list", "sync folder"}),
              files.calls);
}

TEST_F(CleaningStopTest, AListThatNeverCameToBeGoesFromTheDiskAtOnce) {
    write("H.bromvale-2026-11-22_09-16-05.list.new", "half");
    OrderedFiles files;
    EXPECT_EQ(State::TakenBack, goOnWithCleaning(files, folders(), kStamp, {}).state);
    EXPECT_EQ((Calls{"remove H~.list.new", "sync folder"}), files.calls);
}

TEST_F(CleaningStopTest, WhereItsListNeverCameToBeNothingElseIsTouched) {
    const HiveToClean order = placeClean("H");
    const FolderState before = state();
    OrderedFiles files;
    files.failing = "rename H~.list.new";
    std::vector<std::string> steps;
    const CleaningResult result =
        cleanHives(files, cleaningOf({order}),
                   [&](const std::string&, const std::string& step) { steps.push_back(step); });
    EXPECT_EQ(State::TakenBack, result.state);
    EXPECT_TRUE(steps.empty());
    EXPECT_EQ((Calls{"create H~.list.new", "sync H~.list.new", "rename H~.list.new", "remove H~.list.new",
                     "sync folder"}),
              files.calls);
    EXPECT_EQ(before, state());
}

}  // namespace
}  // namespace bromvale::offline

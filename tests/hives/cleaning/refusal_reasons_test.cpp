// What a refusal says of the case at hand, and which file it names.
#include <unistd.h>

#include <filesystem>

#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/hives/cleaning/undo.h"
#include "tests/hives/cleaning/disk.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {
namespace {

namespace fs = std::filesystem;
using State = CleaningResult::State;
using Kind = RefusalKind;

struct Told {
    Kind kind;
    std::string path;
    std::string what;
};

class RefusalReasons : public CleaningTest {
  protected:
    RefusalReasons() : CleaningTest(memory()) {}

    static void expectTold(const std::vector<Refusal>& refusals, const std::vector<Told>& told) {
        ASSERT_EQ(told.size(), refusals.size());
        for (std::size_t i = 0; i < told.size(); ++i) {
            EXPECT_EQ(told[i].kind, refusals[i].kind);
            EXPECT_EQ(told[i].path, refusals[i].path);
            EXPECT_EQ(told[i].what, refusals[i].what);
        }
    }
    void expectRefused(const Cleaning& cleaning, const std::vector<Told>& told) const {
        HostFiles files;
        SCOPED_TRACE(told[0].what);
        expectTold(refusalsOf(files, cleaning), told);
    }
    // Written as it is, and shown so.
    [[nodiscard]] HiveToClean placed(HiveToClean order, const std::string& bytes) const {
        write("SOFTWARE", bytes);
        order.shown = printOf(bytes);
        return order;
    }
    void clean(const HiveToClean& order) const {
        HostFiles files;
        ASSERT_EQ("", describe(cleanHives(files, cleaningOf({order}), {})));
    }
    [[nodiscard]] CleaningResult undo(const std::string& stamp = kStamp, bool force = false) const {
        HostFiles files;
        return undoCleaning(files, folders(), stamp, {}, {}, force, {});
    }
};

TEST_F(RefusalReasons, OfTheDiskAndTheStampNameNoFile) {
    Cleaning cleaning = cleaningOf({placeClean("SOFTWARE")});
    cleaning.disk = {true, true};
    cleaning.stamp = "a b";
    expectRefused(cleaning,
                  {{Kind::BadStamp, "", "The stamp can't be part of a file's name."},
                   {Kind::Hibernated, "", "This Windows is hibernated, or was shut down for a fast start."},
                   {Kind::HibernationDoubtful, "", "Whether this Windows is hibernated can't be told."}});
}

TEST_F(RefusalReasons, OfAHiveNameItOrItsLog) {
    HiveToClean order = placeDirty("SOFTWARE");
    const std::string hive = order.path;
    HiveToClean other = order;
    other.path = path("software");
    HiveToClean mandatory = order;
    mandatory.mandatoryProfile = true;
    expectRefused(cleaningOf({mandatory}),
                  {{Kind::MandatoryProfile, hive, "The hive is that of a mandatory profile."}});
    expectRefused(cleaningOf({order, order}), {{Kind::SameHiveTwice, hive, "The hive is named twice."}});
    fs::create_hard_link(hive, path("other"));
    expectRefused(cleaningOf({order}), {{Kind::HardLinked, hive, "The file has other names."}});
    fs::remove(path("other"));
    write("SOFTWARE.LOG", "");
    expectRefused(cleaningOf({order}), {{Kind::LogNotGiven, path("SOFTWARE.LOG"),
                                         "There is a log beside the hive that was not looked at."}});
    fs::remove(path("SOFTWARE.LOG"));
    write("SOFTWARE.LOG1", "other");
    expectRefused(cleaningOf({order}), {{Kind::ChangedSinceShown, path("SOFTWARE.LOG1"),
                                         "The file was changed since the keys were chosen."}});
    write("SOFTWARE", "other");
    expectRefused(cleaningOf({order}),
                  {{Kind::ChangedSinceShown, hive, "The file was changed since the keys were chosen."},
                   {Kind::ChangedSinceShown, path("SOFTWARE.LOG1"),
                    "The file was changed since the keys were chosen."}});
    fs::remove(path("SOFTWARE.LOG2"));
    expectRefused(cleaningOf({order}), {{Kind::Unreadable, path("SOFTWARE.LOG2"), "The file is not there."}});
}

TEST_F(RefusalReasons, OfAFolderThatIsNotThereNameTheHive) {
    HiveToClean order = placeClean("SOFTWARE");
    order.path = path("none/SOFTWARE");
    expectRefused(
        cleaningOf({order}),
        {{Kind::Unreadable, order.path, "open folder \"" + path("none") + "\": No such file or directory."}});
}

TEST_F(RefusalReasons, OfAHiveThatCannotBeReadTellWhy) {
    class Unreadable : public HostFiles {
      protected:
        int failureBefore(std::string_view call, const std::string&) override {
            return call == failing ? 5 : 0;
        }

      public:
        std::string failing;
    };
    const HiveToClean order = placeClean("SOFTWARE");
    Unreadable files;
    files.failing = "read";
    expectTold(refusalsOf(files, cleaningOf({order})),
               {{Kind::Unreadable, order.path, "read \"SOFTWARE\": Input/output error."}});
    files.failing = "lock";
    expectTold(refusalsOf(files, cleaningOf({order})),
               {{Kind::Unreadable, "", "lock \".\": Input/output error."}});
}

TEST_F(RefusalReasons, OfADirtyOrDamagedHiveTellWhatIsWrong) {
    const HiveToClean order = placeClean("SOFTWARE");
    std::string bytes = bytesOf(order.path);
    setSequence(bytes, 9, 8);
    expectRefused(
        cleaningOf({placed(order, bytes)}),
        {{Kind::DirtyWithoutLogs, order.path, "The hive is dirty, and no log fits it: there is no log."}});
    setSequence(bytes, 9, 9);
    bytes[kBinsStart + order.keys[0].cell + kCellHeaderSize + key_node::kSubKeyCount] ^= 4;
    expectRefused(cleaningOf({placed(order, bytes)}),
                  {{Kind::Damaged, order.path,
                    "The strict check finds 1 faults: a key counts other sub keys than its list holds."}});
}

TEST_F(RefusalReasons, OfKeysNameEachOfThemWithItsReason) {
    HiveToClean order = placeClean("SOFTWARE");
    const AnnouncedKey good = order.keys[0];
    order.keys = {{cellOf(bytesOf(order.path), u""), "HKLM\\Software"}, good, {0x7FFFFFF8, "HKLM\\x"}};
    expectRefused(
        cleaningOf({order}),
        {{Kind::KeyStays, order.path, "The key \"HKLM\\Software\" can't be deleted: it is the hive's root."},
         {Kind::KeyStays, order.path,
          "The key \"HKLM\\x\" can't be deleted: the file ends, or its cell does, before what it is "
          "said to hold."}});
}

TEST_F(RefusalReasons, OfTransactionsNameTheFirstFile) {
    MadeHive hive;
    hive.root.name = u"ROOT";
    hive.root.subKeys.resize(1);
    hive.root.subKeys[0].name = u"Key";
    const std::string waits = "SOFTWARE{1}.TM.regtrans-ms";
    write(waits, std::string(100, '\0') + "x");
    write("SOFTWARE{2}.TM.regtrans-ms", "x");
    write("SOFTWAREX{1}.regtrans-ms", "x");
    write("SOFTWARE{0}.blf", "x");
    const auto order = [&] { return place("SOFTWARE", offline::bytesOf(hive), {}, {u"Key"}); };
    HostFiles files;
    EXPECT_TRUE(refusalsOf(files, cleaningOf({order()})).empty()) << "a hive that expects none";
    hive.flags = base_block::kFlagTransactions;
    expectRefused(cleaningOf({order()}),
                  {{Kind::Transactions, path(waits),
                    "The hive expects transactions, and a file of them is not empty."}});
}

TEST_F(RefusalReasons, OfTheStampNameTheCopyThatIsThere) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const std::string what = "There is a cleaning of this hive with the same stamp.";
    for (const std::string& name :
         {std::string("SOFTWARE.bromvale-") + kStamp, std::string("SOFTWARE.LOG1.bromvale-") + kStamp,
          std::string("SOFTWARE.bromvale-") + kStamp + ".reg"}) {
        write(name, "");
        expectRefused(cleaningOf({order}), {{Kind::StampUsed, path(name), what}});
        fs::remove(path(name));
    }
    for (const std::string& name : {std::string("SYSTEM.bromvale-") + kStamp,
                                    std::string("SOFTWARE.bromvale-") + kStamp + "x", std::string("x")})
        write(name, "");
    HostFiles files;
    EXPECT_TRUE(refusalsOf(files, cleaningOf({order})).empty());
}

TEST_F(RefusalReasons, OfOneThatIsUnfinishedNameItsList) {
    const HiveToClean order = placeClean("SOFTWARE");
    HostFiles files;
    HostFolder folder(files, HiveFilesTest::folder().string());
    CleaningRecord record;
    record.stamp = "other";
    record.hive = "SYSTEM";
    record.state = CleaningState::Undoing;
    storeRecord(folder, record);
    expectRefused(cleaningOf({order}), {{Kind::Unfinished, path("SYSTEM.bromvale-other.list"),
                                         "The cleaning other of SYSTEM was not finished (undoing)."}});
}

TEST_F(RefusalReasons, OfForeignFilesNameEachOfThem) {
    const HiveToClean order = placeDirty("SOFTWARE");
    HostFiles files;
    files.user = ::geteuid() + 4711;
    const std::string what = "The file belongs to somebody else.";
    expectTold(refusalsOf(files, cleaningOf({order})), {{Kind::ForeignOwner, order.path, what},
                                                        {Kind::ForeignOwner, order.logs[0].path, what},
                                                        {Kind::ForeignOwner, order.logs[1].path, what}});
}

// Each disk by itself; the reserve is needed once for each.
TEST_F(RefusalReasons, OfSpaceCountAllHivesOfADisk) {
    class Small : public HostFiles {
      public:
        HostSpace space(const HostHandle&) override { return {1, false}; }
    };
    HiveToClean first = placeClean("a/SOFTWARE");
    HiveToClean second = placeClean("b/SOFTWARE");
    first.completeCopy.clear();
    second.completeCopy = "1234567";
    const std::uint64_t needed = (1u << 20) + 6 * first.shown.size + 7;
    Small files;
    expectTold(refusalsOf(files, cleaningOf({first, second})),
               {{Kind::NoSpace, path("b"),
                 "There are 1 bytes free, and " + std::to_string(needed) + " are needed."}});
}

TEST_F(RefusalReasons, OfAnUndoSayWhichStamp) {
    const HiveToClean order = placeDirty("SOFTWARE");
    clean(order);
    expectTold(undo("x").refusals,
               {{Kind::UnknownStamp, "", "There is no cleaning \"x\" that could be undone."}});
    ASSERT_EQ(State::Done, undo().state);
    expectTold(undo().refusals,
               {{Kind::AlreadyUndone, "", std::string("The cleaning ") + kStamp + " is undone."}});
}

TEST_F(RefusalReasons, OfAnUndoNameTheHive) {
    const HiveToClean order = placeDirty("SOFTWARE");
    clean(order);
    const std::string copy = std::string("SOFTWARE.bromvale-") + kStamp;
    const std::string old = bytesOf(path(copy));
    write(copy, "other");
    const Told damaged{Kind::CopyDamaged, order.path,
                       "The copies of hive and logs are not what the list says of them."};
    expectTold(undo().refusals, {damaged});
    write("SOFTWARE", bytesOf(order.path) + "x");
    expectTold(undo().refusals,
               {damaged,
                {Kind::ChangedSinceCleaning, order.path,
                 "The hive was changed since, by Windows, by a later cleaning or by hand."}});
    expectTold(undo(kStamp, true).refusals, {damaged});
    write(copy, old);
    fs::create_hard_link(order.path, path("other"));
    expectTold(undo(kStamp, true).refusals, {{Kind::HardLinked, order.path, "The file has other names."}});
}

TEST_F(RefusalReasons, OfAnUndoOfAHalfCleaningSayThatItIsUnfinished) {
    for (const CleaningState state : {CleaningState::Begun, CleaningState::Ready}) {
        HostFiles files;
        HostFolder folder(files, HiveFilesTest::folder().string());
        CleaningRecord record;
        record.stamp = kStamp;
        record.hive = "SOFTWARE";
        record.state = state;
        storeRecord(folder, record);
        expectTold(undo().refusals,
                   {{Kind::Unfinished, "", std::string("The cleaning ") + kStamp + " was not finished."}});
    }
}

// Its hive was changed by somebody else, so only force puts the copies back.
TEST_F(RefusalReasons, AnAbandonedCleaningIsPutBackByForceAlone) {
    const HiveToClean order = placeDirty("SOFTWARE");
    const FolderState before = state();
    clean(order);
    HostFiles files;
    HostFolder folder(files, HiveFilesTest::folder().string());
    CleaningRecord record = findRecords(folder).records.at(0);
    record.state = CleaningState::Abandoned;
    storeRecord(folder, record);
    EXPECT_FALSE(listCleanings(files, folders()).cleanings.at(0).canBeUndone());
    expectTold(undo().refusals,
               {{Kind::UnknownStamp, "",
                 std::string("There is no cleaning \"") + kStamp + "\" that could be undone."}});
    EXPECT_EQ(State::Done, undo(kStamp, true).state);
    for (const auto& [name, bytes] : before) EXPECT_TRUE(bytes == bytesOf(path(name))) << name;
}

TEST_F(RefusalReasons, ADoubtfulHibernationIsOneForAnUndoToo) {
    const HiveToClean order = placeDirty("SOFTWARE");
    clean(order);
    HostFiles files;
    CleaningWords words;
    expectTold(undoCleaning(files, folders(), kStamp, {false, true}, words, false, {}).refusals,
               {{Kind::HibernationDoubtful, "", "Whether this Windows is hibernated can't be told."}});
    words.notHibernated = true;
    EXPECT_EQ(State::Done, undoCleaning(files, folders(), kStamp, {false, true}, words, false, {}).state);
}

ListedHive listed(CleaningState state, bool whole = true, bool changed = false) {
    ListedHive hive;
    hive.state = state;
    hive.copiesWhole = whole;
    hive.changedSince = changed;
    return hive;
}

TEST(ListedCleanings, CanBeUndoneWhereEachHiveCanOrIs) {
    const auto can = [](std::vector<ListedHive> hives) {
        return ListedCleaning{"S", hives.size(), std::move(hives)}.canBeUndone();
    };
    EXPECT_TRUE(can({listed(CleaningState::Done)}));
    EXPECT_TRUE(can({listed(CleaningState::Undoing), listed(CleaningState::Undone, false, true)}));
    EXPECT_FALSE(can({}));
    EXPECT_FALSE(can({listed(CleaningState::Undone)}));
    EXPECT_FALSE(can({listed(CleaningState::Done, false)}));
    EXPECT_FALSE(can({listed(CleaningState::Done, true, true)}));
    for (const CleaningState state : {CleaningState::Begun, CleaningState::Ready, CleaningState::Abandoned})
        EXPECT_FALSE(can({listed(CleaningState::Done), listed(state)}));
}

// A part whose folder is not at hand is counted; stamps come in order.
TEST_F(RefusalReasons, TheListHasEachStampWithItsHives) {
    HiveToClean software = placeDirty("a/SOFTWARE");
    HiveToClean user = placeClean("b/NTUSER.DAT");
    HostFiles files;
    Cleaning cleaning = cleaningOf({software, user});
    cleaning.stamp = "2";
    ASSERT_EQ("", describe(cleanHives(files, cleaning, {})));
    cleaning.stamp = "1";
    cleaning.hives = {placeClean("a/SYSTEM")};
    ASSERT_EQ("", describe(cleanHives(files, cleaning, {})));
    write("a/SYSTEM", bytesOf(path("a/SYSTEM")) + "x");
    fs::remove(path("a/SOFTWARE.LOG1.bromvale-2"));
    const std::vector<std::string> one{path("a")};
    const ListedCleanings list = listCleanings(files, one);
    ASSERT_EQ(2u, list.cleanings.size());
    EXPECT_EQ("1", list.cleanings[0].stamp);
    EXPECT_TRUE(list.cleanings[0].hives.at(0).changedSince);
    EXPECT_TRUE(list.cleanings[0].hives.at(0).copiesWhole);
    EXPECT_EQ("2", list.cleanings[1].stamp);
    EXPECT_EQ(2u, list.cleanings[1].hivesThen);
    ASSERT_EQ(1u, list.cleanings[1].hives.size());
    const ListedHive& hive = list.cleanings[1].hives[0];
    EXPECT_EQ(path("a/SOFTWARE.bromvale-2"), hive.copy);
    EXPECT_FALSE(hive.copiesWhole);
    EXPECT_FALSE(hive.changedSince);
}

}  // namespace
}  // namespace bromvale::offline
